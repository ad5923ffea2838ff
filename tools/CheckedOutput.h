// Output that knows whether it was written completely. A failed write (a full
// disk, a closed pipe, an I/O error) must turn into exit status 1 with the
// system's reason, never into a silently truncated result.
#ifndef TQMSG_TOOL_CHECKED_OUTPUT_H
#define TQMSG_TOOL_CHECKED_OUTPUT_H

#include <streambuf>

// A stream buffer writing to a file descriptor it does not own. The first
// failed write is remembered (its errno) and every later write is dropped, so
// a result is either complete or reported as failed by `finish`.
class CheckedOutput : public std::streambuf {
public:
    explicit CheckedOutput(int descriptor) : descriptor_(descriptor) {
        setp(buffer_, buffer_ + sizeof(buffer_));
    }
    CheckedOutput(const CheckedOutput&) = delete;
    CheckedOutput& operator=(const CheckedOutput&) = delete;

    // Writes what is buffered. 0 when everything written so far reached the
    // descriptor, else the errno of the first failure.
    int finish();

protected:
    int_type overflow(int_type c) override;
    int sync() override;

private:
    bool drain();

    int descriptor_;
    int error_ = 0;
    char buffer_[1 << 16];
};

#endif  // TQMSG_TOOL_CHECKED_OUTPUT_H
