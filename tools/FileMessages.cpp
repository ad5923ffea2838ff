// A loaded file's messages, grouped from the places its load recorded.
#include "FileMessages.h"

#include <cctype>
#include <cstdio>
#include <map>

#include "MessageTable.h"

namespace {

// The store files a text under the identifier first bound to its symbolic
// name; `place` holds the identifier its definition composed.
const FormattableMessage* storedText(const MessageTable::TextPlace& place, long& id) {
    FormattableMessage* message = nullptr;
    MessageModule::mlmap.get(place.languageId, place.messageId, message);
    id = place.messageId;
    return message;
}

}  // namespace

std::string hexIdentifier(long id) {
    char buffer[16];  // "0x" + 8 digits
    std::snprintf(buffer, sizeof(buffer), "0x%08X", static_cast<unsigned>(id & 0xFFFFFFFFL));
    return buffer;
}

std::vector<FileMessage> fileMessages(MessageTable& table) {
    std::vector<FileMessage> messages;
    std::map<long, size_t> positions;  // identifier -> index in `messages`
    for (const MessageTable::TextPlace& place : table.textPlaces) {
        long id = 0;
        const FormattableMessage* message = storedText(place, id);
        if (message == nullptr) continue;
        auto found = positions.emplace(id, messages.size());
        if (found.second) {
            std::string name =
                message->symbolicName.empty() ? hexIdentifier(id) : message->symbolicName;
            messages.push_back({id, name, {}});
        }
        messages[found.first->second].texts.push_back(
            {place.languageId, message, place.headerLine});
    }
    return messages;
}

std::string languageName(MessageTable& table, long id) {
    for (auto& entry : table.languages.forward.entries) {
        if (entry.second != id) continue;
        std::string name = entry.first;
        if (!name.empty())
            name[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(name[0])));
        return name;
    }
    return std::to_string(id);
}
