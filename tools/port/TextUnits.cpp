// Unit boundaries of message texts.
#include "TextUnits.h"

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// An insert: "%", a digit from 1 to 9, up to two more digits, then an
// optional format up to the next "!" (to the end of the text when unclosed).
size_t insertEnd(const std::string& text, size_t pos) {
    size_t end = pos + 2;
    while (end < text.size() && end < pos + 4 && isDigit(text[end])) ++end;
    if (end < text.size() && text[end] == '!') {
        size_t close = text.find('!', end + 1);
        end = close == std::string::npos ? text.size() : close + 1;
    }
    return end;
}

size_t utf8End(const std::string& text, size_t pos) {
    size_t end = pos + 1;
    while (end < text.size() && end < pos + 4 &&
           (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
        ++end;
    }
    return end;
}

}  // namespace

size_t unitEnd(const std::string& text, size_t pos) {
    char c = text[pos];
    if (c == '%') {
        if (pos + 1 >= text.size()) return pos + 1;
        char next = text[pos + 1];
        if (next >= '1' && next <= '9') return insertEnd(text, pos);
        return next == '\n' ? pos + 1 : utf8End(text, pos + 1);
    }
    if (static_cast<unsigned char>(c) >= 0xC0) return utf8End(text, pos);
    return pos + 1;
}

namespace {

// The start of the last unit of a non-empty `text`.
size_t lastUnitStart(const std::string& text) {
    size_t start = 0;
    for (size_t pos = 0; pos < text.size(); pos = unitEnd(text, pos)) start = pos;
    return start;
}

}  // namespace

bool endsWithNoBreakEscape(const std::string& text) {
    if (text.size() < 2 || text.compare(text.size() - 2, 2, "%0") != 0) return false;
    return lastUnitStart(text) == text.size() - 2;
}

bool endsWithLonePercent(const std::string& text) {
    if (text.empty() || text.back() != '%') return false;
    return lastUnitStart(text) == text.size() - 1;
}
