#include "module/ModuleFailure.h"

#include <cstdio>

#include "maps/FailureText.h"
#include "module/ArgumentListEnd.h"

MessageModuleException moduleFailure(const char* format, ...) {
    char text[FailureText::SIZE];
    va_list arguments;
    va_start(arguments, format);
    ArgumentListEnd end(arguments);
    std::vsnprintf(text, sizeof text, format, arguments);
    return MessageModuleException(text);
}
