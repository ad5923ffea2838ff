// The C type a variable argument list must give for one insert, on both
// architectures the library is built for. The insert's kind and its printf
// conversion come from the module's classifier; this unit only names the C
// type that conversion reads, so a caller can declare a parameter of it and
// compare two inserts by their size on i386 and on x86-64 (the classifier
// reports the size of the running build and the widest of the two, which
// cannot tell "%ld" from "%lld" on x86-64).
#ifndef TQMSG_TOOL_INSERT_C_TYPE_H
#define TQMSG_TOOL_INSERT_C_TYPE_H

#include <string>

#include "MessageModule.h"

struct InsertCType {
    std::string name;   // "const char *", "long", "unsigned long long"...; "" when no value is read
    int i386Bytes = 0;  // its size on i386 (0 when no value is read)
    int x8664Bytes = 0;  // its size on x86-64
};

// The type that `info` reads; an empty name for NO_VALUE and REFUSED.
InsertCType insertCType(const InsertFormatInfo& info);

// How the value is read, in words: "text", "integer", "character",
// "floating-point number", "pointer", "no value" or "refused format".
std::string insertKindWord(InsertFormatInfo::Kind kind);

#endif  // TQMSG_TOOL_INSERT_C_TYPE_H
