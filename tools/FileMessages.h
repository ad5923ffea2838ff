// The messages of one loaded file with their texts per language, as the load
// recorded them (MessageTable::textPlaces and the store): what the
// translation checks and the typed functions look at.
#ifndef TQMSG_TOOL_FILE_MESSAGES_H
#define TQMSG_TOOL_FILE_MESSAGES_H

#include <string>
#include <vector>

#include "MessageModule.h"

struct TextOfLanguage {
    long languageId;
    const FormattableMessage* message;  // the stored record
    int line;                           // where its definition starts in the file
};

struct FileMessage {
    long id;                            // the identifier the store files it under
    std::string name;                   // its symbolic name, or "0x%08X" of its id without one
    std::vector<TextOfLanguage> texts;  // in the file's order
};

// The messages of `table`, in the order the file defines them.
std::vector<FileMessage> fileMessages(MessageTable& table);

// The name a file declares for language `id`, with its first letter in upper
// case ("French"), or its number when the file names it not.
std::string languageName(MessageTable& table, long id);

// "0x%08X" of an identifier's 32 bits.
std::string hexIdentifier(long id);

#endif  // TQMSG_TOOL_FILE_MESSAGES_H
