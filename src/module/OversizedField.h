// Internal: inserts whose width or precision is too large to hand to snprintf.
#ifndef TQMSG_MODULE_OVERSIZED_FIELD_H
#define TQMSG_MODULE_OVERSIZED_FIELD_H

#include <cstddef>

#include "module/InsertConversion.h"

// The largest width or precision handed to snprintf as written. The C library
// allocates work space in proportion to a field, so larger ones are
// formatted here from bounded calls. It is at least the number of decimal
// places that the smallest long double needs (16445), so a value printed with
// this precision is exact and a larger precision only adds zeros.
const long LARGEST_DIRECT_FIELD = 16500;

// A value that has been read, printable with any format that reads one value
// of its type.
struct PrintableValue {
    const void* value;
    // snprintf(buffer, size, format, the value)
    int (*print)(const void* value, char* buffer, std::size_t size, const char* format);
    // For a text: its length, at most `most` (strnlen).
    std::size_t (*textLength)(const void* value, std::size_t most);
};

inline bool hasOversizedField(const InsertConversion& conversion) {
    return conversion.width > LARGEST_DIRECT_FIELD || conversion.precision > LARGEST_DIRECT_FIELD;
}

// Writes to `buffer` the first `limit` - 1 characters (and a NUL) of what
// snprintf gives for `format` and `value`, without asking it for a field above
// LARGEST_DIRECT_FIELD. A format that reads no value (`value` is then not
// used) is printed without the C library. Where the whole text would pass INT_MAX characters,
// which snprintf refuses, the first characters are written all the same.
// `limit` is at most 1024. Returns the number of characters written, which
// may include NUL characters.
std::size_t printBounded(const char* format, const InsertConversion& conversion,
                         const PrintableValue& value, std::size_t limit, char* buffer);

#endif  // TQMSG_MODULE_OVERSIZED_FIELD_H
