// C integer constants, bounded to 32 bits.
#include "WindowsNumber.h"

namespace {

int digitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return 99;
}

bool readDigits(const std::string& digits, int base, unsigned long& value) {
    if (digits.empty()) return false;
    value = 0;
    for (char c : digits) {
        int digit = digitValue(c);
        if (digit >= base) return false;
        value = value * static_cast<unsigned long>(base) + static_cast<unsigned long>(digit);
        if (value > 0xFFFFFFFFUL) return false;
    }
    return true;
}

}  // namespace

bool parseWindowsNumber(const std::string& text, WindowsNumber& number) {
    std::string digits = text;
    while (!digits.empty() && (digits.back() == 'u' || digits.back() == 'U' ||
                               digits.back() == 'l' || digits.back() == 'L')) {
        digits.pop_back();
    }
    number.octal = false;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        return readDigits(digits.substr(2), 16, number.value);
    }
    if (digits.size() > 1 && digits[0] == '0') {
        unsigned long decimal = 0;
        if (!readDigits(digits, 8, number.value)) return false;
        number.octal = readDigits(digits, 10, decimal) && decimal != number.value;
        return true;
    }
    return readDigits(digits, 10, number.value);
}
