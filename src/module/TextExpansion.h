// Internal: the formatter's expansion of a message text.
#ifndef TQMSG_MODULE_TEXT_EXPANSION_H
#define TQMSG_MODULE_TEXT_EXPANSION_H

#include <cstddef>

#include "module/InsertFormat.h"
#include "module/ResultText.h"

// Told of each insert as the expansion writes it, for callers that keep the
// inserts apart from the text (a logger's fields, for instance): `inserted`
// is called with `context` when insert `number` became the `length` bytes at
// `text` (valid during the call).
struct InsertObserver {
    void (*inserted)(void* context, int number, const char* text, std::size_t length) = nullptr;
    void* context = nullptr;
};

// Appends to `result` what `text` (`length` bytes, NUL-terminated) becomes:
// "%%" a percent sign, "%n" a line feed, "%0" nothing (and the line feed after
// it), "%" before any other character nothing, and "%1" to "%199", each with an
// optional printf format between two "!", the formatted argument. `maxWidth`
// (0 for none, up to 255) breaks lines around inserts and doubles line feeds
// that come at or past it. `argArray` is the argument array of `arrayLength`
// elements, or null when `Arguments` is the address of a va_list. `observer`,
// when given, is told of each insert before it is written. Throws
// MessageModuleException; on failure `result` holds a partial text that the
// caller discards.
void expandMessageText(const char* text, std::size_t length, int maxWidth, char** Arguments,
                       char** argArray, ResultText& result,
                       std::size_t arrayLength = UNBOUNDED_ARRAY,
                       InsertObserver* observer = nullptr);

#endif  // TQMSG_MODULE_TEXT_EXPANSION_H
