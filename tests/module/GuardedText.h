// Test support: a text whose NUL is the last readable byte before a page that
// cannot be read, so that reading one byte past it crashes at once.
#ifndef TQMSG_TESTS_GUARDED_TEXT_H
#define TQMSG_TESTS_GUARDED_TEXT_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <string>

class GuardedText {
public:
    // `text` must fit one page with its NUL.
    explicit GuardedText(const std::string& text) : page_(sysconf(_SC_PAGESIZE)) {
        pages_ = static_cast<char*>(
            mmap(nullptr, 2 * page_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        mprotect(pages_ + page_, page_, PROT_NONE);
        text_ = static_cast<char*>(
            std::memcpy(pages_ + page_ - (text.size() + 1), text.c_str(), text.size() + 1));
    }
    ~GuardedText() { munmap(pages_, 2 * page_); }
    GuardedText(const GuardedText&) = delete;
    GuardedText& operator=(const GuardedText&) = delete;

    char* get() const { return text_; }

private:
    std::size_t page_;
    char* pages_;
    char* text_;
};

#endif  // TQMSG_TESTS_GUARDED_TEXT_H
