// The line tests, trimmers, pair splitter and number reader of the parser.
#include "ParserTestSupport.h"

namespace {

// A table over an empty file: the helpers need an instance, not its contents.
class LineScanning : public ::testing::Test {
protected:
    TempFile empty{"empty.mc", ""};
    std::string path = empty.path();
    MessageTable table{nullptr, path, false};
};

TEST_F(LineScanning, CommentBlankAndTrimmedLines) {
    const struct {
        const char* line;
        bool comment, blank;
        const char *both, *trailing;  // trimmed at both ends, at the end only
    } rows[] = {{"", false, true, "", ""},
                {";x", true, false, ";x", ";x"},
                {" ;x", false, false, ";x", " ;x"},
                {" \t\r\n", false, true, "", " "},
                {"\fa b\f", false, false, "\fa b\f", "\fa b\f"},
                {"  a\t\r", false, false, "a", "  a"}};
    for (const auto& row : rows) {
        std::string line = row.line, both = "unchanged", trailing = "unchanged";
        EXPECT_EQ(table.commentLine(&line[0]), row.comment) << '"' << row.line << '"';
        EXPECT_EQ(table.blankLine(&line[0]), row.blank) << '"' << row.line << '"';
        table.trim(&line[0], both);
        table.trimAfter(&line[0], trailing);
        EXPECT_EQ(both + "|" + trailing, std::string(row.both) + "|" + row.trailing) << row.line;
    }
}

TEST_F(LineScanning, NameValuePairsAndWrappedErrors) {
    const char* rows[][3] = {
        {"Severity = Error ", "Severity", "Error"}, {"a=b=c", "a", "b=c"}, {" =y", "", "y"}};
    for (const auto& row : rows) {
        std::string text = row[0];
        EXPECT_EQ(table.parseNameValuePair(text).toString(),
                  std::string("<name=\"") + row[1] + "\"; value=\"" + row[2] + "\">");
    }
    const struct {
        const char* fileName;
        int lineNumber;
        const char* wrapped;
    } wraps[] = {{"a.mc", 3, "File: \"a.mc\", Line: 3 - oops"},
                 {"", 3, "oops"},
                 {"a.mc", 0, "File: \"a.mc\" - oops"},
                 {"", -1, "oops"}};
    for (const auto& row : wraps) {
        table.fileName = row.fileName;
        table.lineNumber = row.lineNumber;
        EXPECT_EQ(table.wrapError("oops").msg, row.wrapped);
    }
}

// Each text, what getNumber makes of it (the number, or "" when refused and
// the number untouched) and "s" where a sign is allowed.
TEST_F(LineScanning, Numbers) {
    // clang-format off
    const char* rows[][3] = {
        {"12", "12", ""}, {"0X1f", "31", ""}, {"010", "10", ""}, {" 7 ", "7", ""},
        {"1x10", "1", ""}, {"0x", "0", ""}, {"12a", "", ""}, {"-5", "", ""}, {"x1", "", ""},
        {"00x1", "", ""}, {"0x1x", "", ""}, {"", "", ""}, {"0xFFFFFFFF", "-1", ""},
        {"4294967295", "-1", ""}, {"0x80000000", "-2147483648", ""}, {"0x100000000", "", ""},
        {"4294967296", "", ""}, {"99999999999999999999", "", ""}, {"+0x10", "16", "s"},
        {"-0x10", "-16", "s"}, {"+", "", "s"}, {"+x1", "", "s"}, {"-0xFFFFFFFF", "1", "s"}};
    // clang-format on
    for (const auto& row : rows) {
        std::string text = row[0];
        long number = 4242;
        bool accepted = table.getNumber(text, number, row[2][0] == 's');
        std::string result = accepted ? std::to_string(number) : number == 4242 ? "" : "changed";
        EXPECT_EQ(result, row[1]) << '"' << row[0] << '"';
    }
}

}  // namespace
