// Bad input for the loader and the formatter: what real files and careless
// callers produce. Each case gives the specified result or a clear error with
// the file name and line, and never a crash. One table row per input.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "FreshProcess.h"
#include "MessageModule.h"

namespace {

const std::string kEnglish = "LanguageNames=(English=0x409:MSG00409)\n";
const std::string kJunk = "Cannot understand input: \"";

// The parser's failure text for `path`, empty when the load succeeded.
std::string loadError(const std::string& path, bool trimTrailingOnly = false) {
    try {
        MessageModule module(path, trimTrailingOnly);
    } catch (MessageTableParserException& e) {
        return e.msg;
    }
    return "";
}

std::string lookup(int messageId) {
    std::string result;
    testing::internal::CaptureStdout();
    TQ_LangLookup(messageId, 0x409, result);
    testing::internal::GetCapturedStdout();
    return result;
}

std::string message(const std::string& id, const std::string& text) {
    return "MessageId=" + id + "\nSymbolicName=M" + id + "\n" + text + "\n.\n";
}

std::string hello() { return kEnglish + message("1", "Hello"); }

struct FileCase {
    const char* name;
    std::string content;
    std::string first;      // what message 1 then holds
    int errorLine = 0;      // 0: the load succeeds
    std::string tail = "";  // the error after "File: ..., Line: n - "
    bool whole = true;      // `tail` is the whole rest of the error, not a part of it
    bool trimTrailingOnly = false;
};

std::vector<FileCase> fileCases() {
    std::string junk = "\x01";  // no keyword, comment or blank line can start like this
    for (unsigned i = 1; junk.size() < 3000; ++i)
        if (char c = static_cast<char>(i * 2654435761u >> 24); c != '\n' && c != '\0') junk += c;
    std::string wide = "\xFF\xFE", crlf, million = hello();
    for (char c : hello()) wide += std::string(1, c) + '\0';
    for (char c : kEnglish + message("1", "First\nSecond"))
        crlf += c == '\n' ? "\r\n" : std::string(1, c);
    for (int line = 6; line < 1000000; ++line) million += line % 2 ? ";\n" : "\n";
    const std::string bom = "\xEF\xBB\xBF", x4095(4095, 'x');
    std::string q100k(25 * 4001 - 1, 'q');  // 25 lines of 4000 characters
    for (size_t i = 4000; i < q100k.size(); i += 4001) q100k[i] = '\n';
    return {
        {"empty", "", ""},
        {"nul", kEnglish + std::string(";\0M\n", 4) + message("1", "Hello"), "", 2, "NUL", false},
        {"junk", junk + "\n" + message("1", "Hello"), "", 1, kJunk + junk + "\""},
        {"bom", bom + hello(), "Hello"},
        {"bom_comment", bom + "; c\n" + kEnglish, "", 1, kJunk + bom + "; c\""},
        {"utf16", wide, "", 1, "", false},
        {"crlf", crlf, "First\nSecond"},
        {"crlf_trim", kEnglish + "MessageId=1\r\nSymbolicName=B\r\n  x \r\n.\r\n", "  x", 0, "",
         true, true},
        {"cr", "MessageId=1\rSymbolicName=A\rHello\r.\r", "", 1,
         "Expected numeric value for message id, got: 1\rSymbolicName=A\rHello\r."},
        {"ctrlz", hello() + "\x1A", "Hello", 6, kJunk + "\x1A\""},
        {"4095", kEnglish + message("1", x4095), x4095},
        {"4096", hello() + message("2", std::string(4096, 'y')), "Hello", 8, "", false},
        {"1000000", hello() + message("2", std::string(1000000, 'y')), "Hello", 8, "", false},
        {"million", million + "junk\n", "Hello", 1000000, kJunk + "junk\""},
        {"no_paren", "LanguageNames=(English=0x409:MSG00409\n", "", 2,
         "Unexpected EOF. Expected \")\""},
        {"no_dot", kEnglish + "MessageId=1\nSymbolicName=A\nHello\n", "", 5,
         "Unexpected EOF, before message end marker \".\", is found"},
        {"100k", kEnglish + message("1", q100k), q100k},
    };
}

// formatMessage over `text` from a string with an insert array and a width,
// delivering into a new buffer: the result, or "refused: " and the one line
// the formatter printed.
std::string formatText(std::string text, std::vector<std::string> values, long width) {
    std::vector<char*> arguments;
    for (auto& value : values) arguments.push_back(&value[0]);
    char* buffer = nullptr;
    testing::internal::CaptureStdout();
    long result =
        MessageModule::formatMessage(_FORMAT_MESSAGE_FROM_STRING | _FORMAT_MESSAGE_ARGUMENT_ARRAY |
                                         _FORMAT_MESSAGE_ALLOCATE_BUFFER | width,
                                     &text[0], 0, 0, &buffer, 0, arguments.data());
    std::string printed = testing::internal::GetCapturedStdout();
    if (result == -1) {
        EXPECT_TRUE(!buffer && printed.size() <= 5000 && printed.find('\n') == printed.size() - 1)
            << printed.substr(0, 200);
        return "refused: " + printed;
    }
    std::string formatted = buffer ? buffer : "(no buffer)";
    delete[] buffer;
    EXPECT_EQ(result, static_cast<long>(formatted.size()) + 1);
    return formatted;
}

struct TextCase {
    std::string text;
    std::vector<std::string> values;
    long width;
    std::string expected;
    bool whole = true;  // else the result only starts with `expected`
};

}  // namespace

