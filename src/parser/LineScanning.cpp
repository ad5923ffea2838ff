// The small line tests and splitters shared by every reader of the parser.
#include <cstdint>
#include <cstring>

#include "MessageTable.h"
#include "parser/ParseError.h"
#include "parser/TextSpan.h"

namespace {

std::string trimmed(const char* begin, const char* end) {
    TextSpan kept = trimmedSpan(begin, end);
    return std::string(kept.begin, kept.end);
}

bool isDecimalDigit(char c) { return c >= '0' && c <= '9'; }

bool isHexLetter(char c) { return (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

int digitValue(char c) {
    if (isDecimalDigit(c)) return c - '0';
    return (c | 0x20) - 'a' + 10;
}

// The character check of getNumber: an optional sign (when allowed), decimal
// digits, one "x" or "X" at position 1 (or 2 after a sign) switching to
// hexadecimal, and hexadecimal letters once it is on. Sets `hexadecimal`.
bool passesNumberCheck(const std::string& t, bool allowSign, bool& hexadecimal) {
    hexadecimal = false;
    for (std::size_t i = 0; i < t.size(); ++i) {
        char c = t[i];
        if (allowSign && i == 0 && (c == '+' || c == '-')) continue;
        if (c == 'x' || c == 'X') {
            if (i == 1 || (allowSign && i == 2)) {
                hexadecimal = true;
                continue;
            }
            return false;
        }
        if (isDecimalDigit(c) || (hexadecimal && isHexLetter(c))) continue;
        return false;
    }
    return true;
}

// Converts a text that passed the check the way "%ld" / "%lx" scan it: an
// optional sign, for hexadecimal an optional 0x prefix, then the longest run of
// digits (a hexadecimal "0x" without digits reads as 0). False when no digit
// is read or the magnitude exceeds 32 bits; the result is the 32-bit signed
// value of the magnitude with its sign applied.
bool convertNumber(const std::string& t, bool hexadecimal, long& number) {
    std::size_t i = 0;
    bool negative = false;
    if (i < t.size() && (t[i] == '+' || t[i] == '-')) negative = t[i++] == '-';
    bool digitSeen = false;
    if (hexadecimal && i + 1 < t.size() && t[i] == '0' && (t[i + 1] == 'x' || t[i + 1] == 'X')) {
        i += 2;
        digitSeen = true;
    }
    uint64_t magnitude = 0;
    const uint64_t base = hexadecimal ? 16 : 10;
    for (; i < t.size(); ++i) {
        bool digit = isDecimalDigit(t[i]) || (hexadecimal && isHexLetter(t[i]));
        if (!digit) break;
        magnitude = magnitude * base + static_cast<uint64_t>(digitValue(t[i]));
        if (magnitude > UINT32_MAX) return false;
        digitSeen = true;
    }
    if (!digitSeen) return false;
    uint32_t pattern = static_cast<uint32_t>(magnitude);
    if (negative) pattern = 0u - pattern;
    number = toInt32(static_cast<long>(static_cast<int32_t>(pattern)));
    return true;
}

}  // namespace

std::string MessageTable::NameValue::toString() {
    return "<name=\"" + name + "\"; value=\"" + value + "\">";
}

bool MessageTable::commentLine(char* line) {
    return line[0] != '\0' && line[0] == COMMENT_PREFIX[0];
}

bool MessageTable::blankLine(char* line) {
    for (const char* c = line; *c != '\0'; ++c) {
        if (!isWhite(*c)) return false;
    }
    return true;
}

void MessageTable::trim(char* text, std::string& out) {
    out = trimmed(text, text + std::strlen(text));
}

void MessageTable::trimAfter(char* text, std::string& out) {
    TextSpan kept = trailingTrimmedSpan(text, std::strlen(text));
    out.assign(kept.begin, kept.end);
}

MessageTable::NameValue MessageTable::parseNameValuePair(std::string& text) {
    std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        throw parseError(*this, "Expected Name Value pair got: \"%s\"", text.c_str());
    }
    NameValue pair;
    pair.name = trimmed(text.data(), text.data() + equals);
    pair.value = trimmed(text.data() + equals + 1, text.data() + text.size());
    return pair;
}

bool MessageTable::getNumber(std::string& text, long& number, bool allowSign) {
    std::string t = trimmed(text.data(), text.data() + text.size());
    bool hexadecimal = false;
    if (!passesNumberCheck(t, allowSign, hexadecimal)) return false;
    return convertNumber(t, hexadecimal, number);
}
