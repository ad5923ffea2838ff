// Formatting one insert value from an argument array or a variable list.
//
// The format has been checked to read exactly one value, and that value is
// handed to snprintf as the type the conversion reads, so nothing is read
// beyond it on any platform.
#include "module/InsertFormat.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <type_traits>

#include "MessageModuleMaps.h"
#include "maps/FailureText.h"
#include "module/InsertConversion.h"

namespace {

// snprintf limits: 999 characters from an array element, 1000 from a list.
const std::size_t ARRAY_INSERT_LIMIT = 1000;
const std::size_t LIST_INSERT_LIMIT = 1001;
static_assert(LIST_INSERT_LIMIT <= INSERT_BUFFER_SIZE, "insert buffer too small");

// One pointer-sized array element, read as the type a conversion asks for:
// integers take its integer value (signed or unsigned as the type is), a
// floating conversion formats that integer value as a number (an element
// cannot hold a double on i386, and reading one from elsewhere would read
// memory that is not the argument), and pointers take it as it is.
struct ArrayElement {
    char* element;

    template <typename T>
    T as() const {
        if constexpr (std::is_pointer<T>::value) {
            return reinterpret_cast<T>(element);
        } else if constexpr (std::is_floating_point<T>::value || std::is_signed<T>::value) {
            return static_cast<T>(reinterpret_cast<std::intptr_t>(element));
        } else {
            return static_cast<T>(reinterpret_cast<std::uintptr_t>(element));
        }
    }
};

// The next value of a variable argument list, read as the conversion's type.
struct ListValue {
    va_list* list;

