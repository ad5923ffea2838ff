// Fuzz target: formatMessage over arbitrary message texts.
//
// Input layout: two bytes of flags (low byte: the width), two bytes of nSize,
// then the message text up to the first NUL byte; whatever follows that NUL is
// a list of NUL-separated insert values. The call always uses
// _FORMAT_MESSAGE_FROM_STRING and _FORMAT_MESSAGE_ARGUMENT_ARRAY and never
// loads a file; the other flag bits (allocation, ignore inserts, the refused
// _FORMAT_MESSAGE_FROM_SYSTEM) come from the input. Every text and value
// lives in an allocation of its own exact size, so an overread is reported.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "MessageModule.h"

namespace {

const int kInsertCount = 199;
const long kFlagsFromInput = _FORMAT_MESSAGE_MAX_WIDTH_MASK | _FORMAT_MESSAGE_ALLOCATE_BUFFER |
                             _FORMAT_MESSAGE_IGNORE_INSERTS | _FORMAT_MESSAGE_FROM_SYSTEM;

// A NUL-terminated copy of [begin, end). Wide conversions (%ls) read
// four-byte characters, so the terminator is a full wide NUL.
std::unique_ptr<char[]> exactCopy(const uint8_t* begin, const uint8_t* end) {
    size_t length = static_cast<size_t>(end - begin);
    std::unique_ptr<char[]> copy(new char[length + sizeof(wchar_t)]);
    std::memcpy(copy.get(), begin, length);
    std::memset(copy.get() + length, 0, sizeof(wchar_t));
    return copy;
}

// Splits the bytes after the text at NUL bytes; missing values are "v<n>".
std::vector<std::unique_ptr<char[]>> insertValues(const uint8_t* begin, const uint8_t* end) {
    std::vector<std::unique_ptr<char[]>> values;
    while (begin < end && values.size() < kInsertCount) {
        const uint8_t* stop = static_cast<const uint8_t*>(std::memchr(begin, 0, end - begin));
        if (!stop) {
            stop = end;
        }
        values.push_back(exactCopy(begin, stop));
        begin = stop + 1;
    }
    while (values.size() < kInsertCount) {
        std::string fallback = "v" + std::to_string(values.size() + 1);
        const uint8_t* text = reinterpret_cast<const uint8_t*>(fallback.data());
        values.push_back(exactCopy(text, text + fallback.size()));
    }
    return values;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 4) {
        return 0;
    }
    long flags = (data[0] | (data[1] << 8)) & kFlagsFromInput;
    flags |= _FORMAT_MESSAGE_FROM_STRING | _FORMAT_MESSAGE_ARGUMENT_ARRAY;
    long nSize = data[2] | (data[3] << 8);
    const uint8_t* textBegin = data + 4;
    const uint8_t* end = data + size;
    const uint8_t* textEnd =
        static_cast<const uint8_t*>(std::memchr(textBegin, 0, end - textBegin));
    if (!textEnd) {
        textEnd = end;
    }
    std::unique_ptr<char[]> text = exactCopy(textBegin, textEnd);
    std::vector<std::unique_ptr<char[]>> values =
        insertValues(textEnd < end ? textEnd + 1 : end, end);
    std::vector<char*> arguments;
    for (auto& value : values) {
        arguments.push_back(value.get());
    }

    bool allocate = (flags & _FORMAT_MESSAGE_ALLOCATE_BUFFER) != 0;
    std::unique_ptr<char[]> callerBuffer(allocate ? nullptr : new char[nSize > 0 ? nSize : 1]);
    char* buffer = callerBuffer.get();
    long result =
        MessageModule::formatMessage(flags, text.get(), 0, 0, &buffer, nSize, arguments.data());
    if (result > 0 && buffer) {
        // The delivered text is NUL-terminated within the returned size.
        if (std::memchr(buffer, 0, static_cast<size_t>(result)) == nullptr) {
            __builtin_trap();
        }
        if (allocate) {
            delete[] buffer;
        }
    }
    return 0;
}
