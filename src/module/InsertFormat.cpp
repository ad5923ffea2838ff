// Formatting one insert value from an argument array or a variable list.
//
// The classifier has checked that the format reads at most one value, and
// that value is read as the type the conversion reads, then handed to
// snprintf, so nothing is read beyond it on any platform.
#include "module/InsertFormat.h"

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>

#include "maps/DecimalText.h"
#include "maps/FailureText.h"
#include "module/ArgumentListEnd.h"
#include "module/InsertConversion.h"
#include "module/OversizedField.h"

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
int printValue(const void* value, char* buffer, std::size_t size, const char* format) {
    return std::snprintf(buffer, size, format, *static_cast<const T*>(value));
}

template <typename T>
std::size_t textLength(const void* value, std::size_t most) {
    if constexpr (std::is_same<T, const char*>::value) {
        return strnlen(*static_cast<const T*>(value), most);
    } else {
        return most;
    }
}

// Writes the decimal digits of `value` to `buffer` (NUL-terminated); the
// same text snprintf's "%d" or "%u" gives.
template <typename T>
InsertText writeDecimal(T value, char* buffer) {
    // The magnitude in unsigned arithmetic, so the most negative value is exact.
    unsigned long long magnitude = static_cast<unsigned long long>(value);
    bool negative = value < 0;
    if (negative) magnitude = 0 - magnitude;
    char* end = appendDecimal(buffer, magnitude, negative);
    *end = '\0';
    return InsertText{buffer, static_cast<std::size_t>(end - buffer)};
}

// "%d", "%i" or "%u" with at most an l or ll: what writeDecimal prints.
bool isPlainDecimal(const InsertConversion& conversion) {
    char c = conversion.conversion;
    const char* modifier = conversion.printedModifier;
    return conversion.isBare() && (c == 'd' || c == 'i' || c == 'u') &&
           (modifier[0] == '\0' || modifier[0] == 'l');
}

// Where a value goes: the format, its classification, the insert's limit and
// the buffer.
struct PrintTarget {
    const char* format;
    const InsertConversion& conversion;
    std::size_t limit;
    char (&buffer)[INSERT_BUFFER_SIZE];
};

// Prints a value that has been read. A plain decimal is written directly and
// a plain text is referenced in place, cut to the limit, instead of going
// through snprintf.
template <typename T>
InsertText printRead(T value, const PrintTarget& target) {
    const InsertConversion& conversion = target.conversion;
    if constexpr (std::is_integral<T>::value) {
        if (isPlainDecimal(conversion)) return writeDecimal(value, target.buffer);
    }
    if constexpr (std::is_same<T, const char*>::value) {
        if (conversion.isBare() && value != nullptr) {
            return InsertText{value, strnlen(value, target.limit - 1)};
        }
    }
    PrintableValue printable{&value, printValue<T>, textLength<T>};
    if (hasOversizedField(conversion)) {
        printBounded(target.format, conversion, printable, target.limit, target.buffer);
    } else if (conversion.printedAsWritten(target.format)) {
        if (printValue<T>(&value, target.buffer, target.limit, target.format) < 0) {
            throw moduleFailure("The insert format \"%s\" cannot be formatted", target.format);
        }
    } else {
        std::string printed = printfFormatOf(target.format, conversion);
        if (printValue<T>(&value, target.buffer, target.limit, printed.c_str()) < 0) {
            throw moduleFailure("The insert format \"%s\" cannot be formatted", printed.c_str());
        }
    }
    return InsertText{target.buffer, std::strlen(target.buffer)};
}

template <typename T, typename Source>
InsertText printAs(const Source& source, const PrintTarget& target) {
    return printRead(source.template as<T>(), target);
}

