// Loading and the views of a message file.
#include "MessageFileTexts.h"

#include <algorithm>
#include <cstring>

#include "PoFailure.h"

MessageFileTexts::MessageFileTexts(const std::string& path) : path_(path) {
    try {
        MessageModule::loadFile(&module_, path_, false);
    } catch (MessageTableParserException& e) {
        throw PoFailure(e.msg);
    } catch (MessageModuleException& e) {
        throw PoFailure(e.msg);
    }
    table_ = MessageModule::mtmap.get(path_);
}

std::vector<long> MessageFileTexts::declaredLanguages() const {
    std::vector<long> ids;
    for (const MessageTable::ListPlace& list : table_->listPlaces) {
        if (std::strcmp(list.listName, MessageTable::LANGUAGE_NAMES) != 0) continue;
        for (long id : list.numbers) {
            if (std::find(ids.begin(), ids.end(), id) == ids.end()) ids.push_back(id);
        }
    }
    return ids;
}

bool MessageFileTexts::languageId(const std::string& name, long& id) const {
    std::string key = name;
    long* found = table_->languages.getIDX(key);
    if (found != nullptr) id = *found;
    return found != nullptr;
}

namespace {

// The first name (in name order) that `names` gives `id`, or "".
std::string nameOf(const IDMap& names, long id) {
    for (const auto& entry : names.entries) {
        if (entry.second == id) return entry.first;
    }
    return "";
}

}  // namespace

std::string MessageFileTexts::languageName(long id) const {
    return nameOf(table_->languages.forward, id);
}

std::string MessageFileTexts::severityName(long id) const {
    return nameOf(table_->severities.forward, id);
}

std::string MessageFileTexts::facilityName(long id) const {
    return nameOf(table_->facilities.forward, id);
}

std::vector<FileText> MessageFileTexts::texts(long languageId) const {
    std::vector<FileText> result;
    for (const MessageTable::TextPlace& place : table_->textPlaces) {
        if (place.languageId != languageId) continue;
        FormattableMessage* record = nullptr;
        MessageModule::mlmap.get(place.languageId, place.messageId, record);
        // A definition that reuses a symbolic name is filed under the name's
        // first identifier, not the one it composed.
        if (record == nullptr) continue;
        result.push_back({place.messageId, record, &place});
    }
    return result;
}

int MessageFileTexts::languageListEnd() const {
    int end = 0;
    for (const MessageTable::ListPlace& list : table_->listPlaces) {
        if (std::strcmp(list.listName, MessageTable::LANGUAGE_NAMES) == 0) end = list.lastLine;
    }
    return end;
}

std::map<long, int> MessageFileTexts::messageEnds() const {
    std::map<long, int> ends;
    for (const MessageTable::TextPlace& place : table_->textPlaces) {
        int& end = ends[place.messageId];
        end = std::max(end, place.endLine);
    }
    return ends;
}
