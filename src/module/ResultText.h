// Internal: the growing text that the insert scan writes its result into.
#ifndef TQMSG_MODULE_RESULT_TEXT_H
#define TQMSG_MODULE_RESULT_TEXT_H

#include <cstddef>
#include <cstring>
#include <string>

// A byte string that keeps short results on the stack and moves to the heap
// only when a result outgrows `LOCAL_SIZE`: most messages are formatted
// without any allocation. Not copyable; lives for one formatting call.
class ResultText {
public:
    static const std::size_t LOCAL_SIZE = 1024;  // bytes held without allocating

    ResultText() = default;
    ResultText(const ResultText&) = delete;
    ResultText& operator=(const ResultText&) = delete;

    void write(const char* data, std::size_t length) {
        if (!onHeap_ && size_ + length <= LOCAL_SIZE) {
            std::memcpy(local_ + size_, data, length);
            size_ += length;
            return;
        }
        if (!onHeap_) {
            heap_.assign(local_, size_);
            onHeap_ = true;
        }
        heap_.append(data, length);
        size_ = heap_.size();
    }
    void put(char c) { write(&c, 1); }

    const char* data() const { return onHeap_ ? heap_.data() : local_; }
    std::size_t size() const { return size_; }

private:
    char local_[LOCAL_SIZE];
    std::size_t size_ = 0;
    bool onHeap_ = false;
    std::string heap_;  // the whole text once it no longer fits `local_`
};

#endif  // TQMSG_MODULE_RESULT_TEXT_H
