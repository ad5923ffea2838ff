// Renderings of message texts for one-line and machine-readable output.
// Texts are bytes; valid UTF-8 sequences are kept as characters, any other
// byte at or above 0x80 is treated as a single Latin-1 character.
#ifndef TQMSG_TOOL_TEXT_ESCAPE_H
#define TQMSG_TOOL_TEXT_ESCAPE_H

#include <string>

// One line: backslash, line feed, carriage return and tab as \\ \n \r \t,
// other control bytes and bytes of invalid UTF-8 as \xHH; valid UTF-8 kept.
std::string escapeLine(const std::string& text);

// A JSON string literal, quotes included: control characters and every
// character beyond ASCII as \uXXXX (surrogate pairs above U+FFFF).
std::string jsonString(const std::string& text);

// Safe to print on a terminal: control characters (tab excepted), C1 controls,
// the invisible byte-order mark U+FEFF and bytes outside valid UTF-8 as \xHH
// per byte; everything else, backslashes included, unchanged.
std::string escapeForTerminal(const std::string& text);

#endif  // TQMSG_TOOL_TEXT_ESCAPE_H
