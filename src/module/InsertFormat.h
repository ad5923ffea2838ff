// Internal: formatting and placing the value of one insert.
#ifndef TQMSG_MODULE_INSERT_FORMAT_H
#define TQMSG_MODULE_INSERT_FORMAT_H

#include <cstddef>
#include <limits>

// Highest insert number a message text may use.
const int MAX_INSERT_NUMBER = 199;

// The bound of an argument array whose length the caller does not know (the
// C++ interface's char** arrays): every insert number reads its element.
const std::size_t UNBOUNDED_ARRAY = static_cast<std::size_t>(-1);

// An insert text: at most 999 characters from an argument array, 1000 from a
// variable argument list, plus the NUL.
const std::size_t INSERT_BUFFER_SIZE = 1001;

// A formatted insert value: `length` bytes at `data`, which points into the
// caller's insert buffer or, for a plain "%s", straight at the argument.
struct InsertText {
    const char* data;
    std::size_t length;
};

// Fails, with the formatter's text, unless 1 <= `number` <= MAX_INSERT_NUMBER.
void checkInsertNumber(int number);

// Formats insert `argIndex` (1 to 199) with `format` ("%" and the text between
// the insert's "!" marks, `formatLength` bytes, NUL-terminated) as snprintf
// would, cut to the insert's limit. With `argArray` the value is element
// `argIndex` - 1 of its `arrayLength` elements; otherwise `Arguments` is the address of a va_list,
// which is copied, not consumed, and whose earlier values are skipped as int. A format that reads
// no value reads no argument. The text ends at its first NUL. Throws MessageModuleException when
// the index is out of range, the format is refused (see classifyInsertFormat), or a value is needed
// and there is no argument source (both pointers null) or the array is shorter than `argIndex`.
InsertText formatInsert(int argIndex, const char* format, std::size_t formatLength,
                        char** Arguments, char** argArray, char (&buffer)[INSERT_BUFFER_SIZE],
                        std::size_t arrayLength = UNBOUNDED_ARRAY);

// Writes `text` to `out` under the width rule: when a width is set and the
// insert would reach it, the insert goes on a line of its own and the column
// starts again at 0; otherwise the column grows by the insert's length.
template <typename Output, typename Column>
void writeInsert(Output& out, InsertText text, Column& column, int maxWidth) {
    long long reached = static_cast<long long>(column) + static_cast<long long>(text.length);
    if (maxWidth != 0 && reached >= maxWidth) {
        out.put('\n');
        out.write(text.data, text.length);
        out.put('\n');
        column = 0;
        return;
    }
    out.write(text.data, text.length);
    const long long most = std::numeric_limits<Column>::max();
    column = static_cast<Column>(reached < most ? reached : most);
}

#endif  // TQMSG_MODULE_INSERT_FORMAT_H
