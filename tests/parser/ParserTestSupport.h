// Verbs for the parser tests: load a message text as a file, read back what
// the store holds, and compare exception texts exactly. Every verb that loads
// must run inside inFreshProcess (the store is process-wide).
#ifndef TQMSG_TESTS_PARSER_TEST_SUPPORT_H
#define TQMSG_TESTS_PARSER_TEST_SUPPORT_H

#include "FreshProcess.h"
#include "MessageModule.h"

// The text of the `Type` exception that `body` throws, or "<no exception>".
// Any other exception escapes and fails the test.
template <typename Type = MessageTableParserException, typename Body>
std::string thrownBy(Body body) {
    try {
        body();
    } catch (Type& thrown) {
        return thrown.msg;
    }
    return "<no exception>";
}

// The prefix that the parser puts before an error on line `line` of `path`.
inline std::string at(const std::string& path, int line) {
    return "File: \"" + path + "\", Line: " + std::to_string(line) + " - ";
}

// Loads `content` as the file tqmsg_<pid>_<name> and returns its registered
// table; a failure to load fails the test and returns null.
inline MessageTable* loadText(const std::string& content, bool trimTrailingOnly = false,
                              const std::string& name = "test.mc") {
    static MessageModule module;
    TempFile file(name, content);
    std::string path = file.path();
    EXPECT_EQ(thrownBy([&] { MessageModule::loadFile(&module, path, trimTrailingOnly); }),
              "<no exception>");
    return MessageModule::mtmap.get(path);
}

// Expects loading `content` (in a fresh process) to fail on `line` with `message`.
inline void expectLoadError(const std::string& content, int line, const std::string& message) {
    inFreshProcess([&] {
        static MessageModule module;
        TempFile file("bad.mc", content);
        EXPECT_EQ(thrownBy([&] { MessageModule::loadFile(&module, file.path(), false); }),
                  at(file.path(), line) + message)
            << "loading:\n"
            << content;
    });
}

// The id a table's DualIDMap holds for `name` (any case), or -1.
inline long idIn(DualIDMap& map, std::string name) {
    long* id = map.getIDX(name);
    return id == nullptr ? -1 : *id;
}

// The identifier the store bound to `symbolicName`, or -1 when it has none.
inline long idOf(std::string symbolicName) {
    long* id = MessageModule::mlmap.idmap.get(symbolicName);
    return id == nullptr ? -1 : *id;
}

// The stored record for (language, identifier), or null; its text, or "<none>".
inline FormattableMessage* recordOf(long languageId, long messageId) {
    FormattableMessage* record = nullptr;
    MessageModule::mlmap.get(languageId, messageId, record);
    return record;
}
inline std::string textOf(long languageId, long messageId) {
    FormattableMessage* record = recordOf(languageId, messageId);
    return record == nullptr ? "<none>" : record->text;
}

// A file prefix declaring English as 1033.
const std::string ENGLISH = "LanguageNames=(English=0x409:MSG00409)\n";

#endif  // TQMSG_TESTS_PARSER_TEST_SUPPORT_H
