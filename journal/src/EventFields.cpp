#include "EventFields.h"

#include <syslog.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "tqmsg.h"

namespace tqmsg_journal {
namespace {

std::uint32_t bits32(long value) { return static_cast<std::uint32_t>(value); }

}  // namespace

int severityPriority(long messageId) {
    switch (bits32(messageId) >> 30) {
        case 3:
            return LOG_ERR;
        case 2:
            return LOG_WARNING;
        default:
            return LOG_INFO;
    }
}

void addEventFields(EntryFields& fields, const Settings* settings, int priority, long messageId,
                    long languageId) {
    char text[48];  // the longest: 24 digits of prefix + 8 of identifier + NUL
    int length = std::snprintf(text, sizeof text, "%d", priority);
    fields.add("PRIORITY", text, static_cast<std::size_t>(length));
    if (settings != nullptr) {
        composeMessageId(settings->messageIdBase.c_str(), messageId, text);
        fields.add("MESSAGE_ID", text, std::strlen(text));
        fields.add("SYSLOG_IDENTIFIER", settings->identifier);
    }
    length =
        std::snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(bits32(messageId)));
    fields.add("TQMSG_ID", text, static_cast<std::size_t>(length));
    const char* symbol = tqmsg_symbolic_name(messageId, languageId);
    if (symbol != nullptr && *symbol != '\0')
        fields.add("TQMSG_SYMBOL", symbol, std::strlen(symbol));
    length =
        std::snprintf(text, sizeof text, "0x%lX", static_cast<unsigned long>(bits32(languageId)));
    fields.add("TQMSG_LANGUAGE", text, static_cast<std::size_t>(length));
}

void addInsertField(void* insertFields, int number, const char* text, std::size_t length) {
    auto& inserts = *static_cast<InsertFields*>(insertFields);
    if (number < 1 || number >= 200 || inserts.seen[number]) return;
    inserts.seen[number] = 1;
    char name[24];  // "TQMSG_INSERT_199" and a NUL
    std::snprintf(name, sizeof name, "TQMSG_INSERT_%d", number);
    inserts.fields->add(name, text, length);
}

}  // namespace tqmsg_journal
