// Internal: lower-casing bytes exactly as libc's tolower does.
#ifndef TQMSG_CASE_FOLDING_H
#define TQMSG_CASE_FOLDING_H

#include <cctype>
#include <cstdint>

// libc's tolower of one byte, in the caller's locale. The parser lowers or
// classifies every header and top-level line, so this runs once per byte of
// most files. glibc's tolower is a lookup in the current locale's table;
// reading that table once per text, instead of calling tolower per byte,
// gives the same bytes (the locale cannot change within one text).
class CaseFolder {
public:
    unsigned char operator()(char c) const {
#ifdef __GLIBC__
        return static_cast<unsigned char>(table_[static_cast<unsigned char>(c)]);
#else
        return static_cast<unsigned char>(std::tolower(static_cast<unsigned char>(c)));
#endif
    }

private:
#ifdef __GLIBC__
    const int32_t* table_ = *__ctype_tolower_loc();
#endif
};

#endif  // TQMSG_CASE_FOLDING_H
