// Validation of insert formats: one printf conversion, one value.
#include "module/InsertConversion.h"

namespace {

enum class LengthModifier { None, Char, Short, Long, LongLong, IntMax, Size, PtrDiff, LongDouble };

const char* const NO_CONVERSION = "it has no conversion character";
const char* const STAR_FIELD = "a '*' width or precision would read an argument of its own";
const char* const WRITES_MEMORY = "the n conversion writes to memory";
const char* const LITERAL_PERCENT = "a literal percent sign formats no value";
const char* const UNKNOWN_CONVERSION = "it is not a printf conversion";
const char* const LENGTH_MISMATCH = "the length modifier does not fit the conversion";
const char* const TRAILING_TEXT = "it holds more than one conversion";
const char* const FIELD_TOO_LARGE = "a width or precision above 9999 is not supported";

// A cursor over the format that consumes from the front.
struct FormatCursor {
    const char* at;
    const char* end;

    bool atEnd() const { return at == end; }
    bool consume(char c) {
        if (at == end || *at != c) return false;
        ++at;
        return true;
    }
};

bool isFlag(char c) {
    return c == '-' || c == '+' || c == ' ' || c == '#' || c == '0' || c == '\'';
}

// Consumes the digits of a width or precision; null, or the reason it is refused.
const char* consumeField(FormatCursor& cursor) {
    if (cursor.consume('*')) return STAR_FIELD;
    long value = 0;
    while (!cursor.atEnd() && *cursor.at >= '0' && *cursor.at <= '9') {
        value = value * 10 + (*cursor.at - '0');
        if (value > MAX_INSERT_FIELD) return FIELD_TOO_LARGE;
        ++cursor.at;
    }
    return nullptr;
}

LengthModifier consumeLength(FormatCursor& cursor) {
    if (cursor.consume('h')) {
        return cursor.consume('h') ? LengthModifier::Char : LengthModifier::Short;
    }
    if (cursor.consume('l')) {
        return cursor.consume('l') ? LengthModifier::LongLong : LengthModifier::Long;
    }
    if (cursor.consume('j')) return LengthModifier::IntMax;
    if (cursor.consume('z')) return LengthModifier::Size;
    if (cursor.consume('t')) return LengthModifier::PtrDiff;
    if (cursor.consume('L')) return LengthModifier::LongDouble;
    return LengthModifier::None;
}

// The type an integer conversion reads under `length`; false for L.
bool integerType(LengthModifier length, bool isUnsigned, InsertValueType& type) {
    switch (length) {
        case LengthModifier::None:
        case LengthModifier::Char:
        case LengthModifier::Short:
            type = isUnsigned ? InsertValueType::UInt : InsertValueType::Int;
            return true;
        case LengthModifier::Long:
            type = isUnsigned ? InsertValueType::ULong : InsertValueType::Long;
            return true;
        case LengthModifier::LongLong:
            type = isUnsigned ? InsertValueType::ULongLong : InsertValueType::LongLong;
            return true;
        case LengthModifier::IntMax:
            type = isUnsigned ? InsertValueType::UIntMax : InsertValueType::IntMax;
            return true;
        case LengthModifier::Size:
            type = isUnsigned ? InsertValueType::Size : InsertValueType::SignedSize;
            return true;
        case LengthModifier::PtrDiff:
            type = InsertValueType::PtrDiff;
            return true;
        case LengthModifier::LongDouble:
            return false;
    }
    return false;
}

// The type conversion `c` reads under `length`, or the reason it is refused.
const char* conversionType(char c, LengthModifier length, InsertValueType& type) {
    bool none = length == LengthModifier::None;
    bool wide = length == LengthModifier::Long;
    switch (c) {
        case 'd':
        case 'i':
            return integerType(length, false, type) ? nullptr : LENGTH_MISMATCH;
        case 'o':
        case 'u':
        case 'x':
        case 'X':
            return integerType(length, true, type) ? nullptr : LENGTH_MISMATCH;
        case 'e':
        case 'E':
        case 'f':
        case 'F':
        case 'g':
        case 'G':
        case 'a':
        case 'A':
            if (!none && !wide && length != LengthModifier::LongDouble) return LENGTH_MISMATCH;
            type = length == LengthModifier::LongDouble ? InsertValueType::LongDouble
                                                        : InsertValueType::Double;
            return nullptr;
        case 'c':
            type = wide ? InsertValueType::WideChar : InsertValueType::Char;
            return none || wide ? nullptr : LENGTH_MISMATCH;
        case 's':
            type = wide ? InsertValueType::WideText : InsertValueType::Text;
            return none || wide ? nullptr : LENGTH_MISMATCH;
        case 'p':
            type = InsertValueType::Pointer;
            return none ? nullptr : LENGTH_MISMATCH;
        case 'n':
            return WRITES_MEMORY;
        case '%':
            return LITERAL_PERCENT;
        case '*':
            return STAR_FIELD;
        default:
            return UNKNOWN_CONVERSION;
    }
}

}  // namespace

const char* checkInsertFormat(const char* format, std::size_t length, InsertValueType& type) {
    FormatCursor cursor{format, format + length};
    if (!cursor.consume('%')) return UNKNOWN_CONVERSION;
    if (cursor.atEnd()) return NO_CONVERSION;
    while (!cursor.atEnd() && isFlag(*cursor.at)) ++cursor.at;
    const char* refused = consumeField(cursor);                                     // width
    if (refused == nullptr && cursor.consume('.')) refused = consumeField(cursor);  // precision
    if (refused != nullptr) return refused;
    LengthModifier lengthModifier = consumeLength(cursor);
    if (cursor.atEnd()) return NO_CONVERSION;
    refused = conversionType(*cursor.at++, lengthModifier, type);
    if (refused != nullptr) return refused;
    return cursor.atEnd() ? nullptr : TRAILING_TEXT;
}
