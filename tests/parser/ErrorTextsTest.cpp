// Every parser error: its exact text, its wrapping and the line it names.
#include <sys/stat.h>

#include "ParserTestSupport.h"

namespace {

const std::string E = ENGLISH;  // line 1 of the files that need a language

TEST(ErrorTexts, EachErrorNamesItsLine) {
    const struct {
        std::string content;
        int line;
        const char* message;
    } rows[] = {
        {" ;x\n", 1, "Cannot understand input: \" ;x\""},
        {";c\nOutputBase=16\n", 2, "Cannot understand input: \"OutputBase=16\""},
        {"Severity=Error\r\n", 1, "Cannot understand input: \"Severity=Error\r\""},
        {"MessageId\n", 1, "Expected Name Value pair got: \"MessageId\""},
        {"LanguageNames=(English)\n", 1, "Expected Name Value pair got: \"English\""},
        {"LanguageNames=(\n=1\n)\n", 2, "Expected Name Value pair got: \"=1\""},
        {E + "MessageId=\nSymbolicName\n", 3, "Expected Name Value pair got: \"SymbolicName\""},
        {"LanguageNames=\nEnglish=1\n", 3, "Unexpected EOF. Expected \"(\""},
        {"LanguageNames=(English=1\n", 2, "Unexpected EOF. Expected \")\""},
        {"LanguageNames=(\nEnglish=1)", 2, "Unexpected EOF. Expected \")\""},
        {"LanguageNames=(English=-1:X)\n", 1, "Expected langID, got: -1:X"},
        {"LanguageNames=(English=)\n", 1, "Expected langID, got: "},
        {"FacilityNames=(R=zz:R)\n", 1, "Expected facility ID, got: zz"},
        {"SeverityNames=(S=:S)\n", 1, "Expected severity ID, got: :S"},
        {"MessageId=12a\n", 1, "Expected numeric value for message id, got: 12a"},
        {"MessageId=+\n", 1, "Expected numeric value for message id, got: +"},
        {E + "MessageId=\n\nSymbolicName=A\n", 3, "Unexpected end of MessageId block"},
        {E + "MessageId=\nSymbolicName=A\n", 4, "Unexpected end of MessageId block"},
        {E + "MessageId=\nSymbolicName=MSG_FACILITY_DOWN\n", 3,
         "Unknown facility: MSG_FACILITY_DOWN"},
        {E + "MessageId=\nSeverity=Critical\n", 3, "Unknown severity: Critical"},
        {E + "MessageId=\nLanguage=French\n", 3, "Unknown language: French"},
        {E + "MessageId=\nhello\n.\n", 3,
         "No symbolic name specified for message. Expected tag: \"symbolicname\""},
        {"MessageId=\nSymbolicName=A\nx\n.\n", 3, "Unknown default language: English"},
        {E + "MessageId=\nSymbolicName=A\nhello", 4, "Unexpected EOF. Expected message body"},
        {E + "MessageId=\nSymbolicName=A\nhello\n", 5,
         "Unexpected EOF, before message end marker \".\", is found"},
        {E + "MessageId=\nSymbolicName=A\nhello\nworld", 5,
         "Unexpected EOF, before message end marker \".\", is found"},
        // After a stored message a line with "language" continues that message.
        {E + "MessageId=\nSymbolicName=A\n.\nMessageId=9 Language=English\n", 5,
         "Unknown language: 9 Language=English"},
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
    expectLoadError(E + "MessageId=\nSymbolicName=A\n" + std::string(4096, 'y') + "\n.\n", 4,
                    "Line too long: \"" + std::string(40, 'y') + "...\" (at most 4095 characters)");
    // A NUL byte would end the line early: a UTF-16 file must not read as blank lines.
    auto nulAt = [](int column) {
        return "NUL byte in column " + std::to_string(column) +
               ": message files are read as 8-bit text";
    };
    expectLoadError(std::string(";ok\n;a\0b\n", 10), 2, nulAt(3));
    expectLoadError(std::string("\r\0\n\0;\0", 6), 1, nulAt(2));
}

TEST(ErrorTexts, OpenAndReadFailuresAreWrappedWithTheFileName) {
    inFreshProcess([] {
        MessageModule module;
        EXPECT_THROW_MSG(MessageModule::loadFile(&module, "no/such.mc", false),
                         MessageTableParserException,
                         "File: \"no/such.mc\" - Unable to open file: no/such.mc");
        EXPECT_THROW_MSG(MessageModule::loadFile(&module, "", false), MessageTableParserException,
                         "Unable to open file: ");
        std::string directory = "tqmsg_" + std::to_string(getpid()) + "_dir.mc";
        ASSERT_EQ(mkdir(directory.c_str(), 0700), 0);
        EXPECT_THROW_MSG(MessageModule::loadFile(&module, directory, false),
                         MessageTableParserException,
                         at(directory, 1) + "Read error: the file could not be read to its end");
        rmdir(directory.c_str());
    });
}

TEST(ErrorTexts, AFailedTableKeepsThePlaceOfItsError) {
    inFreshProcess([] {
        TempFile file("place.mc", E + "MessageId=\nSymbolicName=A\none\n.\nbad\n");
        std::string path = file.path();
        try {
            MessageTable table(nullptr, path, false);
            ADD_FAILURE() << "loaded without a module";
        } catch (MessageTableParserException& error) {
            EXPECT_EQ(error.msg,
                      at(path, 5) + "Cannot access message map, parent module handle is NULL");
        }
        MessageModule module;
        EXPECT_THROW_MSG(MessageModule::loadFile(&module, path, false), MessageTableParserException,
                         at(path, 6) + "Cannot understand input: \"bad\"");
        FormattableMessage* one = recordOf(0x409, 1);
        ASSERT_NE(one, nullptr);  // stored before the error, kept after it
        EXPECT_EQ(one->text, "one");
        EXPECT_EQ(MessageModule::mtmap.get(path), nullptr);
    });
}

TEST(ErrorTexts, LongTextsAreCutToTheBuffer) {
    const std::string text = std::string(4000, 'z') + "\n" + std::string(4000, 'z') + "\n.\n";
    inFreshProcess([&] {
        std::string path;
        std::string error = loadError(
            E + "MessageId=1\nSymbolicName=A\n" + text + "MessageId=1\nSymbolicName=B\n" + text,
            &path);
        EXPECT_EQ(error.size(), 4999u);
        EXPECT_EQ(error.rfind(at(path, 11) + "Cannot insert <0x409, B, zzz", 0), 0u);
    });
}

}  // namespace
