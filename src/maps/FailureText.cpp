#include "maps/FailureText.h"

#include <cstdio>

FailureText::FailureText(const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, SIZE, format, args);
    va_end(args);
}

FailureText FailureText::fromList(const char* format, va_list args) {
    FailureText composed;
    std::vsnprintf(composed.text, SIZE, format, args);
    return composed;
}

MessageModuleException moduleFailure(const char* format, ...) {
    va_list args;
    va_start(args, format);
    FailureText composed = FailureText::fromList(format, args);
    va_end(args);
    return MessageModuleException(composed.text);
}

MessageTableParserException parserFailure(const char* format, ...) {
    va_list args;
    va_start(args, format);
    FailureText composed = FailureText::fromList(format, args);
    va_end(args);
    return MessageTableParserException(composed.text);
}
