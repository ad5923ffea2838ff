// Internal: the one place where failure texts are composed.
#ifndef TQMSG_FAILURE_TEXT_H
#define TQMSG_FAILURE_TEXT_H

#include <cstdarg>
#include <cstddef>
#include <cstdint>

#include "MessageModuleMaps.h"

// A failure text formatted printf-style into a fixed buffer. Every exception
// text of the library is built here; a text longer than the buffer is cut at
// its end, never written past it.
struct FailureText {
    static const std::size_t SIZE = 5000;  // bytes, the terminating NUL included

    char text[SIZE];

    explicit FailureText(const char* format, ...) __attribute__((format(printf, 2, 3)));
    // The same from an argument list, for helpers that take a format of their own.
    static FailureText fromList(const char* format, va_list args)
        __attribute__((format(printf, 1, 0)));

private:
    FailureText() = default;
};

// The 32-bit pattern of an identifier, for "0x%lx" in failure texts: the same
// digits on i386 and x86-64.
inline unsigned long asUnsigned32(long value) {
    return static_cast<unsigned long>(static_cast<uint32_t>(value));
}

// The exceptions of the library, each with a text composed printf-style.
// The parser's texts get their file-and-line prefix from MessageTable::wrapError.
MessageModuleException moduleFailure(const char* format, ...) __attribute__((format(printf, 1, 2)));
MessageTableParserException parserFailure(const char* format, ...)
    __attribute__((format(printf, 1, 2)));

#endif  // TQMSG_FAILURE_TEXT_H
