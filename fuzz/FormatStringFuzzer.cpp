// Fuzz target: formatMessage over arbitrary message texts.
//
// Input layout: two bytes of flags (low byte: the width), two bytes of nSize,
// then the message text up to the first NUL byte; whatever follows that NUL is
// a list of NUL-separated insert values. The call always uses
// _FORMAT_MESSAGE_FROM_STRING and _FORMAT_MESSAGE_ARGUMENT_ARRAY and never
// loads a file; the other flag bits (allocation, ignore inserts, the refused
// _FORMAT_MESSAGE_FROM_SYSTEM) come from the input.
//
// Each input is formatted twice. First every insert value ends right before a
// page that cannot be read, so an over-read of a value, also one inside the C
// library that AddressSanitizer cannot see, crashes at once. Then every text
// and value lives in a heap allocation of its own exact size, so
// AddressSanitizer reports any other over-read.
#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "MessageModule.h"

namespace {

const int kInsertCount = 199;
const long kFlagsFromInput = _FORMAT_MESSAGE_MAX_WIDTH_MASK | _FORMAT_MESSAGE_ALLOCATE_BUFFER |
                             _FORMAT_MESSAGE_IGNORE_INSERTS | _FORMAT_MESSAGE_FROM_SYSTEM;
const size_t kLargestInput = 65536;  // libFuzzer's -max_len in the fuzz stage

// One place per insert value, each followed by an unreadable page. Mapped
// once and reused for every input; only the pages written are ever touched.
class GuardedPool {
public:
    GuardedPool() : page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
        slotSize_ = ((kLargestInput + 1 + page_ - 1) / page_ + 1) * page_;
        void* pages = mmap(nullptr, slotSize_ * kInsertCount, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
        if (pages == MAP_FAILED) std::abort();
        base_ = static_cast<char*>(pages);
        for (int slot = 0; slot < kInsertCount; ++slot) {
            char* guard = base_ + slot * slotSize_ + slotSize_ - page_;
            if (mprotect(guard, page_, PROT_NONE) != 0) std::abort();
        }
    }

    // Copies `value` into `slot` so that its NUL is the last readable byte.
    char* place(int slot, const std::string& value) {
        char* guard = base_ + slot * slotSize_ + slotSize_ - page_;
        char* copy = guard - (value.size() + 1);
        std::memcpy(copy, value.c_str(), value.size() + 1);
        return copy;
    }

private:
    size_t page_;
    size_t slotSize_ = 0;
    char* base_ = nullptr;
};

// A NUL-terminated copy of `text` in an allocation of exactly its size.
std::unique_ptr<char[]> exactCopy(const std::string& text) {
    std::unique_ptr<char[]> copy(new char[text.size() + 1]);
    std::memcpy(copy.get(), text.c_str(), text.size() + 1);
    return copy;
}

// Splits the bytes after the text at NUL bytes; missing values are "v<n>".
std::vector<std::string> insertValues(const uint8_t* begin, const uint8_t* end) {
    std::vector<std::string> values;
    while (begin < end && values.size() < kInsertCount) {
        const uint8_t* stop = static_cast<const uint8_t*>(std::memchr(begin, 0, end - begin));
        if (!stop) stop = end;
        values.emplace_back(reinterpret_cast<const char*>(begin), stop - begin);
        begin = stop + 1;
    }
    while (values.size() < kInsertCount) values.push_back("v" + std::to_string(values.size() + 1));
    return values;
}

void formatOnce(long flags, char* text, long nSize, char** arguments) {
    bool allocate = (flags & _FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0;
    std::unique_ptr<char[]> callerBuffer(allocate ? nullptr : new char[nSize > 0 ? nSize : 1]);
    char* buffer = callerBuffer.get();
    long result = MessageModule::formatMessage(flags, text, 0, 0, &buffer, nSize, arguments);
    if (result > 0 && buffer) {
        // The delivered text is NUL-terminated within the returned size.
        if (std::memchr(buffer, 0, static_cast<size_t>(result)) == nullptr) __builtin_trap();
        if (allocate) delete[] buffer;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static GuardedPool pool;
    if (size < 4 || size > kLargestInput) return 0;
    long flags = (data[0] | (data[1] << 8)) & kFlagsFromInput;
    flags |= _FORMAT_MESSAGE_FROM_STRING | _FORMAT_MESSAGE_ARGUMENT_ARRAY;
    long nSize = data[2] | (data[3] << 8);
    const uint8_t* textBegin = data + 4;
    const uint8_t* end = data + size;
    const uint8_t* textEnd =
        static_cast<const uint8_t*>(std::memchr(textBegin, 0, end - textBegin));
    if (!textEnd) textEnd = end;
    std::unique_ptr<char[]> text =
        exactCopy(std::string(reinterpret_cast<const char*>(textBegin), textEnd - textBegin));
    std::vector<std::string> values = insertValues(textEnd < end ? textEnd + 1 : end, end);

    std::vector<char*> guarded;
    for (int slot = 0; slot < kInsertCount; ++slot)
        guarded.push_back(pool.place(slot, values[slot]));
    formatOnce(flags, text.get(), nSize, guarded.data());

    std::vector<std::unique_ptr<char[]>> copies;
    std::vector<char*> exact;
    for (const std::string& value : values) {
        copies.push_back(exactCopy(value));
        exact.push_back(copies.back().get());
    }
    formatOnce(flags, text.get(), nSize, exact.data());
    return 0;
}
