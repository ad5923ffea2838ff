#include "parser/ParseError.h"

#include <cstdarg>

#include "maps/FailureText.h"

MessageTableParserException parseError(MessageTable& table, const char* format, ...) {
    va_list args;
    va_start(args, format);
    FailureText message = FailureText::fromList(format, args);
    va_end(args);
    return table.wrapError(message.text);
}
