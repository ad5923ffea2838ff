// Writing through a file descriptor with every failure kept.
#include "CheckedOutput.h"

#include <unistd.h>

#include <cerrno>

bool CheckedOutput::drain() {
    const char* next = pbase();
    while (error_ == 0 && next < pptr()) {
        ssize_t written = ::write(descriptor_, next, static_cast<size_t>(pptr() - next));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) error_ = errno;
        if (written == 0) error_ = EIO;  // no progress and no reason: never spin
        if (written > 0) next += written;
    }
    setp(buffer_, buffer_ + sizeof(buffer_));
    return error_ == 0;
}

CheckedOutput::int_type CheckedOutput::overflow(int_type c) {
    if (!drain()) return traits_type::eof();
    if (!traits_type::eq_int_type(c, traits_type::eof())) sputc(traits_type::to_char_type(c));
    return traits_type::not_eof(c);
}

int CheckedOutput::sync() { return drain() ? 0 : -1; }

int CheckedOutput::finish() {
    drain();
    return error_;
}
