// Test support: a text whose NUL is the last readable byte before a page that
// cannot be read, so that reading one byte past it crashes at once.
#ifndef TQMSG_TESTS_GUARDED_TEXT_H
#define TQMSG_TESTS_GUARDED_TEXT_H

#include <sys/mman.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>
#include <string>

class GuardedText {
public:
    // `text` must fit one page with its NUL.
    explicit GuardedText(const std::string& text) : page_(sysconf(_SC_PAGESIZE)) {
        void* pages =
            mmap(nullptr, 2 * page_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (pages == MAP_FAILED || text.size() + 1 > page_) throw std::runtime_error("mmap");
        pages_ = static_cast<char*>(pages);
        mprotect(pages_ + page_, page_, PROT_NONE);
        text_ = pages_ + page_ - (text.size() + 1);
        std::memcpy(text_, text.c_str(), text.size() + 1);
    }
    ~GuardedText() { munmap(pages_, 2 * page_); }
    GuardedText(const GuardedText&) = delete;
    GuardedText& operator=(const GuardedText&) = delete;

    char* get() const { return text_; }

private:
    std::size_t page_;
    char* pages_ = nullptr;
    char* text_ = nullptr;
};

#endif  // TQMSG_TESTS_GUARDED_TEXT_H
