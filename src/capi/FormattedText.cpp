#include "capi/FormattedText.h"

#include <climits>
#include <cstring>

#include "maps/FailureText.h"
#include "module/StoredMessage.h"

ArrayInserts::ArrayInserts(const std::uintptr_t* args, std::size_t count)
    : length_(count < MAX_INSERT_NUMBER ? count : MAX_INSERT_NUMBER) {
    if (args == nullptr && count != 0) {
        throw moduleFailure("The argument array is NULL but its count is %zu", count);
    }
    // Copied byte for byte: a uintptr_t and a char* have the same size and the
    // formatter reads each element as the type its insert asks for.
    static_assert(sizeof(std::uintptr_t) == sizeof(char*), "array elements are pointer-sized");
    if (length_ != 0) std::memcpy(elements_, args, length_ * sizeof(char*));
}

InsertSource ArrayInserts::source(InsertObserver* observer) {
    InsertSource source;
    source.array = elements_;
    source.arrayLength = length_;
    source.observer = observer;
    return source;
}

void formatStoredMessage(long messageId, long languageId, const InsertSource& source,
                         ResultText& result) {
    const FormattableMessage& message = storedMessage(toInt32(languageId), toInt32(messageId));
    expandMessageText(message.text.data(), message.text.size(), 0, source.list, source.array,
                      result, source.array != nullptr ? source.arrayLength : UNBOUNDED_ARRAY,
                      source.observer);
}

void checkBuffer(const char* buf, std::size_t size) {
    if (buf == nullptr && size != 0) {
        throw moduleFailure("The buffer is NULL but its size is %zu", size);
    }
}

long deliverLikeSnprintf(const ResultText& text, char* buf, std::size_t size) {
    if (text.size() > static_cast<std::size_t>(LONG_MAX)) {
        throw moduleFailure("The formatted text is too long: %zu bytes", text.size());
    }
    if (size != 0) {
        std::size_t kept = text.size() < size - 1 ? text.size() : size - 1;
        std::memcpy(buf, text.data(), kept);
        buf[kept] = '\0';
    }
    return static_cast<long>(text.size());
}