    template <typename T>
    T as() const {
        return va_arg(*list, T);
    }
};

template <typename T>
int print(char* buffer, std::size_t limit, const char* format, T value) {
    return std::snprintf(buffer, limit, format, value);
}

template <typename Source>
int printValue(char* buffer, std::size_t limit, const char* format, InsertValueType type,
               const Source& source) {
    typedef std::make_signed<std::size_t>::type SignedSize;
    switch (type) {
        case InsertValueType::Int:
        case InsertValueType::Char:
            return print(buffer, limit, format, source.template as<int>());
        case InsertValueType::UInt:
            return print(buffer, limit, format, source.template as<unsigned>());
        case InsertValueType::Long:
            return print(buffer, limit, format, source.template as<long>());
        case InsertValueType::ULong:
            return print(buffer, limit, format, source.template as<unsigned long>());
        case InsertValueType::LongLong:
            return print(buffer, limit, format, source.template as<long long>());
        case InsertValueType::ULongLong:
            return print(buffer, limit, format, source.template as<unsigned long long>());
        case InsertValueType::IntMax:
            return print(buffer, limit, format, source.template as<std::intmax_t>());
        case InsertValueType::UIntMax:
            return print(buffer, limit, format, source.template as<std::uintmax_t>());
        case InsertValueType::SignedSize:
            return print(buffer, limit, format, source.template as<SignedSize>());
        case InsertValueType::Size:
            return print(buffer, limit, format, source.template as<std::size_t>());
        case InsertValueType::PtrDiff:
            return print(buffer, limit, format, source.template as<std::ptrdiff_t>());
        case InsertValueType::Double:
            return print(buffer, limit, format, source.template as<double>());
        case InsertValueType::LongDouble:
            return print(buffer, limit, format, source.template as<long double>());
        case InsertValueType::WideChar:
            return print(buffer, limit, format, source.template as<std::wint_t>());
        case InsertValueType::Text:
            return print(buffer, limit, format, source.template as<const char*>());
        case InsertValueType::WideText:
            return print(buffer, limit, format, source.template as<const wchar_t*>());
        case InsertValueType::Pointer:
            return print(buffer, limit, format, source.template as<void*>());
    }
    return -1;
}

// "%d", "%i" or "%u", with no flag, width or precision and at most an l or ll
// modifier: formatted here without going through snprintf.
bool isBareDecimal(const char* format, std::size_t formatLength) {
    if (formatLength < 2 || formatLength > 4) return false;
    char conversion = format[formatLength - 1];
    if (conversion != 'd' && conversion != 'i' && conversion != 'u') return false;
    for (std::size_t i = 1; i + 1 < formatLength; ++i) {
        if (format[i] != 'l') return false;
    }
    return true;
}

// Writes the decimal digits of `magnitude`, after a "-" when `negative`, to
// `buffer` (NUL-terminated); the same text snprintf's "%d"/"%u" gives.
InsertText writeDecimal(unsigned long long magnitude, bool negative, char* buffer) {
    char digits[24];
    char* first = digits + sizeof digits;
    do {
        *--first = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (negative) *--first = '-';
    std::size_t length = static_cast<std::size_t>(digits + sizeof digits - first);
    std::memcpy(buffer, first, length);
    buffer[length] = '\0';
    return InsertText{buffer, length};
}

template <typename Source>
InsertText formatBareDecimal(const Source& source, InsertValueType type, char* buffer) {
    long long value = 0;
    switch (type) {
        case InsertValueType::UInt:
            return writeDecimal(source.template as<unsigned>(), false, buffer);
        case InsertValueType::ULong:
            return writeDecimal(source.template as<unsigned long>(), false, buffer);
        case InsertValueType::ULongLong:
            return writeDecimal(source.template as<unsigned long long>(), false, buffer);
        case InsertValueType::Long:
            value = source.template as<long>();
            break;
        case InsertValueType::LongLong:
            value = source.template as<long long>();
            break;
        default:
            value = source.template as<int>();
            break;
    }
    // The magnitude in unsigned arithmetic, so the most negative value is exact.
    unsigned long long magnitude = static_cast<unsigned long long>(value);
    return writeDecimal(value < 0 ? 0 - magnitude : magnitude, value < 0, buffer);
}

bool isPlainText(const char* format, std::size_t formatLength) {
    return formatLength == 2 && format[0] == '%' && format[1] == 's';
}

// Formats one value. A bare decimal conversion is written directly and a
// plain "%s" of a non-null text is referenced in place, cut to the limit,
// instead of going through snprintf. A value that snprintf
// cannot encode (a wide character outside the locale) gives an empty insert.
template <typename Source>
InsertText formatValue(const Source& source, std::size_t limit, const char* format,
                       std::size_t formatLength, InsertValueType type,
                       char (&buffer)[INSERT_BUFFER_SIZE]) {
    if (isBareDecimal(format, formatLength)) return formatBareDecimal(source, type, buffer);
    if (isPlainText(format, formatLength)) {
        const char* text = source.template as<const char*>();
        if (text != nullptr) return InsertText{text, strnlen(text, limit - 1)};
        print(buffer, limit, format, text);  // the value is read already: format it as it is
        return InsertText{buffer, std::strlen(buffer)};
    }
    if (printValue(buffer, limit, format, type, source) < 0) buffer[0] = '\0';
    return InsertText{buffer, std::strlen(buffer)};
}

void checkIndex(int argIndex) {
    if (argIndex > MAX_INSERT_NUMBER) {
        throw MessageModuleException(FailureText("Arg Index: %d, is too big (allowed range: 1-%d",
                                                 argIndex, MAX_INSERT_NUMBER)
                                         .text);
    }
    if (argIndex < 1) {
        throw MessageModuleException(
            FailureText("Arg Index: %d, is too small (allowed range: 1-%d)", argIndex,
                        MAX_INSERT_NUMBER)
                .text);
    }
}

InsertValueType checkFormat(int argIndex, const char* format, std::size_t formatLength) {
    InsertValueType type = InsertValueType::Text;
    if (isPlainText(format, formatLength)) return type;
    const char* refused = checkInsertFormat(format, formatLength, type);
    if (refused != nullptr) {
        throw MessageModuleException(FailureText("Insert %%%d has an unsupported format \"%s\": %s",
                                                 argIndex, format, refused)
                                         .text);
    }
    return type;
}

}  // namespace

InsertText formatInsert(int argIndex, const char* format, std::size_t formatLength,
                        char** Arguments, char** argArray, char (&buffer)[INSERT_BUFFER_SIZE]) {
    checkIndex(argIndex);
    InsertValueType type = checkFormat(argIndex, format, formatLength);
    if (argArray == nullptr && Arguments == nullptr) {
        throw MessageModuleException(
            FailureText("Insert %%%d has no argument: no argument source was given", argIndex)
                .text);
    }
    if (argArray != nullptr) {
        return formatValue(ArrayElement{argArray[argIndex - 1]}, ARRAY_INSERT_LIMIT, format,
                           formatLength, type, buffer);
    }
    va_list list;
    va_copy(list, *reinterpret_cast<va_list*>(Arguments));
    for (int skipped = 1; skipped < argIndex; ++skipped) (void)va_arg(list, int);
    InsertText text =
        formatValue(ListValue{&list}, LIST_INSERT_LIMIT, format, formatLength, type, buffer);
    va_end(list);
    return text;
}
