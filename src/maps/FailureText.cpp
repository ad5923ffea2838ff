#include "maps/FailureText.h"

#include <cstdarg>
#include <cstdio>

FailureText::FailureText(const char* format, ...) {
    va_list args;
    va_start(args, format);
    std::vsnprintf(text, SIZE, format, args);
    va_end(args);
}
