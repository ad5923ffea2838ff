// The identifier and text helpers shared by every unit.
#include <cstdio>

#include "MessageModuleMaps.h"
#include "maps/CaseFolding.h"

std::string toHex(long value) {
    // "0x" + 8 hex digits + " (" + sign and 10 digits + ")" + NUL fits in 32 bytes.
    char text[32];
    long normalised = toInt32(value);
    std::snprintf(text, sizeof text, "0x%lx (%ld)",
                  static_cast<unsigned long>(static_cast<uint32_t>(normalised)), normalised);
    return text;
}

std::string toLowerCase(std::string& s) {
    std::string lowered(s);
    const CaseFolder fold;
    for (char& c : lowered) c = static_cast<char>(fold(c));
    return lowered;
}