// Reads the value as the conversion's type and prints it.
template <typename Source>
InsertText readAndPrint(const Source& source, const PrintTarget& target) {
    typedef std::make_signed<std::size_t>::type SignedSize;
    switch (target.conversion.type) {
        case InsertValueType::Int:
        case InsertValueType::Char:
            return printAs<int>(source, target);
        case InsertValueType::UInt:
            return printAs<unsigned>(source, target);
        case InsertValueType::Long:
            return printAs<long>(source, target);
        case InsertValueType::ULong:
            return printAs<unsigned long>(source, target);
        case InsertValueType::LongLong:
            return printAs<long long>(source, target);
        case InsertValueType::ULongLong:
            return printAs<unsigned long long>(source, target);
        case InsertValueType::IntMax:
            return printAs<std::intmax_t>(source, target);
        case InsertValueType::UIntMax:
            return printAs<std::uintmax_t>(source, target);
        case InsertValueType::SignedSize:
            return printAs<SignedSize>(source, target);
        case InsertValueType::Size:
            return printAs<std::size_t>(source, target);
        case InsertValueType::PtrDiff:
            return printAs<std::ptrdiff_t>(source, target);
        case InsertValueType::UPtrDiff:
            return printAs<std::make_unsigned<std::ptrdiff_t>::type>(source, target);
        case InsertValueType::Double:
            return printAs<double>(source, target);
        case InsertValueType::LongDouble:
            return printAs<long double>(source, target);
        case InsertValueType::Text:
            return printAs<const char*>(source, target);
        case InsertValueType::Pointer:
            return printAs<void*>(source, target);
        case InsertValueType::None:
            break;
    }
    // Literal text and "%%" only: printed without reading anything.
    PrintableValue nothing{nullptr, nullptr, nullptr};
    std::size_t length =
        printBounded(target.format, target.conversion, nothing, target.limit, target.buffer);
    return InsertText{target.buffer, strnlen(target.buffer, length)};
}

// The classification of `format`: made into `storage`, or for "%s", the
// format of every insert written without one, the one made once.
const InsertConversion& classification(const char* format, std::size_t length,
                                       InsertConversion& storage) {
    static const InsertConversion plainText = [] {
        InsertConversion conversion;
        classifyInsertFormat("%s", 2, conversion);
        return conversion;
    }();
    if (length == 2 && format[0] == '%' && format[1] == 's') return plainText;
    classifyInsertFormat(format, length, storage);
    return storage;
}

}  // namespace

void checkInsertNumber(int number) {
    if (number > MAX_INSERT_NUMBER) {
        throw moduleFailure("Arg Index: %d, is too big (allowed range: 1-%d", number,
                            MAX_INSERT_NUMBER);
    }
    if (number < 1) {
        throw moduleFailure("Arg Index: %d, is too small (allowed range: 1-%d)", number,
                            MAX_INSERT_NUMBER);
    }
}

InsertText formatInsert(int argIndex, const char* format, std::size_t formatLength,
                        char** Arguments, char** argArray, char (&buffer)[INSERT_BUFFER_SIZE],
                        std::size_t arrayLength) {
    checkInsertNumber(argIndex);
    InsertConversion storage;
    const InsertConversion& conversion = classification(format, formatLength, storage);
    if (conversion.refusal != nullptr) {
        throw moduleFailure("Insert %%%d has an unsupported format \"%s\": %s", argIndex, format,
                            conversion.refusal);
    }
    PrintTarget target{format, conversion,
                       argArray != nullptr ? ARRAY_INSERT_LIMIT : LIST_INSERT_LIMIT, buffer};
    if (conversion.type == InsertValueType::None) return readAndPrint(ArrayElement{}, target);
    if (argArray != nullptr) {
        if (static_cast<std::size_t>(argIndex) > arrayLength) {
            throw moduleFailure("Insert %%%d has no argument: the argument array holds %zu",
                                argIndex, arrayLength);
        }
        return readAndPrint(ArrayElement{argArray[argIndex - 1]}, target);
    }
    if (Arguments == nullptr) {
        throw moduleFailure("Insert %%%d has no argument: no argument source was given", argIndex);
    }
    va_list list;
    va_copy(list, *reinterpret_cast<va_list*>(Arguments));
    ArgumentListEnd end(list);
    for (int skipped = 1; skipped < argIndex; ++skipped) (void)va_arg(list, int);
    return readAndPrint(ListValue{&list}, target);
}
