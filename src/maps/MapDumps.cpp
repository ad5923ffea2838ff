// Text renderings of the records and maps, for diagnostics.
//
// Numbers go through toHex; names and texts are written raw; maps are walked
// in key order and an empty map writes nothing. Line breaks are std::endl.
// Each toString() returns exactly what its operator<< writes.
#include <sstream>

#include "MessageModuleMaps.h"

namespace {

template <typename Renderable>
std::string renderToString(Renderable& object) {
    std::ostringstream out;
    out << object;
    return out.str();
}

// Only the facility and code fields of a message identifier, higher bits zero.
long defaultMessageId(Facility& facility) {
    uint32_t facilityBits = (static_cast<uint32_t>(facility.id) & 0xFFFu) << 16;
    uint32_t codeBits = static_cast<uint32_t>(facility.msgId) & 0xFFFFu;
    return static_cast<long>(facilityBits | codeBits);
}

}  // namespace

std::ostream& operator<<(std::ostream& out, IDMap& map) {
    for (auto& entry : map.entries) {
        out << "|key=\"" << entry.first << "\"; val=\"" << toHex(entry.second) << "\"";
    }
    return out;
}

std::ostream& operator<<(std::ostream& out, IDReverseMap& map) {
    for (auto& entry : map.entries) {
        out << "|key=\"" << toHex(entry.first) << "\"; val=\"" << entry.second << "\"";
    }
    return out;
}

std::ostream& operator<<(std::ostream& out, DualIDMap& map) {
    out << "[Forward:->" << map.forward << "]" << std::endl;
    out << "[Reverse:->" << map.reverse << "]" << std::endl;
    return out;
}

std::ostream& operator<<(std::ostream& out, Facility& facility) {
    out << "|facility=" << toHex(facility.id) << ";msg-id=" << toHex(facility.msgId) << ";Name=\""
        << facility.name << "\""
        << ";def-msg-id=" << toHex(defaultMessageId(facility));
    return out;
}

std::ostream& operator<<(std::ostream& out, FacilityMap& map) {
    for (auto& entry : map.byId) {
        out << entry.second << std::endl;
    }
    return out;
}

std::ostream& operator<<(std::ostream& out, FormattableMessage& message) {
    out << "[msgID=\"" << message.symbolicName << "\""
        << ";lang=" << toHex(message.languageId) << ";facility=" << toHex(message.facilityId)
        << ";severity=" << toHex(message.severityId) << ";msg=\"" << message.text << "\"]"
        << std::endl;
    return out;
}

std::ostream& operator<<(std::ostream& out, MultiLangMessageMap& store) {
    for (auto& entry : store.msgmap) {
        out << "{";
        for (auto& record : entry.second) {
            out << "<msgID=" << toHex(record.first) << ">; " << record.second;
        }
        out << "}" << std::endl;
    }
    return out;
}

std::string IDMap::toString() { return renderToString(*this); }
std::string IDReverseMap::toString() { return renderToString(*this); }
std::string DualIDMap::toString() { return renderToString(*this); }
std::string Facility::toString() { return renderToString(*this); }
std::string FacilityMap::toString() { return renderToString(*this); }
std::string FormattableMessage::toString() { return renderToString(*this); }
std::string MultiLangMessageMap::toString() { return renderToString(*this); }
