// MultiLangMessageMap: the process-wide message store.
//
// `msgmap` is authoritative: one entry per (language id, message id) pair,
// keyed by the owned text "%ld.%ld" in strcmp order, each holding a map with
// exactly that one record. `index_` mirrors it by the numeric pair so that a
// lookup by identifier neither formats a key nor allocates. std::map nodes
// never move, so the index may point at the value maps inside `msgmap`.
#include <cstdio>

#include "MessageModuleMaps.h"
#include "maps/OwnedKey.h"

namespace {

// Both ids must already be normalised to 32 bits.
uint64_t pairKey(long languageId, long messageId) {
    return (static_cast<uint64_t>(static_cast<uint32_t>(languageId)) << 32) |
           static_cast<uint32_t>(messageId);
}

// The copy the store keeps: the record with its ids normalised to 32 bits.
FormattableMessage normalisedCopy(FormattableMessage& message) {
    FormattableMessage copy = message;
    copy.languageId = toInt32(copy.languageId);
    copy.facilityId = toInt32(copy.facilityId);
    copy.severityId = toInt32(copy.severityId);
    return copy;
}

// The store's notion of a repeated definition: same text, facility and severity.
bool sameDefinition(FormattableMessage& stored, FormattableMessage& message) {
    return stored.text == message.text && stored.facilityId == toInt32(message.facilityId) &&
           stored.severityId == toInt32(message.severityId);
}

}  // namespace

MultiLangMessageMap::~MultiLangMessageMap() {
    index_.clear();
    releaseKeys(msgmap);
}

MultiLangMessageMap::MessageIdMap* MultiLangMessageMap::get(long languageId, long messageId,
                                                            FormattableMessage*& message) {
    message = nullptr;
    auto found = index_.find(pairKey(toInt32(languageId), toInt32(messageId)));
    if (found == index_.end()) {
        return nullptr;
    }
    MessageIdMap* records = found->second;
    message = &records->begin()->second;
    return records;
}

MultiLangMessageMap::MessageIdMap* MultiLangMessageMap::get(long languageId,
                                                            std::string& symbolicName,
                                                            FormattableMessage*& message) {
    message = nullptr;
    long* messageId = idmap.get(symbolicName);
    return messageId == nullptr ? nullptr : get(languageId, *messageId, message);
}

bool MultiLangMessageMap::put(long languageId, long messageId, FormattableMessage& message) {
    languageId = toInt32(languageId);
    messageId = toInt32(messageId);
    FormattableMessage* stored = nullptr;
    if (get(languageId, messageId, stored) != nullptr) {
        if (!sameDefinition(*stored, message)) {
            *stored = normalisedCopy(message);
        }
        return false;
    }

    // "-2147483648.-2147483648" is the longest key text: 23 characters.
    char keyText[100];
    std::snprintf(keyText, sizeof keyText, "%ld.%ld", languageId, messageId);
    std::unique_ptr<char[]> key = copyKey(keyText);
    auto entry = msgmap.try_emplace(key.get());
    if (entry.second) {
        key.release();  // the map owns it now
    }
    MessageIdMap& records = entry.first->second;
    records.emplace(messageId, normalisedCopy(message));
    index_[pairKey(languageId, messageId)] = &records;
    return true;
}

// A symbolic name stays bound to the identifier it was first stored with; a
// later message under that name is filed under that identifier.
bool MultiLangMessageMap::put(long languageId, std::string& symbolicName, long messageId,
                              FormattableMessage& message) {
    long* boundId = idmap.get(symbolicName);
    if (boundId != nullptr) {
        return put(languageId, *boundId, message);
    }
    if (!idmap.put(symbolicName, messageId)) {
        return false;
    }
    return put(languageId, messageId, message);
}
