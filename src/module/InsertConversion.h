// Internal: the printf conversion of an insert format, checked before use.
#ifndef TQMSG_MODULE_INSERT_CONVERSION_H
#define TQMSG_MODULE_INSERT_CONVERSION_H

#include <cstddef>

// The type of the one value that an accepted insert format reads.
enum class InsertValueType {
    Int,         // d i, also with hh and h (promoted to int)
    UInt,        // o u x X, also with hh and h
    Long,        // ld li
    ULong,       // lo lu lx lX
    LongLong,    // lld lli
    ULongLong,   // llo llu llx llX
    IntMax,      // jd ji
    UIntMax,     // jo ju jx jX
    SignedSize,  // zd zi
    Size,        // zo zu zx zX
    PtrDiff,     // td ti to tu tx tX
    Double,      // e E f F g G a A, also with l
    LongDouble,  // the same with L
    Char,        // c
    WideChar,    // lc
    Text,        // s
    WideText,    // ls
    Pointer,     // p
};

// Largest width or precision an insert format may ask for: larger ones would
// only produce padding beyond the insert's length limit, slowly.
const long MAX_INSERT_FIELD = 9999;

// Checks that `format` (`length` bytes: "%" and the text between an insert's
// two "!" markers) is exactly one printf conversion that reads one value:
// flags, width, precision, length modifier, conversion character, and nothing
// else. Returns null and sets `type` when it is accepted; otherwise returns
// the reason it is refused. A "*" width or precision, the n conversion, "%%",
// a lone "%" and any further text are refused, so a message text can neither
// write memory nor read arguments that are not there.
const char* checkInsertFormat(const char* format, std::size_t length, InsertValueType& type);

#endif  // TQMSG_MODULE_INSERT_CONVERSION_H
