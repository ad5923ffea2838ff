// Which load failures mean "written for the Windows message compiler". Each
// sign below is a construct that compiler accepts and this library refuses,
// recognised by the words of the library's error; `tqmsg port` rewrites all
// of them. Failures that a file in this library's own dialect can just as
// well produce (a text cut off by the end of the file, a stray ".") count
// only when the file also has Windows line ends.
#include "WindowsDialectHint.h"

#include <fstream>
#include <regex>
#include <vector>

#include "Diagnostics.h"

namespace {

struct DialectSign {
    const char* failurePattern;  // matched against the text after "Line: N - "
    const char* cause;
    bool needsWindowsLineEnds;
};

// Checked in order: the first match names the cause.
const std::vector<DialectSign>& dialectSigns() {
    static const std::vector<DialectSign> signs = {
        {R"(^Unknown (default )?language: English$)",
         "English used without LanguageNames: it is built in there", false},
        {R"(^(Expected numeric value for message id, got|Unknown (default )?(severity|facility|language)): )"
         R"(.*\s(messageid|severity|facility|symbolicname|language)\s*=)",
         "several statements on one line", false},
        {R"(^(Expected numeric value for message id, got|Unknown (default )?(severity|facility|language)): .*\s;)",
         "a comment after a statement", false},
        {R"(^Unknown (severity|facility|language): \S*(severity|facility|language|outputbase))",
         "a symbolic name holding a header keyword", false},
        {R"(^Expected numeric value for message id, got: (0x)?[0-9a-f]+[ul]+$)",
         "a number with a C suffix", false},
        {R"(^Unknown facility: System$)", "the built-in facility System", false},
        {R"(^Cannot insert: .*<name="Application";.* tuple into facilitynamesMap)",
         "Application declared again in FacilityNames", false},
        {R"(^Unexpected end of MessageId block)",
         "a blank line at the start of a text or between statements", false},
        {R"(^Expected Name Value pair got: )", "a header keyword in the first line of a text",
         false},
        {R"(^No symbolic name specified)", "a message without SymbolicName", false},
        {R"(looks like UTF-16)", "UTF-16 text", false},
        {R"(^Cannot understand input: "\s*OutputBase\s*=)", "an OutputBase statement", false},
        {"\x1A", "an end-of-file byte (0x1A)", false},
        {R"(^Cannot understand input: "\s+;)", "an indented comment", false},
        {R"(^Unexpected EOF, before message end marker)",
         "the last text ends at the end of the file", true},
        {R"(^Cannot understand input: "\."$)", "a text line of \" .\"", true},
    };
    return signs;
}

// The library's reason without the "File: ..., Line: N - " it starts with.
std::string failureReason(const std::string& failure) {
    static const std::regex located(R"(^File: ".*", Line: [0-9]+ - )");
    std::smatch prefix;
    if (!std::regex_search(failure, prefix, located)) return "";
    return failure.substr(prefix.length());
}

// Whether the first lines of `file` end in CR LF, as files edited on Windows do.
bool hasWindowsLineEnds(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    std::string start(4096, '\0');
    in.read(&start[0], static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<size_t>(in.gcount()));
    return start.find("\r\n") != std::string::npos;
}

}  // namespace

std::string windowsDialectCause(const std::string& file, const std::string& failure) {
    std::string reason = failureReason(failure);
    if (reason.empty()) return "";
    for (const DialectSign& sign : dialectSigns()) {
        std::regex pattern(sign.failurePattern, std::regex::icase);
        if (!std::regex_search(reason, pattern)) continue;
        if (sign.needsWindowsLineEnds && !hasWindowsLineEnds(file)) return "";
        return sign.cause;
    }
    return "";
}

std::string windowsDialectHint(const std::string& file, const std::string& failure) {
    std::string cause = windowsDialectCause(file, failure);
    if (cause.empty()) return "";
    return file + " looks like a file for the Windows message compiler (" + cause +
           "); convert it with: tqmsg port " + shellWord(file) + " -o OUT.mc";
}
