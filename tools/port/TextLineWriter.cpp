// The file lines of one message text (see MessageFileWriter.h).
//
// Each logical line becomes a body and a line-end:
// - the reader trims both ends, so a body starting with white space gets a "%"
//   before it ("% " formats as the blank), and a body ending in white space, or
//   an empty one, is closed by "%0" so nothing trails it;
// - the reader drops ";" lines and ends the text at ".": "%;" and "%." format
//   as the character alone;
// - the line feed between two file lines is the logical line break; where the
//   body had to be closed by "%0", which swallows that line feed, "%n" is put
//   before it, and the last line's break is an explicit "%n";
// - the first line must not hold a header keyword: a "%" inside the word
//   formats as nothing and hides it;
// - a line longer than the reader's buffer is cut at unit boundaries into
//   pieces joined by "%0" and the line feed it swallows.

#include "Caseless.h"
#include "MessageFileWriter.h"
#include "MessageTable.h"
#include "TextUnits.h"

namespace {

// Header keywords with the offset at which a "%" breaks each: before a letter
// that is no escape ("lan%guage" formats as "language").
struct KeywordBreak {
    const char* keyword;
    size_t offset;
};

const KeywordBreak* keywordBreaks() {
    static const KeywordBreak breaks[] = {
        {MessageTable::MESSAGE_FACILITY, 2},      {MessageTable::MESSAGE_SEVERITY, 2},
        {MessageTable::MESSAGE_LANGUAGE, 3},      {MessageTable::MESSAGE_OUTPUT_BASE, 3},
        {MessageTable::MESSAGE_SYMBOLIC_NAME, 5}, {nullptr, 0}};
    return breaks;
}

// The header keyword that starts at `at` in `line`, in any case; null for none.
const KeywordBreak* keywordAt(const std::string& line, size_t at) {
    for (const KeywordBreak* k = keywordBreaks(); k->keyword; ++k) {
        if (startsCaseless(line, at, k->keyword)) return k;
    }
    return nullptr;
}

// `line` with a "%" inside every header keyword it holds, in one pass from the
// left (searching the line again after each break would take time quadratic
// in its length). A "%" breaks every keyword that spans it, so the pass goes on
// right after it: a keyword may start inside the one just broken
// ("OutputBaseverity" holds "severity"), and must be broken too.
std::string breakHeaderKeywords(const std::string& line) {
    std::string broken;
    broken.reserve(line.size() + 8);
    for (size_t at = 0; at < line.size();) {
        const KeywordBreak* k = keywordAt(line, at);
        if (k == nullptr) {
            broken += line[at++];
            continue;
        }
        broken.append(line, at, k->offset).append(1, '%');
        at += k->offset;
    }
    return broken;
}

// True when a file line starting with the `length` characters of `piece`
// would be misread: trimmed, taken for a comment or for the end marker.
bool needsEscapeAtStart(const std::string& piece, size_t length) {
    if (length == 0) return false;
    if (isBlankChar(piece[0]) || piece[0] == MessageTable::COMMENT_PREFIX[0]) return true;
    return length == 1 && piece[0] == MessageTable::MESSAGE_END_MARKER[0];
}

// `piece` made safe as the start of a file line.
std::string escapeLineStart(const std::string& piece) {
    return needsEscapeAtStart(piece, piece.size()) ? "%" + piece : piece;
}

// The file line for one logical line, before any splitting.
std::string fileLine(const std::string& body, bool lineBreak, bool last) {
    size_t length = endsWithLonePercent(body) ? body.size() - 1 : body.size();
    bool open = length == 0 || isBlankChar(body[length - 1]);
    std::string line;
    line.reserve(length + 5);
    if (needsEscapeAtStart(body, length)) line += '%';
    line.append(body, 0, length);
    if (open) return line + (lineBreak ? "%n%0" : "%0");
    if (lineBreak && last) line += "%n";
    return line;
}

// Cuts `line` into file lines of at most MAX_FILE_LINE characters.
void appendSplit(std::string line, std::vector<std::string>& out) {
    if (line.size() <= MAX_FILE_LINE) {
        out.push_back(std::move(line));
        return;
    }
    const size_t limit = MAX_FILE_LINE - 8;  // room for "%" before, "%0" after
    size_t start = 0;
    while (start < line.size()) {
        size_t end = start;
        while (end < line.size()) {
            size_t next = unitEnd(line, end);
            if (next - start > limit) break;
            end = next;
        }
        if (end == start) throw UnwritableText("an insert longer than a file line");
        std::string piece = line.substr(start, end - start);
        if (start > 0) piece = escapeLineStart(piece);
        if (end < line.size()) piece += "%0";
        out.push_back(piece);
        start = end;
    }
}

}  // namespace

std::vector<std::string> writeTextLines(const std::vector<std::string>& lines,
                                        bool finalLineBreak) {
    std::vector<std::string> out;
    out.reserve(lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        // The reader stops at a NUL and splits lines at line feeds.
        if (lines[i].find('\0') != std::string::npos || lines[i].find('\n') != std::string::npos) {
            throw UnwritableText("a text line holding a NUL or a line feed");
        }
        bool last = i + 1 == lines.size();
        bool lineBreak = !endsWithNoBreakEscape(lines[i]) && (!last || finalLineBreak);
        std::string line = fileLine(lines[i], lineBreak, last);
        if (i == 0) line = breakHeaderKeywords(line);
        appendSplit(std::move(line), out);
    }
    return out;
}
