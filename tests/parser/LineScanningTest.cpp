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

TEST_F(LineScanning, Numbers) {
    const long untouched = 4242;
    const struct {
        const char* text;
        bool allowSign, accepted;
        long number;
    } rows[] = {{"12", false, true, 12},         {"0X1f", false, true, 31},
                {"010", false, true, 10},        {" 7 ", false, true, 7},
                {"1x10", false, true, 1},        {"0x", false, true, 0},
                {"12a", false, false, 0},        {"-5", false, false, 0},
                {"x1", false, false, 0},         {"0x1x", false, false, 0},
                {"", false, false, 0},           {"+0x10", true, true, 16},
                {"-0x10", true, true, -16},      {"+", true, false, 0},
                {"+x1", true, false, 0},         {"0xFFFFFFFF", false, true, -1},
                {"4294967295", false, true, -1}, {"0x80000000", false, true, -2147483647L - 1},
                {"-0xFFFFFFFF", true, true, 1},  {"0x100000000", false, false, 0},
                {"4294967296", false, false, 0}, {"99999999999999999999", false, false, 0}};
    for (const auto& row : rows) {
        std::string text = row.text;
        long number = untouched;
        EXPECT_EQ(table.getNumber(text, number, row.allowSign), row.accepted) << row.text;
        EXPECT_EQ(number, row.accepted ? row.number : untouched) << row.text;
    }
}

}  // namespace