TEST(BadFiles, EachGivesItsResultOrItsError) {
    for (const FileCase& c : fileCases()) {
        SCOPED_TRACE(c.name);
        inFreshProcess([&] {
            TempFile file(std::string(c.name) + ".mc", c.content);
            std::string error = loadError(file.path(), c.trimTrailingOnly);
            std::string at =
                "File: \"" + file.path() + "\", Line: " + std::to_string(c.errorLine) + " - ";
            // Without `whole` the error starts with `at` and mentions `tail`.
            std::string expected = c.errorLine == 0 ? "" : at + (c.whole ? c.tail : "");
            EXPECT_EQ(c.whole ? error : error.substr(0, at.size()), expected);
            EXPECT_TRUE(error.find(c.tail) != std::string::npos && error.size() < 5000)
                << error.substr(0, 200);
            EXPECT_EQ(lookup(1), c.first);
            EXPECT_EQ(lookup(2), "");
        });
    }
    inFreshProcess([] {  // a directory named as a message file
        char name[] = "tqmsg_dir_XXXXXX";
        ASSERT_NE(mkdtemp(name), nullptr);
        std::string error = loadError(name);
        rmdir(name);
        EXPECT_NE(error.find(name), std::string::npos) << error;
    });
}

TEST(BadTexts, EachGivesItsResultOrItsRefusal) {
    std::vector<std::string> v199, three(3, "value");
    std::string all199, expected199;
    for (int n = 1; n <= 199; ++n) {
        v199.push_back("v" + std::to_string(n));
        all199 += "%" + std::to_string(n);
        expected199 += v199.back();
    }
    const std::string x253(253, 'x'), x300(300, 'x');
    std::string big, bigResult;  // 100,000 characters with 10,000 inserts
    for (int i = 0; i < 10000; ++i) big += "abcdefgh%1", bigResult += "abcdefghZ";
    std::vector<TextCase> cases = {
        {all199, v199, 0, expected199},
        {"A%0B", v199, 0, "AB"},
        {"<%199>", v199, 0, "<v199>"},
        {"%200", v199, 0, "refused: Arg Index: 200, is too big (allowed range: 1-199\n"},
        {"%1000", v199, 0,
         "refused: Arg Index: 100.., is too big must not be more than 3 digits\n"},
        {"ab%1cd", {"XY"}, 1, "ab\nXY\ncd"},
        {"a\nb", {"XY"}, 1, "a\n\nb"},
        {x300 + "\ny", {"XY"}, 255, x300 + "\n\ny"},
        {x253 + "%1", {"XY"}, 255, x253 + "\nXY\n"},
        {x253.substr(1) + "\nb", {"XY"}, 255, x253.substr(1) + "\nb"},
        {big, {"Z"}, 0, bigResult},
        {big + "%", {"Z"}, 0, "refused: Invalid message string: abcdefgh%1", false},
    };
    // Refused insert formats: the refusal is one line, its wording left open.
    for (const char* text : {"%1!*d!", "%1!.*s!", "%1!n!", "%1!ln!", "%1!!", "%1!s%s!", "%1!d%d!"})
        cases.push_back({text, three, 0, "refused: ", false});
    for (const TextCase& c : cases) {
        std::string out = formatText(c.text, c.values, c.width);
        EXPECT_EQ(c.whole ? out : out.substr(0, c.expected.size()), c.expected)
            << c.text.substr(0, 20);
    }
}
