// The typed message functions of `tqmsg header --functions`: for each
// message, a static inline C function whose parameters are its inserts, each
// of the C type the formatter reads it as, so that a call with an argument of
// the wrong type or count fails to compile instead of crashing at run time.
#ifndef TQMSG_TOOL_TYPED_FUNCTIONS_H
#define TQMSG_TOOL_TYPED_FUNCTIONS_H

#include <string>
#include <vector>

#include "InsertAgreement.h"

// A message with a symbolic name, and its texts in every language.
struct NamedMessage {
    std::string name;  // a C identifier, #defined to the message identifier before the functions
    std::vector<TranslatedText> texts;
};

struct TypedFunctions {
    std::string text;  // the #include and the functions, for inside the header guard
    std::vector<std::string> warnings;  // one per message left without a function, saying why
};

// The functions of `messages`, in their order. A message gets none when its
// languages read an insert differently, when it leaves a gap in its insert
// numbers, or when an insert before its last is a value that the formatter's
// variable-argument reading cannot step over (a floating-point number, or a
// value of 8 bytes on i386).
TypedFunctions typedFunctions(const std::vector<NamedMessage>& messages);

#endif  // TQMSG_TOOL_TYPED_FUNCTIONS_H
