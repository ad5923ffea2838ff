// Bad input for the loader and the formatter: what real files and careless
// callers produce. Each case gives the specified result or a clear error with
// the file name and line, and never a crash.
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "FreshProcess.h"
#include "MessageModule.h"

namespace {

const char* const kEnglish = "LanguageNames=(English=0x409:MSG00409)\n";
const int kEnglishId = 0x409;

// The parser's failure text for `path`, empty when the load succeeded.
std::string loadError(const std::string& path, bool trimTrailingOnly = false) {
    try {
        MessageModule module(path, trimTrailingOnly);
    } catch (MessageTableParserException& e) {
        return e.msg;
    } catch (MessageModuleException& e) {
        ADD_FAILURE() << "module exception for a bad file: " << e.msg;
        return e.msg;
    }
    return "";
}

std::string at(const std::string& path, int line) {
    return "File: \"" + path + "\", Line: " + std::to_string(line) + " - ";
}

std::string lookup(int messageId) {
    std::string result;
    testing::internal::CaptureStdout();
    TQ_LangLookup(messageId, kEnglishId, result);
    testing::internal::GetCapturedStdout();
    return result;
}

std::string message(const std::string& id, const std::string& name, const std::string& text) {
    return "MessageId=" + id + "\nSymbolicName=" + name + "\n" + text + "\n.\n";
}

struct Formatted {
    long result = 0;
    bool nulled = false;
    std::string text;
    std::string printed;  // what the formatter wrote to standard output
};

// formatMessage over `text` from a string, with an insert array and a width,
// delivering into a new buffer.
Formatted formatText(const std::string& text, std::vector<std::string> values = {},
                     long width = 0) {
    std::vector<char*> arguments;
    for (auto& value : values) {
        arguments.push_back(&value[0]);
    }
    std::string source = text;
    char* buffer = nullptr;
    Formatted out;
    testing::internal::CaptureStdout();
    out.result = MessageModule::formatMessage(
        _FORMAT_MESSAGE_FROM_STRING | _FORMAT_MESSAGE_ARGUMENT_ARRAY |
            _FORMAT_MESSAGE_ALLOCATE_BUFFER | width,
        &source[0], 0, 0, &buffer, 0, arguments.empty() ? nullptr : arguments.data());
    out.printed = testing::internal::GetCapturedStdout();
    out.nulled = buffer == nullptr;
    if (buffer) {
        out.text = buffer;
        delete[] buffer;
    }
    return out;
}

void expectRefused(const Formatted& out, const std::string& line) {
    EXPECT_EQ(out.result, -1);
    EXPECT_TRUE(out.nulled);
    EXPECT_EQ(out.printed, line + "\n");
}

}  // namespace

TEST(BadFiles, EmptyFileLoadsAndStoresNothing) {
    inFreshProcess([] {
        TempFile file("empty.mc", "");
        EXPECT_EQ(loadError(file.path()), "");
        EXPECT_TRUE(MessageModule::mlmap.msgmap.empty());
    });
}

TEST(BadFiles, DirectoryIsRefusedWithItsName) {
    inFreshProcess([] {
        char name[] = "tqmsg_dir_XXXXXX";
        ASSERT_NE(mkdtemp(name), nullptr);
        std::string error = loadError(name);
        rmdir(name);
        EXPECT_NE(error.find(name), std::string::npos) << error;
        EXPECT_TRUE(MessageModule::mtmap.tables.empty());
    });
}

TEST(BadFiles, NulBytesAreRefusedWithTheirLine) {
    inFreshProcess([] {
        // Even inside a comment: a NUL would silently end the line.
        std::string content = std::string(kEnglish) + std::string(";note\0MessageId=9\n", 18) +
                              message("1", "A", "Hello");
        TempFile file("nul.mc", content);
        std::string error = loadError(file.path());
        EXPECT_EQ(error.rfind(at(file.path(), 2), 0), 0u) << error;
        EXPECT_NE(error.find("NUL"), std::string::npos) << error;
        EXPECT_EQ(lookup(1), "");
    });
}

