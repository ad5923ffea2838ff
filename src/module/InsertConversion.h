// Internal: the one classifier of insert formats.
//
// An insert format is "%" and the text between an insert's two "!" marks. It
// is handed to snprintf as printf format text: literal text and "%%" around at
// most one conversion. The classifier decides, for every conversion and
// length modifier the C library or Windows message files know, whether the
// formatter prints it as written, prints it under another spelling, or
// refuses it; the decision table is in InsertConversion.cpp.
#ifndef TQMSG_MODULE_INSERT_CONVERSION_H
#define TQMSG_MODULE_INSERT_CONVERSION_H

#include <cstddef>
#include <string>

// The type of the one value an insert format reads; None when it reads none.
enum class InsertValueType {
    None,        // only literal text and "%%"
    Int,         // d i, also with hh and h (promoted to int), I32
    UInt,        // o u x X b B, also with hh and h, I32
    Long,        // l on d i
    ULong,       // l on o u x X b B
    LongLong,    // ll q L I64 on d i
    ULongLong,   // ll q L I64 on o u x X b B
    IntMax,      // j on d i
    UIntMax,     // j on o u x X b B
    SignedSize,  // z Z I on d i
    Size,        // z Z I on o u x X b B
    PtrDiff,     // t
    Double,      // e E f F g G a A, also with l
    LongDouble,  // the same with L
    Char,        // c C, also with h l w (an int)
    Text,        // s S, also with h l w (a narrow text)
    Pointer,     // p
};

// A width or precision that the format does not give.
const long NO_FIELD = -1;

// What the classifier found in one format. Positions are byte offsets into
// the format; the format is read, as snprintf reads it, up to its first NUL.
struct InsertConversion {
    const char* refusal = nullptr;  // set when the format is refused: the reason
    InsertValueType type = InsertValueType::None;
    std::size_t length = 0;            // bytes of the format up to its first NUL
    std::size_t specBegin = 0;         // the conversion: its "%" ...
    std::size_t flagsEnd = 0;          // ... its flags end here ...
    std::size_t spellingBegin = 0;     // ... its length modifier begins here ...
    std::size_t specEnd = 0;           // ... and it ends after its conversion character
    long width = NO_FIELD;             // 0 to INT_MAX
    long precision = NO_FIELD;         // 0 to INT_MAX
    char conversion = 0;               // the conversion character snprintf is handed
    const char* printedModifier = "";  // the length modifier snprintf is handed

    // True when the format is handed to snprintf exactly as written.
    bool printedAsWritten(const char* format) const;
    // True when the format is one conversion without flags, width or
    // precision and without literal text around it ("%d", "%lu", "%S").
    bool isBare() const {
        return specBegin == 0 && flagsEnd == 1 && spellingBegin == 1 && specEnd == length;
    }
};

// Classifies `format` (`length` bytes, beginning with "%").
void classifyInsertFormat(const char* format, std::size_t length, InsertConversion& conversion);

// The text handed to snprintf: `format` with the conversion respelled.
std::string printfFormatOf(const char* format, const InsertConversion& conversion);

#endif  // TQMSG_MODULE_INSERT_CONVERSION_H
