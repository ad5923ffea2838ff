// Internal: case-insensitive keyword search over a line as read.
#ifndef TQMSG_PARSER_KEYWORD_SEARCH_H
#define TQMSG_PARSER_KEYWORD_SEARCH_H

#include <cstddef>
#include <cstdint>

// A ranked list of lower-case keywords searched for in a line without regard
// to case. Each byte of the line is lowered exactly as `toLowerCase` does
// (libc's tolower in the caller's locale), so the result is that of searching
// the lower-cased copy with find() for each keyword in turn; but no copy is
// made and the line is read once for all keywords. Every header and top-level
// line is classified this way.
class KeywordSet {
public:
    static const int MAX_KEYWORDS = 8;

    // `keywords` must outlive the set; at most MAX_KEYWORDS, each of two
    // characters or more.
    KeywordSet(const char* const* keywords, int count);

    // The rank of the first keyword of the list that occurs anywhere in the
    // `length` bytes at `text`, with the position of its first occurrence in
    // `position`; the keyword count when none occurs. `text[length]` must be
    // readable (a NUL-terminated line or string).
    int firstFound(const char* text, std::size_t length, std::size_t& position) const;

private:
    const char* const* keywords_;
    std::size_t lengths_[MAX_KEYWORDS];
    int count_;
    uint8_t startingWith_[256];  // bit k: keyword k starts with this lower-case byte
    uint8_t secondIs_[256];      // bit k: keyword k has this lower-case byte second
};

#endif  // TQMSG_PARSER_KEYWORD_SEARCH_H
