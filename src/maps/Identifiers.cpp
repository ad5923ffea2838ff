// The identifier and text helpers shared by every unit.
#include <cctype>
#include <cstdio>

#include "MessageModuleMaps.h"

std::string toHex(long value) {
    // "0x" + 8 hex digits + " (" + sign and 10 digits + ")" + NUL fits in 32 bytes.
    char text[32];
    long normalised = toInt32(value);
    std::snprintf(text, sizeof text, "0x%lx (%ld)",
                  static_cast<unsigned long>(static_cast<uint32_t>(normalised)), normalised);
    return text;
}

// The parser lower-cases every header and top-level line, so this runs once
// per line of every file. glibc's tolower is a lookup in the current locale's
// table; reading that table once per text, instead of calling tolower per
// byte, gives the same bytes (the locale cannot change within one call).
std::string toLowerCase(std::string& s) {
    std::string lowered(s);
#ifdef __GLIBC__
    const int32_t* table = *__ctype_tolower_loc();
    for (char& c : lowered) {
        c = static_cast<char>(table[static_cast<unsigned char>(c)]);
    }
#else
    for (char& c : lowered) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
#endif
    return lowered;
}
