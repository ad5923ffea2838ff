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

// Loads `content` as a message file through the module and returns the
// registered table; a failure to load fails the test and returns null.
inline MessageTable* loadText(const std::string& content, bool trimTrailingOnly = false,
                              const std::string& name = "test.mc") {
    static MessageModule module;
    TempFile file(name, content);
    try {
        MessageModule::loadFile(&module, file.path(), trimTrailingOnly);
    } catch (MessageTableParserException& error) {
        ADD_FAILURE() << error.msg;
        return nullptr;
    } catch (MessageModuleException& error) {
        ADD_FAILURE() << error.msg;
        return nullptr;
    }
    std::string path = file.path();
    return MessageModule::mtmap.get(path);
}

// The id a table's DualIDMap holds for `name` (lower-cased), or -1.
inline long idIn(DualIDMap& map, std::string name) {
    long* id = map.getIDX(name);
    return id == nullptr ? -1 : *id;
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

// Expects loading `content` (in a fresh process) to fail on `line` with `message`.
inline void expectLoadError(const std::string& content, int line, const std::string& message) {
    inFreshProcess([&] {
        std::string path;
        std::string error = loadError(content, &path);
        EXPECT_EQ(error, at(path, line) + message) << "loading:\n" << content;
    });
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
