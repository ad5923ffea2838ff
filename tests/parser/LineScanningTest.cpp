// The line tests, trimmers, pair splitter and number reader of the parser.
#include "ParserTestSupport.h"

namespace {

// A table over an empty file: the helpers need an instance, not its contents.
class LineScanning : public ::testing::Test {
protected:
    TempFile empty{"empty.mc", ""};
    std::string path = empty.path();
    MessageTable table{nullptr, path, false};

    std::string trimmed(std::string text, bool trailingOnly) {
        std::string out = "unchanged";
        trailingOnly ? table.trimAfter(&text[0], out) : table.trim(&text[0], out);
        return out;
    }
};

TEST_F(LineScanning, CommentAndBlankLines) {
    const struct {
        const char* line;
        bool comment, blank;
    } rows[] = {{"", false, true},        {";", true, false},    {";x", true, false},
                {"\t;x", false, false},   {" ;x", false, false}, {"\r", false, true},
                {" \t\r\n", false, true}, {"\f", false, false},  {"a;", false, false}};
    for (const auto& row : rows) {
        std::string line = row.line;
        EXPECT_EQ(table.commentLine(&line[0]), row.comment) << '"' << row.line << '"';
        EXPECT_EQ(table.blankLine(&line[0]), row.blank) << '"' << row.line << '"';
    }
}

TEST_F(LineScanning, Trimming) {
    const struct {
        const char* text;
        const char* both;
        const char* trailing;
    } rows[] = {{"  a\t\r", "a", "  a"},     {"", "", ""},
                {" \t ", "", " "},           {"a b", "a b", "a b"},
                {"\fa\f", "\fa\f", "\fa\f"}, {"x\r\n", "x", "x"}};
    for (const auto& row : rows) {
        EXPECT_EQ(trimmed(row.text, false), row.both) << '"' << row.text << '"';
        EXPECT_EQ(trimmed(row.text, true), row.trailing) << '"' << row.text << '"';
    }
}

TEST_F(LineScanning, NameValuePairs) {
    const struct {
        const char* text;
        const char* name;
        const char* value;
    } rows[] = {{"Severity = Error ", "Severity", "Error"},
                {"a=b=c", "a", "b=c"},
                {"x=", "x", ""},
                {" =y", "", "y"}};
    for (const auto& row : rows) {
        std::string text = row.text;
        MessageTable::NameValue pair = table.parseNameValuePair(text);
        EXPECT_EQ(pair.name, row.name) << row.text;
        EXPECT_EQ(pair.value, row.value) << row.text;
        EXPECT_EQ(pair.toString(),
                  std::string("<name=\"") + row.name + "\"; value=\"" + row.value + "\">");
    }
    for (std::string bad : {"=x", "abc", ""}) {
        EXPECT_THROW_MSG(table.parseNameValuePair(bad), MessageTableParserException,
                         "Expected Name Value pair got: \"" + bad + "\"");
    }
}

TEST_F(LineScanning, ErrorsAreWrappedWithWhatTheTableKnowsOfItsPlace) {
    const struct {
        const char* fileName;
        int lineNumber;
        const char* wrapped;
    } rows[] = {{"a.mc", 3, "File: \"a.mc\", Line: 3 - oops"},
                {"", 3, "oops"},
                {"a.mc", 0, "File: \"a.mc\" - oops"},
                {"", -1, "oops"}};
    for (const auto& row : rows) {
        table.fileName = row.fileName;
        table.lineNumber = row.lineNumber;
        EXPECT_EQ(table.wrapError("oops").msg, row.wrapped);
    }
}

TEST_F(LineScanning, Numbers) {
    const long untouched = 4242;
    const struct {
        const char* text;
        bool allowSign;
        bool accepted;
        long number;
    } rows[] = {
        {"12", false, true, 12},
        {"0x10", false, true, 16},
        {"0X1f", false, true, 31},
        {"010", false, true, 10},
        {" 7 ", false, true, 7},
        {"12a", false, false, 0},
        {"-5", false, false, 0},
        {"+0x10", true, true, 16},
        {"-0x10", true, true, -16},
        {"-7", true, true, -7},
        {"1x10", false, true, 1},
        {"0x", false, true, 0},
        {"x1", false, false, 0},
        {"0x1x", false, false, 0},
        {"a1", false, false, 0},
        {"", false, false, 0},
        {"+", true, false, 0},
        {"+x", true, false, 0},
        {"+x1", true, false, 0},
        {"0xFFFFFFFF", false, true, -1},
        {"4294967295", false, true, -1},
        {"0x80000000", false, true, -2147483647L - 1},
        {"0x100000000", false, false, 0},
        {"4294967296", false, false, 0},
        {"-0xFFFFFFFF", true, true, 1},
        {"99999999999999999999", false, false, 0},
    };
    for (const auto& row : rows) {
        std::string text = row.text;
        long number = untouched;
        EXPECT_EQ(table.getNumber(text, number, row.allowSign), row.accepted)
            << '"' << row.text << '"';
        EXPECT_EQ(number, row.accepted ? row.number : untouched) << '"' << row.text << '"';
    }
}

}  // namespace
