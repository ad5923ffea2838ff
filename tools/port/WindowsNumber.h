// Numbers as Windows message files write them: C integer constants, decimal,
// 0x hexadecimal or 0-prefixed octal, with optional U and L suffixes.
#ifndef TQMSG_PORT_WINDOWS_NUMBER_H
#define TQMSG_PORT_WINDOWS_NUMBER_H

#include <string>

struct WindowsNumber {
    unsigned long value = 0;
    bool octal = false;  // read as octal, and the decimal reading differs
};

// False for anything that is not such a constant or does not fit 32 bits.
bool parseWindowsNumber(const std::string& text, WindowsNumber& number);

#endif  // TQMSG_PORT_WINDOWS_NUMBER_H