TEST(BadFiles, BinaryJunkCannotBeUnderstood) {
    inFreshProcess([] {
        std::string junk = "\x01";
        unsigned state = 12345;
        while (junk.size() < 3000) {
            state = state * 1103515245u + 12345u;
            char c = static_cast<char>(state >> 16);
            if (c != '\n' && c != '\0') {
                junk += c;
            }
        }
        TempFile file("junk.mc", junk + "\n" + message("1", "A", "Hello"));
        EXPECT_EQ(loadError(file.path()),
                  at(file.path(), 1) + "Cannot understand input: \"" + junk + "\"");
        EXPECT_EQ(lookup(1), "");
    });
}

TEST(BadFiles, ByteOrderMarksAreOrdinaryBytes) {
    const std::string bom = "\xEF\xBB\xBF";
    inFreshProcess([&] {
        // The keyword is still found after the mark...
        TempFile file("bom_list.mc", bom + kEnglish + message("1", "A", "Hello"));
        EXPECT_EQ(loadError(file.path()), "");
        EXPECT_EQ(lookup(1), "Hello");
    });
    inFreshProcess([&] {
        // ...but a comment must start with ";".
        TempFile file("bom_comment.mc", bom + "; comment\n" + kEnglish);
        EXPECT_EQ(loadError(file.path()),
                  at(file.path(), 1) + "Cannot understand input: \"" + bom + "; comment\"");
    });
    inFreshProcess([] {
        std::string wide = "\xFF\xFE";
        for (char c : std::string(kEnglish) + message("1", "A", "Hello")) {
            wide += c;
            wide += '\0';
        }
        TempFile file("utf16.mc", wide);
        std::string error = loadError(file.path());
        EXPECT_EQ(error.rfind(at(file.path(), 1), 0), 0u) << error;
        EXPECT_EQ(lookup(1), "");
    });
}

TEST(BadFiles, LineEndings) {
    inFreshProcess([] {
        std::string content = std::string(kEnglish) + message("1", "A", "First\nSecond");
        std::string crlf;
        for (char c : content) {
            crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
        }
        TempFile both("crlf.mc", crlf);
        EXPECT_EQ(loadError(both.path()), "");
        EXPECT_EQ(lookup(1), "First\nSecond");
    });
    inFreshProcess([] {
        TempFile trailing("crlf_trailing.mc",
                          std::string(kEnglish) + "MessageId=2\r\nSymbolicName=B\r\n  x \r\n.\r\n");
        EXPECT_EQ(loadError(trailing.path(), true), "");
        EXPECT_EQ(lookup(2), "  x");
    });
    inFreshProcess([] {
        // Without a line feed the whole file is one line.
        TempFile file("cr.mc", "MessageId=1\rSymbolicName=A\rHello\r.\r");
        std::string error = loadError(file.path());
        EXPECT_EQ(error, at(file.path(), 1) +
                             "Expected numeric value for message id, got: "
                             "1\rSymbolicName=A\rHello\r.");
    });
    inFreshProcess([] {
        TempFile file("ctrlz.mc", std::string(kEnglish) + message("1", "A", "Hello") + "\x1A");
        EXPECT_EQ(loadError(file.path()), at(file.path(), 6) + "Cannot understand input: \"\x1A\"");
        EXPECT_EQ(lookup(1), "Hello");
    });
}

TEST(BadFiles, LongLines) {
    inFreshProcess([] {
        std::string longest(4095, 'x');
        TempFile file("4095.mc", std::string(kEnglish) + message("1", "A", longest));
        EXPECT_EQ(loadError(file.path()), "");
        EXPECT_EQ(lookup(1), longest);
    });
    for (size_t length : {4096, 1000000}) {
        inFreshProcess([&] {
            TempFile file("long.mc", std::string(kEnglish) + message("1", "A", "Hello") +
                                         message("2", "B", std::string(length, 'y')));
            std::string error = loadError(file.path());
            EXPECT_EQ(error.rfind(at(file.path(), 8), 0), 0u) << error.substr(0, 200);
            EXPECT_LE(error.size(), 4999u);
            EXPECT_EQ(lookup(1), "Hello");
            EXPECT_EQ(lookup(2), "");
        });
    }
}

