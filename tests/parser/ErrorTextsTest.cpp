// Every parser error: its exact text, its wrapping and the line it names.
#include <sys/stat.h>

#include "ParserTestSupport.h"

namespace {

const std::string& E = ENGLISH;  // line 1 of the files that need a language
const std::string A = E + "MessageId=\nSymbolicName=A\n";  // lines 1-3: a header block

TEST(ErrorTexts, EachErrorNamesItsLine) {
    const struct {
        std::string content;
        int line;
        const char* message;
    } rows[] = {
        {";c\n ;x\n", 2, "Cannot understand input: \" ;x\""},
        {"\xEF\xBB\xBF;c\n", 1, "Cannot understand input: \"\xEF\xBB\xBF;c\""},  // after a BOM
        {"MessageId\n", 1, "Expected Name Value pair got: \"MessageId\""},
        {"LanguageNames=(\n=1\n)\n", 2, "Expected Name Value pair got: \"=1\""},
        {E + "MessageId=\nSymbolicName\n", 3, "Expected Name Value pair got: \"SymbolicName\""},
        {"LanguageNames=\nEnglish=1\n", 3, "Unexpected EOF. Expected \"(\""},
        {"LanguageNames=(English=1\n", 2, "Unexpected EOF. Expected \")\""},
        {"LanguageNames=(\nEnglish=1)", 2, "Unexpected EOF. Expected \")\""},
        {"LanguageNames=(English=-1:X)\n", 1, "Expected langID, got: -1:X"},
        {"FacilityNames=(R=zz:R)\n", 1, "Expected facility ID, got: zz"},
        {"SeverityNames=(S=:S)\n", 1, "Expected severity ID, got: :S"},
        {"FacilityNames=(Io=:x)\n", 1, "Expected facility ID, got: :x"},  // no number before ":"
        {"MessageId=+\n", 1, "Expected numeric value for message id, got: +"},
        {E + "MessageId=\n\nSymbolicName=A\n", 3, "Unexpected end of MessageId block"},
        {A, 4, "Unexpected end of MessageId block"},
        {E + "MessageId=\nSymbolicName=MSG_FACILITY_DOWN\n", 3,
         "Unknown facility: MSG_FACILITY_DOWN"},
        {E + "MessageId=\nSeverity=Critical\n", 3, "Unknown severity: Critical"},
        {E + "MessageId=\nLanguage=French\n", 3, "Unknown language: French"},
        {E + "MessageId=\nhello\n.\n", 3,
         "No symbolic name specified for message. Expected tag: \"symbolicname\""},
        {"MessageId=\nSymbolicName=A\nx\n.\n", 3, "Unknown default language: English"},
        {A + "hello", 4, "Unexpected EOF. Expected message body"},
        {A + "hello\n", 5, "Unexpected EOF, before message end marker \".\", is found"},
        {A + ".\n\x1A", 5, "Cannot understand input: \"\x1A\""},  // a last line without line feed
        // After a stored message a line with "language" continues that message.
        {A + ".\nMessageId=9 Language=English\n", 5, "Unknown language: 9 Language=English"},
    };
    for (const auto& row : rows) expectLoadError(row.content, row.line, row.message);
}

TEST(ErrorTexts, LinesThatTheBufferCannotHoldAreRefused) {
    const std::string longest = ";" + std::string(4094, 'x');  // 4095 characters
    inFreshProcess([&] { EXPECT_NE(loadText(longest + "\n" + longest), nullptr); });
    const std::string tooLong = ";" + std::string(4095, 'y');
    const std::string quoted =
        "Line too long: \";" + std::string(39, 'y') + "...\" (at most 4095 characters)";
    expectLoadError(";ok\n" + tooLong + "\n", 2, quoted);
    expectLoadError(";ok\n;ok\n" + tooLong, 3, quoted);
    expectLoadError(A + std::string(4096, 'y') + "\n.\n", 4,
                    "Line too long: \"" + std::string(40, 'y') + "...\" (at most 4095 characters)");
    // A NUL byte would end the line early: a UTF-16 file must not read as blank lines.
    const struct {
        std::string content;
        const char* message;
    } nulRows[] = {
        {std::string("\r\0\n\0;\0", 6), "NUL byte in column 2: the file looks like UTF-16; "},
        {std::string("\xff\xfe;\0", 4), "NUL byte in column 4: the file looks like UTF-16; "},
        {std::string("\0;\0 \0x", 6), "NUL byte in column 1: the file looks like UTF-16; "},
        {std::string("; a\0b\n", 6), "NUL byte in column 4: "},
    };
    for (const auto& row : nulRows) {
        expectLoadError(row.content, 1,
                        std::string(row.message) + "message files are read as 8-bit text");
    }
}

TEST(ErrorTexts, OpenAndReadFailuresAreWrappedWithTheFileName) {
    inFreshProcess([] {
        MessageModule module;
        auto loadError = [&](std::string name) {
            return thrownBy([&] { MessageModule::loadFile(&module, name, false); });
        };
        EXPECT_EQ(loadError("no/such.mc"),
                  "File: \"no/such.mc\" - Unable to open file: no/such.mc");
        EXPECT_EQ(loadError(""), "Unable to open file: ");
        std::string directory = "tqmsg_" + std::to_string(getpid()) + "_dir.mc";
        ASSERT_EQ(mkdir(directory.c_str(), 0700), 0);
        EXPECT_EQ(loadError(directory),
                  "File: \"" + directory + "\" - Unable to open file: " + directory);
        rmdir(directory.c_str());
    });
}

TEST(ErrorTexts, ATableWithoutAModuleCannotStore) {
    inFreshProcess([] {
        TempFile file("place.mc", A + "one\n.\n");
        std::string path = file.path();
        EXPECT_EQ(thrownBy([&] { MessageTable table(nullptr, path, false); }),
                  at(path, 5) + "Cannot access message map, parent module handle is NULL");
    });
}

}  // namespace
