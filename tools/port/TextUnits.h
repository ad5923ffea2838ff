// The units a message text is made of, as the formatter reads it: an escape
// ("%" and the character after it), an insert ("%" with up to three digits and
// an optional "!format!"), a UTF-8 sequence or a single byte. Splitting or
// rewriting a text at unit boundaries never changes what it formats to.
#ifndef TQMSG_PORT_TEXT_UNITS_H
#define TQMSG_PORT_TEXT_UNITS_H

#include <string>

// The position just after the unit that starts at `pos` (< text.size()).
size_t unitEnd(const std::string& text, size_t pos);

// True for the characters the reader trims: space, tab, carriage return, line feed.
inline bool isBlankChar(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

// True when the last unit of `text` is the "%0" escape (no line feed after it).
bool endsWithNoBreakEscape(const std::string& text);

// True when `text` ends in a "%" that starts no unit (nothing follows it).
bool endsWithLonePercent(const std::string& text);

#endif  // TQMSG_PORT_TEXT_UNITS_H
