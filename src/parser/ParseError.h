// Internal: the parser's errors.
#ifndef TQMSG_PARSER_PARSE_ERROR_H
#define TQMSG_PARSER_PARSE_ERROR_H

#include "MessageTable.h"

// The exception for a parser message composed printf-style, prefixed by
// `table.wrapError` with the file name and the line being read.
MessageTableParserException parseError(MessageTable& table, const char* format, ...)
    __attribute__((format(printf, 2, 3)));

#endif  // TQMSG_PARSER_PARSE_ERROR_H
