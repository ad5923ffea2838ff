// C types of insert values, from the printf conversion the classifier hands
// to snprintf.
#include "InsertCType.h"

#include <cstring>

namespace {

struct TypeRow {
    const char* lengthModifier;  // as it stands before the conversion letter
    InsertCType signedType;
    InsertCType unsignedType;
};

// Integer conversions: hh and h values arrive promoted to int.
const TypeRow INTEGER_TYPES[] = {
    {"", {"int", 4, 4}, {"unsigned int", 4, 4}},
    {"hh", {"int", 4, 4}, {"unsigned int", 4, 4}},
    {"h", {"int", 4, 4}, {"unsigned int", 4, 4}},
    {"l", {"long", 4, 8}, {"unsigned long", 4, 8}},
    {"ll", {"long long", 8, 8}, {"unsigned long long", 8, 8}},
    {"q", {"long long", 8, 8}, {"unsigned long long", 8, 8}},
    {"j", {"intmax_t", 8, 8}, {"uintmax_t", 8, 8}},
    {"z", {"ptrdiff_t", 4, 8}, {"size_t", 4, 8}},  // ssize_t is ptrdiff_t on both
    {"t", {"ptrdiff_t", 4, 8}, {"size_t", 4, 8}},
};

// The length modifier of a printf conversion "%<flags><width>.<precision><modifier><letter>".
std::string lengthModifier(const std::string& printfFormat) {
    if (printfFormat.size() < 2) return "";
    size_t letter = printfFormat.size() - 1;
    size_t start = letter;
    while (start > 0 && std::strchr("hlLqjzt", printfFormat[start - 1]) != nullptr) --start;
    return printfFormat.substr(start, letter - start);
}

InsertCType integerType(const std::string& modifier, bool isSigned) {
    for (const TypeRow& row : INTEGER_TYPES) {
        if (modifier == row.lengthModifier) return isSigned ? row.signedType : row.unsignedType;
    }
    return isSigned ? INTEGER_TYPES[0].signedType : INTEGER_TYPES[0].unsignedType;
}

}  // namespace

InsertCType insertCType(const InsertFormatInfo& info) {
    std::string modifier = lengthModifier(info.printfFormat);
    switch (info.kind) {
        case InsertFormatInfo::SIGNED_INTEGER:
            return integerType(modifier, true);
        case InsertFormatInfo::UNSIGNED_INTEGER:
            return integerType(modifier, false);
        case InsertFormatInfo::CHARACTER:
            return {"int", 4, 4};
        case InsertFormatInfo::FLOATING:
            return modifier == "L" ? InsertCType{"long double", 12, 16}
                                   : InsertCType{"double", 8, 8};
        case InsertFormatInfo::TEXT:
            return {"const char *", 4, 8};
        case InsertFormatInfo::POINTER:
            return {"const void *", 4, 8};
        default:
            return {};
    }
}

std::string insertKindWord(InsertFormatInfo::Kind kind) {
    switch (kind) {
        case InsertFormatInfo::NO_VALUE:
            return "no value";
        case InsertFormatInfo::SIGNED_INTEGER:
        case InsertFormatInfo::UNSIGNED_INTEGER:
            return "integer";
        case InsertFormatInfo::CHARACTER:
            return "character";
        case InsertFormatInfo::FLOATING:
            return "floating-point number";
        case InsertFormatInfo::TEXT:
            return "text";
        case InsertFormatInfo::POINTER:
            return "pointer";
        case InsertFormatInfo::REFUSED:
            break;
    }
    return "refused format";
}
