// The classification of insert formats, and the table it follows.
//
// Every argument the formatter receives is a narrow text, an integer or, from
// a variable argument list, a floating value or a pointer. A format must never
// read a value as something it cannot be: the wide spellings of characters
// and texts are therefore printed narrow, the Windows size prefixes are
// respelled in the C library's terms, and whatever would read a second
// argument, write memory or print something that is no argument is refused.
#include "module/InsertConversion.h"

#include <climits>
#include <cstring>

namespace {

// The classes of conversion characters. A length modifier is accepted or
// refused per class.
enum class ConversionClass { Integer, Floating, Character, Text, Pointer, Refused };

// A conversion character as written, and what snprintf is handed instead.
struct ConversionCharacter {
    char written;
    ConversionClass kind;
    char printed;
    bool isUnsigned;      // integers: reads the unsigned twin of the rule's type
    const char* refusal;  // Refused: the reason
};

// Every conversion character of the C library (glibc's C, S and its b, B
// included). Anything else is refused as no printf conversion.
const ConversionCharacter CONVERSIONS[] = {
    {'d', ConversionClass::Integer, 'd', false, nullptr},
    {'i', ConversionClass::Integer, 'i', false, nullptr},
    {'o', ConversionClass::Integer, 'o', true, nullptr},
    {'u', ConversionClass::Integer, 'u', true, nullptr},
    {'x', ConversionClass::Integer, 'x', true, nullptr},
    {'X', ConversionClass::Integer, 'X', true, nullptr},
    {'b', ConversionClass::Integer, 'b', true, nullptr},  // binary
    {'B', ConversionClass::Integer, 'B', true, nullptr},
    {'e', ConversionClass::Floating, 'e', false, nullptr},
    {'E', ConversionClass::Floating, 'E', false, nullptr},
    {'f', ConversionClass::Floating, 'f', false, nullptr},
    {'F', ConversionClass::Floating, 'F', false, nullptr},
    {'g', ConversionClass::Floating, 'g', false, nullptr},
    {'G', ConversionClass::Floating, 'G', false, nullptr},
    {'a', ConversionClass::Floating, 'a', false, nullptr},
    {'A', ConversionClass::Floating, 'A', false, nullptr},
    {'c', ConversionClass::Character, 'c', false, nullptr},
    {'C', ConversionClass::Character, 'c', false, nullptr},  // the wide lc: printed narrow
    {'s', ConversionClass::Text, 's', false, nullptr},
    {'S', ConversionClass::Text, 's', false, nullptr},  // the wide ls: printed narrow
    {'p', ConversionClass::Pointer, 'p', false, nullptr},
    {'n', ConversionClass::Refused, 0, false, "the n conversion writes to memory"},
    {'m', ConversionClass::Refused, 0, false,
     "the m conversion prints the C library's error text, not an argument"},
    {'%', ConversionClass::Refused, 0, false,
     "a percent sign takes no flags, width, precision or length modifier"},
};

// One accepted pairing of a length modifier with a class of conversions: the
// type of the value read and the modifier snprintf is handed. For integers
// the type is the signed one; o u x X b B read its unsigned twin. Every
// pairing not listed here is refused.
struct LengthRule {
    const char* written;
    ConversionClass applies;
    InsertValueType reads;
    const char* printed;
};

const LengthRule LENGTH_RULES[] = {
    {"", ConversionClass::Integer, InsertValueType::Int, ""},
    {"hh", ConversionClass::Integer, InsertValueType::Int, "hh"},  // an int, printed as a char
    {"h", ConversionClass::Integer, InsertValueType::Int, "h"},    // an int, printed as a short
    {"l", ConversionClass::Integer, InsertValueType::Long, "l"},
    {"ll", ConversionClass::Integer, InsertValueType::LongLong, "ll"},
    {"q", ConversionClass::Integer, InsertValueType::LongLong, "ll"},  // BSD's quad
    {"L", ConversionClass::Integer, InsertValueType::LongLong, "ll"},  // glibc reads it as ll
    {"j", ConversionClass::Integer, InsertValueType::IntMax, "j"},
    {"z", ConversionClass::Integer, InsertValueType::SignedSize, "z"},
    {"Z", ConversionClass::Integer, InsertValueType::SignedSize, "z"},  // glibc's old z
    {"t", ConversionClass::Integer, InsertValueType::PtrDiff, "t"},
    {"I", ConversionClass::Integer, InsertValueType::SignedSize, "z"},   // Windows: pointer-sized
    {"I32", ConversionClass::Integer, InsertValueType::Int, ""},         // Windows: 32 bits
    {"I64", ConversionClass::Integer, InsertValueType::LongLong, "ll"},  // Windows: 64 bits
    {"", ConversionClass::Floating, InsertValueType::Double, ""},
    {"l", ConversionClass::Floating, InsertValueType::Double, "l"},  // no effect on doubles
    {"L", ConversionClass::Floating, InsertValueType::LongDouble, "L"},
    // A character or text argument is always narrow: the wide spellings (l, w,
    // and C, S above) and the Windows narrow one (h) are all printed narrow.
    {"", ConversionClass::Character, InsertValueType::Char, ""},
    {"h", ConversionClass::Character, InsertValueType::Char, ""},
    {"l", ConversionClass::Character, InsertValueType::Char, ""},
    {"w", ConversionClass::Character, InsertValueType::Char, ""},
    {"", ConversionClass::Text, InsertValueType::Text, ""},
    {"h", ConversionClass::Text, InsertValueType::Text, ""},
    {"l", ConversionClass::Text, InsertValueType::Text, ""},
    {"w", ConversionClass::Text, InsertValueType::Text, ""},
    {"", ConversionClass::Pointer, InsertValueType::Pointer, ""},
};

// The flags of the C library: left-justify, sign, blank, alternate form, zero
// padding, thousands grouping. glibc's I flag (the locale's digits) is not
// among them: an I is the Windows size prefix.
const char FLAGS[] = "-+ #0'";

const char* const EMPTY_FORMAT = "the format is empty";
const char* const STAR_FIELD = "a '*' width or precision would read an argument of its own";
const char* const POSITIONAL = "an argument position ('$') is not supported";
const char* const FIELD_TOO_LARGE = "a width or precision above 2147483647 cannot be formatted";
const char* const LOCALE_DIGITS = "the I flag (the locale's digits) is not supported";
const char* const NO_CONVERSION = "it ends before its conversion character";
const char* const UNKNOWN_CONVERSION = "it is not a printf conversion";
const char* const LENGTH_MISMATCH = "the length modifier does not fit the conversion";
const char* const SECOND_CONVERSION = "it holds more than one conversion";

const ConversionCharacter* findConversion(char c) {
    for (const ConversionCharacter& conversion : CONVERSIONS) {
        if (conversion.written == c) return &conversion;
    }
    return nullptr;
}

// The longest length modifier of the table that starts at `at`, or "".
const char* longestModifier(const char* at, const char* end) {
    const char* longest = "";
    std::size_t longestLength = 0;
    for (const LengthRule& rule : LENGTH_RULES) {
        std::size_t length = std::strlen(rule.written);
        if (length > longestLength && length <= static_cast<std::size_t>(end - at) &&
            std::memcmp(at, rule.written, length) == 0) {
            longest = rule.written;
            longestLength = length;
        }
    }
    return longest;
}

const LengthRule* findRule(const char* modifier, ConversionClass kind) {
    for (const LengthRule& rule : LENGTH_RULES) {
        if (rule.applies == kind && std::strcmp(rule.written, modifier) == 0) return &rule;
    }
    return nullptr;
}

InsertValueType unsignedTwin(InsertValueType type) {
    switch (type) {
        case InsertValueType::Int:
            return InsertValueType::UInt;
        case InsertValueType::Long:
            return InsertValueType::ULong;
        case InsertValueType::LongLong:
            return InsertValueType::ULongLong;
        case InsertValueType::IntMax:
            return InsertValueType::UIntMax;
        case InsertValueType::SignedSize:
            return InsertValueType::Size;
        default:
            return type;  // ptrdiff_t has no unsigned twin; printf reads it as it is
    }
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Reads one conversion from its "%" on, consuming from the front.
class ConversionReader {
public:
    ConversionReader(const char* format, std::size_t length, InsertConversion& result)
        : format_(format), end_(format + length), result_(result) {}

    // Reads the conversion whose "%" is at `begin`; returns where it ends.
    // Sets `result_.refusal` when it is refused.
    std::size_t read(std::size_t begin) {
        at_ = format_ + begin + 1;
        result_.specBegin = begin;
        while (at_ != end_ && std::strchr(FLAGS, *at_) != nullptr) ++at_;
        result_.flagsEnd = position();
        if (!readField(result_.width)) return position();
        if (at_ != end_ && *at_ == '$') return refuse(POSITIONAL);
        if (at_ != end_ && *at_ == '.') {
            ++at_;
            if (!readField(result_.precision)) return position();
            if (result_.precision == NO_FIELD) result_.precision = 0;  // "." alone is 0
        }
        result_.spellingBegin = position();
        const char* modifier = longestModifier(at_, end_);
        at_ += std::strlen(modifier);
        if (at_ == end_) return refuse(NO_CONVERSION);
        readConversion(modifier, *at_++);
        result_.specEnd = position();
        return result_.specEnd;
    }

private:
    std::size_t position() const { return static_cast<std::size_t>(at_ - format_); }

    std::size_t refuse(const char* reason) {
        result_.refusal = reason;
        return position();
    }

    // Reads the digits of a width or precision into `field` (NO_FIELD when
    // there are none); false, with the reason set, when it is refused.
    bool readField(long& field) {
        if (at_ != end_ && *at_ == '*') {
            refuse(STAR_FIELD);
            return false;
        }
        if (at_ == end_ || !isDigit(*at_)) return true;
        long value = 0;
        for (; at_ != end_ && isDigit(*at_); ++at_) {
            if (value > (INT_MAX - (*at_ - '0')) / 10) {
                refuse(FIELD_TOO_LARGE);
                return false;
            }
            value = value * 10 + (*at_ - '0');
        }
        field = value;
        return true;
    }

    void readConversion(const char* modifier, char written) {
        const ConversionCharacter* conversion = findConversion(written);
        if (conversion == nullptr) {
            bool localeDigits = modifier[0] == 'I' && isDigit(written);
            result_.refusal = localeDigits ? LOCALE_DIGITS : UNKNOWN_CONVERSION;
            return;
        }
        if (conversion->kind == ConversionClass::Refused) {
            result_.refusal = conversion->refusal;
            return;
        }
        const LengthRule* rule = findRule(modifier, conversion->kind);
        if (rule == nullptr) {
            result_.refusal = LENGTH_MISMATCH;
            return;
        }
        result_.type = conversion->isUnsigned ? unsignedTwin(rule->reads) : rule->reads;
        result_.conversion = conversion->printed;
        result_.printedModifier = rule->printed;
    }

    const char* format_;
    const char* end_;
    const char* at_ = nullptr;
    InsertConversion& result_;
};

}  // namespace

bool InsertConversion::printedAsWritten(const char* format) const {
    if (type == InsertValueType::None) return true;
    std::size_t modifierLength = std::strlen(printedModifier);
    return specEnd - spellingBegin == modifierLength + 1 &&
           std::memcmp(format + spellingBegin, printedModifier, modifierLength) == 0 &&
           format[specEnd - 1] == conversion;
}

void classifyInsertFormat(const char* format, std::size_t length, InsertConversion& conversion) {
    conversion = InsertConversion();
    length = strnlen(format, length);
    conversion.length = length;
    if (length <= 1) {
        conversion.refusal = EMPTY_FORMAT;
        return;
    }
    ConversionReader reader(format, length, conversion);
    bool found = false;
    for (std::size_t at = 0; at < length;) {
        const void* percent = std::memchr(format + at, '%', length - at);
        if (percent == nullptr) break;
        at = static_cast<std::size_t>(static_cast<const char*>(percent) - format);
        if (at + 1 < length && format[at + 1] == '%') {
            at += 2;  // a literal percent sign
            continue;
        }
        if (at + 1 == length) {
            conversion.refusal = NO_CONVERSION;
            return;
        }
        if (found) {
            conversion.refusal = SECOND_CONVERSION;
            return;
        }
        found = true;
        at = reader.read(at);
        if (conversion.refusal != nullptr) return;
    }
}

std::string printfFormatOf(const char* format, const InsertConversion& conversion) {
    if (conversion.printedAsWritten(format)) return std::string(format, conversion.length);
    std::string printed(format, conversion.spellingBegin);
    printed += conversion.printedModifier;
    printed += conversion.conversion;
    printed.append(format + conversion.specEnd, conversion.length - conversion.specEnd);
    return printed;
}
