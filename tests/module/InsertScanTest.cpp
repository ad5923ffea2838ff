// The insert scan: escapes, inserts, the width rule and the scan's failures.

#include "FormatTestSupport.h"

namespace {

char* text(const char* value) { return const_cast<char*>(value); }

struct ScanCase {
    const char* input;
    std::vector<char*> values;
    long flags;  // the width, or flags that change the scan
    const char* expected;
};

TEST(InsertScan, EscapesInsertsAndWidthGiveTheExpectedText) {
    const std::vector<ScanCase> cases = {
        {"Disk %1 is full", {text("/tmp")}, 0, "Disk /tmp is full"},
        {"%2 %1 %2", {text("a"), text("b")}, 0, "b a b"},
        {"[%1!5d!]", {asElement(42)}, 0, "[   42]"},
        {"100%% a%.b%!", {}, 0, "100% a.b!"},  // any other escaped character stands for itself
        {"a%\nb", {}, 0, "a\nb"},
        {"Line1%nLine2", {}, 0, "Line1\nLine2"},
        {"Prompt: %0", {}, 0, "Prompt: "},
        {"A%0\nB%0C", {}, 0, "ABC"},  // a line feed right after %0 is dropped
        {"A%0%%", {}, 0, "A%"},
        {"ends in %1", {text("z")}, 0, "ends in z"},
        {"%10 and %1x", {text("a"), 0, 0, 0, 0, 0, 0, 0, 0, text("j")}, 0, "j and ax"},
        {"", {}, 0, ""},
        {"Value %1!d!%n", {}, _FORMAT_MESSAGE_IGNORE_INSERTS | 3, "Value %1!d!%n"},
        {"caf\xc3\xa9 \xe9t\xe9 %1", {text("\xc3\xbc")}, 0, "caf\xc3\xa9 \xe9t\xe9 \xc3\xbc"},
        // Width: an insert that reaches the width goes on a line of its own.
        {"Name: %1 ok", {text("123456")}, 10, "Name: \n123456\n ok"},
        {"Name: %1 ok", {text("12")}, 10, "Name: 12 ok"},
        {"%1", {text("abc")}, 3, "\nabc\n"},
        // A line feed at or past the width is doubled and resets the column.
        {"abc\nd", {}, 2, "abc\n\nd"},
        {"abc\nd\ne", {}, 5, "abc\nd\n\ne"},  // the column counts on across the line feed
        {"%%%%\n", {}, 4, "%%\n\n"},          // "%" counts twice for "%%"
        {"ab%ncd\n", {}, 3, "ab\ncd\n"},      // "%n" resets the column
        {"x%1\ny", {text("abcd")}, 4, "x\nabcd\n\ny"},
        {"plain text is never broken", {}, 3, "plain text is never broken"},
    };
    for (const ScanCase& c : cases) {
        Outcome outcome = formatArray(c.input, c.values, c.flags);
        EXPECT_EQ(outcome.text + "/" + std::to_string(outcome.result) + outcome.printed,
                  c.expected + ("/" + std::to_string(std::string(c.expected).size() + 1)))
            << "input: " << c.input;
    }
}

TEST(InsertScan, VariableListInsertsMayRepeatAndComeInAnyOrder) {
    EXPECT_EQ(formatList("%2!d! and %1!s!", 0, "x", 5).text, "5 and x");
    EXPECT_EQ(formatList("%1%1", 0, "ab").text, "abab");
    EXPECT_EQ(formatList("%3!x! %1 of %2!d!", 12, "part", 7, 255).text, "ff part of \n7\n");
    EXPECT_EQ(formatList("[%2!.2f!]", 0, 7, 2.5).text, "[2.50]");  // only ints before a double
}

TEST(InsertScan, LongInsertsAreCutToTheirLimit) {
    std::string longText(1500, 'q');
    EXPECT_EQ(formatArray("%1", {text(longText.c_str())}).text, std::string(999, 'q'));
    EXPECT_EQ(formatArray("%1!1200d!", {asElement(7)}).text, std::string(999, ' '));
    EXPECT_EQ(formatList("%1", 0, longText.c_str()).text, std::string(1000, 'q'));
    EXPECT_EQ(formatArray("%1%1<%1", {text(longText.c_str())}).text,
              std::string(1998, 'q') + "<" + std::string(999, 'q'));  // beyond the stack result
    EXPECT_EQ(formatList("%2!-1200d!", 0, 0, 7).text, "7" + std::string(999, ' '));
}

TEST(InsertScan, EachScanFailureHasItsText) {
    std::string longMessage = std::string(6000, 'm') + "%";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"%200", "Arg Index: 200, is too big (allowed range: 1-199"},
        {"%1000", "Arg Index: 100.., is too big must not be more than 3 digits"},
        {"50%", "Invalid message string: 50%, string cannot end with an escape sequence %"},
        {"%1!d",
         "Invalid message string: %1!d, format string begin marker ! noticed without any "
         "matching end marker after escape sequence %"},
        {longMessage, ("Invalid message string: " + longMessage).substr(0, 4999)},
    };
    std::vector<char*> values(199, text("v"));
    for (const auto& c : cases) expectFailure(formatArray(c.first.c_str(), values), c.second);
    EXPECT_EQ(formatArray("%199", values).text, "v");
}

