// Internal: the table of language codes and Windows language identifiers.
#ifndef TQMSG_CAPI_LANGUAGE_TABLE_H
#define TQMSG_CAPI_LANGUAGE_TABLE_H

#include <cstddef>

// The identifier of the code of `length` bytes at `code`, exactly as the table
// writes it ("de", "pt_BR"), or -1. A code without region gives the
// identifier Windows itself chooses for the bare language.
long languageOfCode(const char* code, std::size_t length);

// The preferred code of `languageId` (the bare language where that code maps
// to the identifier), or null when the table lacks it.
const char* codeOfLanguage(long languageId);

#endif  // TQMSG_CAPI_LANGUAGE_TABLE_H
