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
//
// The scan slides a window as long as the shortest keyword along the line and
// looks only at the window's last byte (Horspool's rule for several
// patterns): a byte that no keyword holds at that place moves the window on by
// as much as the keywords allow, so an ordinary text line is mostly skipped.
class KeywordSet {
public:
    static const int MAX_KEYWORDS = 8;

    // `keywords` must outlive the set; at most MAX_KEYWORDS, none empty.
    KeywordSet(const char* const* keywords, int count);

    // The rank of the first keyword of the list that occurs anywhere in the
    // `length` bytes at `text`, with the position of its first occurrence in
    // `position`; the keyword count when none occurs.
    int firstFound(const char* text, std::size_t length, std::size_t& position) const;

private:
    const char* const* keywords_;
    std::size_t lengths_[MAX_KEYWORDS];
    int count_;
    std::size_t window_;       // length of the shortest keyword
    uint8_t shift_[256];       // how far a lower-case last byte moves the window
    uint8_t endingWith_[256];  // bit k: keyword k has this byte last in the window
};

#endif  // TQMSG_PARSER_KEYWORD_SEARCH_H