// Formats `value` as insert 2 of a variable list (after an int) and with snprintf.
template <typename T>
void expectListMatchesSnprintf(const char* format, T value) {
    char expected[64];
    snprintf(expected, sizeof expected, format, value);
    std::string message = std::string("%2!") + (format + 1) + "!";
    EXPECT_EQ(formatList(message.c_str(), 0, 0, value).text, expected) << format;
}

// Every accepted conversion formats exactly as snprintf does with the value
// converted to the type the conversion reads.
TEST(InsertScan, FormatsMatchSnprintf) {
    const std::vector<long> values = {0, 1, -1, 42, 65, -32768, 2147483647, -2147483647 - 1};
    const char* intFormats[] = {"%d",  "%+5i", "%-6d", "%05d", "% d",  "%x", "%#X",
                                "%#o", "%u",   "%hd",  "%hhu", "%.3d", "%c", "%'d"};
    for (long value : values) {
        for (const char* format : intFormats) {
            char expected[64];
            snprintf(expected, sizeof expected, format, static_cast<int>(value));
            std::string message = std::string("%1!") + (format + 1) + "!";
            EXPECT_EQ(formatArray(message.c_str(), {asElement(value)}).text, expected) << format;
            EXPECT_EQ(formatList(message.c_str(), 0, static_cast<int>(value)).text, expected)
                << format;
        }
        expectListMatchesSnprintf("%ld", value);
        expectListMatchesSnprintf("%li", value * 5000);
        expectListMatchesSnprintf("%lu", static_cast<unsigned long>(value));
        expectListMatchesSnprintf("%lx", value);
        expectListMatchesSnprintf("%lld", static_cast<long long>(value) * 3000);
        expectListMatchesSnprintf("%llu", static_cast<unsigned long long>(value) * 3000);
        expectListMatchesSnprintf("%jd", static_cast<intmax_t>(value));
        expectListMatchesSnprintf("%zu", static_cast<size_t>(value));
        expectListMatchesSnprintf("%td", static_cast<ptrdiff_t>(value));
        expectListMatchesSnprintf("%8.3e", value / 7.0);
        expectListMatchesSnprintf("%Lg", static_cast<long double>(value) / 3);
        expectListMatchesSnprintf("%-9.4s", "abcdefgh");
    }
    char expected[64];
    snprintf(expected, sizeof expected, "%p", static_cast<void*>(&expected));
    EXPECT_EQ(formatList("%1!p!", 0, static_cast<void*>(&expected)).text, expected);
    EXPECT_EQ(formatArray("%1!.3s!", {text("abcdef")}).text, "abc");
    EXPECT_EQ(formatArray("%1!lu!", {asElement(-1)}).text, std::to_string(~0UL));
    EXPECT_EQ(formatArray("%1!.1f!", {asElement(-3)}).text, "-3.0");  // the element's value
    EXPECT_EQ(formatArray("%1!s!", {nullptr}).text, "(null)");
    EXPECT_EQ(formatList("%1", 0, static_cast<char*>(nullptr), "next").text, "(null)");
}

TEST(InsertScan, FormatsThatReadOrWriteElsewhereAreRefused) {
    const char* formats[] = {"*d", ".*s", "5*d", "n", "hn", "",   "d%d", "q",
                             "wd", "qs",  "lp",  "m", "5%", "s%", "5$d", "99999999999d"};
    for (const char* format : formats) {
        std::string message = std::string("%1!") + format + "!";
        Outcome outcome = formatArray(message.c_str(), {asElement(1), asElement(2)});
        std::string prefix = std::string("Insert %1 has an unsupported format \"%") + format + "\"";
        EXPECT_EQ(outcome.printed.substr(0, prefix.size()) + std::to_string(outcome.result),
                  prefix + "-1");
    }
    expectFailure(formatArray("%1!n!", {asElement(1)}),
                  "Insert %1 has an unsupported format \"%n\": the n conversion writes to memory");
}

TEST(InsertScan, InsertsWithoutAnArgumentSourceFail) {
    const char* expected = "Insert %2 has no argument: no argument source was given";
    expectFailure(formatArray("a %2 b", {}), expected);
    expectFailure(formatList("a %2 b", 0, static_cast<char**>(nullptr)), expected);
}

TEST(InsertScan, SubstituteArgWritesUnderTheWidthRule) {
    std::vector<char*> values = {text("first"), text("second")};
    std::ostringstream out;
    std::string format = "%s";
    int column = 3;
    auto substitute = [&](int index) {
        return MessageModule::substituteArg(out, index, format, column, 10, values.data(),
                                            values.data());
    };
    EXPECT_EQ(substitute(2), "second");
    EXPECT_EQ(out.str() + "/" + std::to_string(column), "second/9");
    EXPECT_EQ(substitute(1), "first");
    EXPECT_EQ(out.str() + "/" + std::to_string(column), "second\nfirst\n/0");
    try {
        substitute(0);
        ADD_FAILURE() << "index 0 accepted";
    } catch (MessageModuleException& error) {
        EXPECT_EQ(error.msg, "Arg Index: 0, is too small (allowed range: 1-199)");
    }
}

}  // namespace