TEST(BadFiles, MillionLines) {
    inFreshProcess([] {
        std::string content = std::string(kEnglish) + message("1", "A", "Hello");
        for (int line = 6; line < 1000000; ++line) {
            content += line % 2 ? ";\n" : "\n";
        }
        TempFile file("million.mc", content + "junk\n");
        EXPECT_EQ(loadError(file.path()),
                  at(file.path(), 1000000) + "Cannot understand input: \"junk\"");
        EXPECT_EQ(lookup(1), "Hello");
    });
}

TEST(BadFiles, UnterminatedConstructs) {
    inFreshProcess([] {
        TempFile file("no_paren.mc", "LanguageNames=(English=0x409:MSG00409\n");
        EXPECT_EQ(loadError(file.path()), at(file.path(), 2) + "Unexpected EOF. Expected \")\"");
    });
    inFreshProcess([] {
        TempFile file("no_dot.mc", std::string(kEnglish) + "MessageId=1\nSymbolicName=A\nHello\n");
        EXPECT_EQ(loadError(file.path()),
                  at(file.path(), 5) + "Unexpected EOF, before message end marker \".\", is found");
        EXPECT_EQ(lookup(1), "");
    });
}

TEST(BadTexts, InsertNumbers) {
    std::vector<std::string> values;
    std::string text, expected;
    for (int n = 1; n <= 199; ++n) {
        values.push_back("v" + std::to_string(n));
        text += "%" + std::to_string(n);
        expected += values.back();
    }
    Formatted all = formatText(text, values);
    EXPECT_EQ(all.text, expected);
    EXPECT_EQ(all.result, static_cast<long>(expected.size()) + 1);
    EXPECT_EQ(formatText("A%0B", values).text, "AB");
    EXPECT_EQ(formatText("<%199>", values).text, "<v199>");
    expectRefused(formatText("%200", values), "Arg Index: 200, is too big (allowed range: 1-199");
    expectRefused(formatText("%1000", values),
                  "Arg Index: 100.., is too big must not be more than 3 digits");
}

TEST(BadTexts, RefusedInsertFormats) {
    std::vector<std::string> values(3, "value");
    for (const char* text :
         {"%1!*d!", "%1!.*s!", "%1!n!", "%1!ln!", "%1!!", "%1!s%s!", "%1!d%d!"}) {
        SCOPED_TRACE(text);
        Formatted out = formatText(text, values);
        EXPECT_EQ(out.result, -1);
        EXPECT_TRUE(out.nulled);
        ASSERT_FALSE(out.printed.empty());
        EXPECT_EQ(out.printed.find('\n'), out.printed.size() - 1);
    }
}

TEST(BadTexts, ExtremeWidths) {
    std::string x253(253, 'x'), x300(300, 'x');
    struct Case {
        std::string text;
        long width;
        std::string expected;
    } cases[] = {
        {"ab%1cd", 1, "ab\nXY\ncd"},
        {"a\nb", 1, "a\n\nb"},
        {x300 + "\ny", 255, x300 + "\n\ny"},
        {x253 + "%1", 255, x253 + "\nXY\n"},
        {x253.substr(1) + "\nb", 255, x253.substr(1) + "\nb"},
    };
    for (auto& c : cases) {
        SCOPED_TRACE(c.text.substr(0, 20));
        EXPECT_EQ(formatText(c.text, {"XY"}, c.width).text, c.expected);
    }
}

TEST(BadTexts, HundredKilobyteTexts) {
    std::string text, expected;
    while (text.size() < 100000) {
        text += "abcdefgh%1";
        expected += "abcdefghZ";
    }
    EXPECT_EQ(formatText(text, {"Z"}).text, expected);
    Formatted bad = formatText(text + "%", {"Z"});
    EXPECT_EQ(bad.result, -1);
    EXPECT_LE(bad.printed.size(), 5000u);
    EXPECT_EQ(bad.printed.rfind("Invalid message string: abcdefgh%1", 0), 0u);

    inFreshProcess([] {
        std::string line(4000, 'q'), body, stored;
        for (int i = 0; i < 25; ++i) {
            body += (i ? "\n" : "") + line;
        }
        TempFile file("100k.mc", std::string(kEnglish) + message("1", "A", body));
        EXPECT_EQ(loadError(file.path()), "");
        EXPECT_EQ(lookup(1), body);
    });
}
