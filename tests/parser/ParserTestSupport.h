// Verbs for the parser tests: load a message text as a file, read back what
// the store holds, and compare exception texts exactly. Every verb that loads
// must run inside inFreshProcess (the store is process-wide).
#ifndef TQMSG_TESTS_PARSER_TEST_SUPPORT_H
#define TQMSG_TESTS_PARSER_TEST_SUPPORT_H

#include <gtest/gtest.h>

#include <string>

#include "FreshProcess.h"
#include "MessageModule.h"

// Expects `statement` to throw `Type` whose `msg` equals `expected` exactly.
#define EXPECT_THROW_MSG(statement, Type, expected)                              \
    do {                                                                         \
        try {                                                                    \
            statement;                                                           \
            ADD_FAILURE() << "no exception from: " #statement;                   \
        } catch (Type & thrown) {                                                \
            EXPECT_EQ(thrown.msg, std::string(expected)) << "from: " #statement; \
        }                                                                        \
    } while (0)

// The prefix that the parser puts before an error on line `line` of `path`.
inline std::string at(const std::string& path, int line) {
    return "File: \"" + path + "\", Line: " + std::to_string(line) + " - ";
}

// Loads `content` as a message file through the module; throws what loading throws.
inline void loadText(const std::string& content, bool trimTrailingOnly = false,
                     const std::string& name = "test.mc") {
    static MessageModule module;
    TempFile file(name, content);
    MessageModule::loadFile(&module, file.path(), trimTrailingOnly);
}

// The full text of the parser error that loading `content` raises ("" if none).
inline std::string loadError(const std::string& content, std::string* path = nullptr) {
    static MessageModule module;
    TempFile file("bad.mc", content);
    if (path != nullptr) *path = file.path();
    try {
        MessageModule::loadFile(&module, file.path(), false);
    } catch (MessageTableParserException& error) {
        return error.msg;
    }
    return "";
}

// The identifier the store bound to `symbolicName`, or -1 when it has none.
inline long idOf(const std::string& symbolicName) {
    std::string name = symbolicName;
    long* id = MessageModule::mlmap.idmap.get(name);
    return id == nullptr ? -1 : *id;
}

// The stored record for (language, identifier), or null.
inline FormattableMessage* recordOf(long languageId, long messageId) {
    FormattableMessage* record = nullptr;
    MessageModule::mlmap.get(languageId, messageId, record);
    return record;
}

// A file prefix declaring English as 1033.
const char* const ENGLISH = "LanguageNames=(English=0x409:MSG00409)\n";

#endif  // TQMSG_TESTS_PARSER_TEST_SUPPORT_H
