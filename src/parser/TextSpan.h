// Internal: trimming a line in place, as MessageTable::trim and trimAfter do,
// for the readers that only test or append the result and need no string.
#ifndef TQMSG_PARSER_TEXT_SPAN_H
#define TQMSG_PARSER_TEXT_SPAN_H

#include <cstddef>
#include <cstring>

// White space of message files: tab, line feed, carriage return and space only.
inline bool isWhite(char c) { return c == '\t' || c == '\n' || c == '\r' || c == ' '; }

// A range of characters inside a line.
struct TextSpan {
    const char* begin;
    const char* end;

    std::size_t size() const { return static_cast<std::size_t>(end - begin); }
    bool equals(const char* text) const {
        return std::strlen(text) == size() && std::memcmp(begin, text, size()) == 0;
    }
};

// `begin`..`end` without white space at either end: what trim keeps.
inline TextSpan trimmedSpan(const char* begin, const char* end) {
    while (begin < end && isWhite(*begin)) ++begin;
    while (end > begin && isWhite(end[-1])) --end;
    return TextSpan{begin, end};
}

// `text` without white space at its end, its first character always kept:
// what trimAfter keeps.
inline TextSpan trailingTrimmedSpan(const char* text, std::size_t length) {
    std::size_t end = length;
    while (end > 1 && isWhite(text[end - 1])) --end;
    return TextSpan{text, text + end};
}

#endif  // TQMSG_PARSER_TEXT_SPAN_H
