// Internal: the one place where failure texts are composed.
#ifndef TQMSG_FAILURE_TEXT_H
#define TQMSG_FAILURE_TEXT_H

#include <cstddef>

// A failure text formatted printf-style into a fixed buffer. Every exception
// text of the library is built here; a text longer than the buffer is cut at
// its end, never written past it.
struct FailureText {
    static const std::size_t SIZE = 5000;  // bytes, the terminating NUL included

    char text[SIZE];

    explicit FailureText(const char* format, ...) __attribute__((format(printf, 2, 3)));
};

#endif  // TQMSG_FAILURE_TEXT_H
