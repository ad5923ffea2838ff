// One-line and JSON escaping of message texts.
#include "TextEscape.h"

#include <cstdint>
#include <cstdio>

namespace {

// Length of the valid UTF-8 sequence at `pos` (2 to 4), its code point stored
// in `codePoint`; 0, with `codePoint` untouched, when the bytes there do not
// form one (overlong forms, surrogates and values above U+10FFFF included).
size_t utf8Sequence(const std::string& text, size_t pos, uint32_t& codePoint) {
    unsigned char lead = static_cast<unsigned char>(text[pos]);
    size_t length = lead >= 0xF5 ? 0 : lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 ? 2 : 0;
    if (length == 0 || pos + length > text.size()) return 0;
    uint32_t decoded = lead & (0x7F >> length);
    for (size_t i = 1; i < length; ++i) {
        unsigned char next = static_cast<unsigned char>(text[pos + i]);
        if ((next & 0xC0) != 0x80) return 0;
        decoded = (decoded << 6) | (next & 0x3F);
    }
    static const uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    bool surrogate = decoded >= 0xD800 && decoded <= 0xDFFF;
    if (decoded < smallest[length] || decoded > 0x10FFFF || surrogate) return 0;
    codePoint = decoded;
    return length;
}

std::string hexEscape(const char* format, unsigned value) {
    char buffer[16];  // "\\u" + 4 hex digits, or "\\x" + 2
    std::snprintf(buffer, sizeof(buffer), format, value);
    return buffer;
}

}  // namespace

std::string escapeLine(const std::string& text) {
    std::string out;
    for (size_t pos = 0; pos < text.size(); ++pos) {
        unsigned char c = static_cast<unsigned char>(text[pos]);
        uint32_t codePoint = 0;
        size_t length = c >= 0x80 ? utf8Sequence(text, pos, codePoint) : 0;
        if (length > 0) {
            out.append(text, pos, length);
            pos += length - 1;
        } else if (c == '\\') {
            out += "\\\\";
        } else if (c == '\n') {
            out += "\\n";
        } else if (c == '\r') {
            out += "\\r";
        } else if (c == '\t') {
            out += "\\t";
        } else if (c < 0x20 || c >= 0x7F) {
            out += hexEscape("\\x%02x", c);
        } else {
            out += static_cast<char>(c);
        }
    }
    return out;
}

std::string jsonString(const std::string& text) {
    std::string out = "\"";
    for (size_t pos = 0; pos < text.size(); ++pos) {
        unsigned char c = static_cast<unsigned char>(text[pos]);
        uint32_t codePoint = c;  // a byte outside valid UTF-8 stands for itself (Latin-1)
        size_t length = c >= 0x80 ? utf8Sequence(text, pos, codePoint) : 0;
        if (length > 0) pos += length - 1;
        if (codePoint == '"' || codePoint == '\\') {
            out += '\\';
            out += static_cast<char>(codePoint);
        } else if (codePoint == '\n') {
            out += "\\n";
        } else if (codePoint == '\r') {
            out += "\\r";
        } else if (codePoint == '\t') {
            out += "\\t";
        } else if (codePoint >= 0x20 && codePoint < 0x7F) {
            out += static_cast<char>(codePoint);
        } else if (codePoint > 0xFFFF) {
            uint32_t offset = codePoint - 0x10000;
            out += hexEscape("\\u%04x", 0xD800 + (offset >> 10));
            out += hexEscape("\\u%04x", 0xDC00 + (offset & 0x3FF));
        } else {
            out += hexEscape("\\u%04x", codePoint);
        }
    }
    return out + "\"";
}

std::string escapeForTerminal(const std::string& text) {
    std::string out;
    for (size_t pos = 0; pos < text.size(); ++pos) {
        unsigned char c = static_cast<unsigned char>(text[pos]);
        uint32_t codePoint = c;
        size_t length = c >= 0x80 ? utf8Sequence(text, pos, codePoint) : 1;
        bool valid = length > 0;
        if (!valid) length = 1;
        bool control = (codePoint < 0x20 && c != '\t') || (codePoint >= 0x7F && codePoint < 0xA0);
        if (valid && !control && codePoint != 0xFEFF) {
            out.append(text, pos, length);
        } else {
            for (size_t i = pos; i < pos + length; ++i) {
                out += hexEscape("\\x%02x", static_cast<unsigned char>(text[i]));
            }
        }
        pos += length - 1;
    }
    return out;
}
