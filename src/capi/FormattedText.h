// Internal: a stored message formatted for a C caller, and its delivery with
// the snprintf convention.
#ifndef TQMSG_CAPI_FORMATTED_TEXT_H
#define TQMSG_CAPI_FORMATTED_TEXT_H

#include <cstddef>
#include <cstdint>

#include "capi/Boundary.h"
#include "module/InsertFormat.h"
#include "module/ResultText.h"
#include "module/TextExpansion.h"

// Where the inserts of one call come from, and who is told of each.
struct InsertSource {
    char** list = nullptr;   // the address of a va_list, or null
    char** array = nullptr;  // an argument array of `arrayLength` elements, or null
    std::size_t arrayLength = 0;
    InsertObserver* observer = nullptr;  // may be null
};

// A C caller's array of pointer-sized values as the formatter reads arrays:
// a copy of at most the elements an insert can number, so that an insert
// beyond the caller's count fails instead of reading past the array.
class ArrayInserts {
public:
    // Throws MessageModuleException when `args` is null and `count` is not 0.
    ArrayInserts(const std::uintptr_t* args, std::size_t count);
    ArrayInserts(const ArrayInserts&) = delete;
    ArrayInserts& operator=(const ArrayInserts&) = delete;

    InsertSource source(InsertObserver* observer);

private:
    char* elements_[MAX_INSERT_NUMBER];
    std::size_t length_;
};

// Appends message `messageId` of language `languageId` (any width; taken as
// 32-bit values) to `result`, its inserts from `source`. Throws the module's
// exceptions.
void formatStoredMessage(long messageId, long languageId, const InsertSource& source,
                         ResultText& result);

// Throws when `buf` is null but `size` is not 0.
void checkBuffer(const char* buf, std::size_t size);

// Copies `text` into `buf` as snprintf would (at most `size` - 1 bytes and a
// NUL) and returns its whole length. Throws when the length does not fit the
// result type.
long deliverLikeSnprintf(const ResultText& text, char* buf, std::size_t size);

// The body of every snprintf-style function: once the buffer is checked,
// `expand` appends the text to a ResultText, which is then delivered into
// `buf`. On failure the result is -1, the thread's last error says why and
// `buf` holds "" when it can.
template <typename Expand>
long formatIntoBuffer(char* buf, std::size_t size, Expand expand) noexcept {
    long length = atCBoundary(-1L, [&] {
        checkBuffer(buf, size);
        ResultText text;
        expand(text);
        return deliverLikeSnprintf(text, buf, size);
    });
    if (length < 0 && buf != nullptr && size > 0) buf[0] = '\0';
    return length;
}

#endif  // TQMSG_CAPI_FORMATTED_TEXT_H
