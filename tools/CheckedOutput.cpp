// Writing through a file descriptor with every failure kept.
#include "CheckedOutput.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

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

std::string writeWholeFile(const std::string& path, const std::string& text) {
    int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (descriptor < 0) return std::strerror(errno);
    CheckedOutput out(descriptor);
    out.sputn(text.data(), static_cast<std::streamsize>(text.size()));
    int error = out.finish();
    // close reports late failures of some file systems (NFS, quotas).
    if (::close(descriptor) != 0 && error == 0) error = errno;
    if (error == 0) return "";
    struct stat status;
    if (::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)) {
        ::unlink(path.c_str());
        return std::string(std::strerror(error)) + " (the incomplete file was removed)";
    }
    return std::strerror(error);
}
