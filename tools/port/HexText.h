// Numbers as the converter writes them: upper-case hexadecimal digits, at
// least `minDigits` of them (messages, names and file lines hold many, so
// without the cost of a printf call each).
#ifndef TQMSG_PORT_HEX_TEXT_H
#define TQMSG_PORT_HEX_TEXT_H

#include <string>

inline std::string upperHex(unsigned long value, size_t minDigits = 1) {
    char digits[2 * sizeof(unsigned long)];
    size_t count = 0;
    do {
        digits[sizeof(digits) - ++count] = "0123456789ABCDEF"[value & 0xF];
        value >>= 4;
    } while (value != 0);
    std::string text(minDigits > count ? minDigits - count : 0, '0');
    return text.append(digits + sizeof(digits) - count, count);
}

// "0x1F" for 31.
inline std::string hex(unsigned long value) { return "0x" + upperHex(value); }

#endif  // TQMSG_PORT_HEX_TEXT_H
