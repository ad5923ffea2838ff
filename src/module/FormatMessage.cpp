// MessageModule::formatMessage: text source, expansion, delivery and the
// failure boundary.
#include <cstring>
#include <iostream>
#include <string>

#include "MessageModule.h"
#include "maps/FailureText.h"
#include "module/ResultText.h"
#include "module/StoredMessage.h"
#include "module/TextExpansion.h"

namespace {

// A text to deliver: `length` bytes at `data`, NUL-terminated.
struct Text {
    const char* data;
    std::size_t length;
};

// Loads the file named by `lpSource` unless it is registered already.
void loadNamedFile(char* lpSource) {
    if (lpSource == nullptr) {
        throw moduleFailure(
            "formatMessage(): dwFlags = _FORMAT_MESSAGE_FROM_HMODULE : function parameter "
            "lpSource is NULL.");
    }
    std::string fileName(lpSource);
    if (MessageModule::mtmap.get(fileName) == nullptr) {
        MessageModule::loadFile(MessageModule::self(), fileName, false);
    }
}

// The text to expand: `lpSource` itself, or the stored record's text, which is
// read in place (nothing changes the store during a call).
Text messageText(long dwFlags, char* lpSource, long dwMessageId, long dwLanguageId) {
    if (dwFlags & _FORMAT_MESSAGE_FROM_STRING) {
        if (lpSource == nullptr) {
            throw moduleFailure(
                "formatMessage(): dwFlags = _FORMAT_MESSAGE_FROM_STRING : function parameter "
                "lpSource is NULL.");
        }
        return Text{lpSource, std::strlen(lpSource)};
    }
    const FormattableMessage& message = storedMessage(dwLanguageId, dwMessageId);
    return Text{message.text.data(), message.text.size()};
}

// Copies `result` into the caller's buffer or a new one. Copies stop at the
// first NUL inside the result, as a C string copy would, while the returned
// sizes count the whole result.
long deliver(long dwFlags, Text result, char** lpBuffer, long nSize) {
    std::size_t copyable = strnlen(result.data, result.length);
    if (dwFlags & _FORMAT_MESSAGE_ALLOCATE_BUFFER) {
        std::size_t least = nSize > 0 ? static_cast<std::size_t>(nSize) : 0;
        std::size_t size = (least > result.length ? least : result.length) + 1;
        char* buffer = new char[size];
        std::memcpy(buffer, result.data, copyable);
        buffer[copyable] = '\0';
        *lpBuffer = buffer;
        return static_cast<long>(size);
    }
    if (nSize <= 0) return -1;
    std::size_t capacity = static_cast<std::size_t>(nSize);
    if (capacity > result.length + 1) {
        std::memcpy(*lpBuffer, result.data, copyable);
        (*lpBuffer)[copyable] = '\0';
        return static_cast<long>(result.length + 1);
    }
    // Cut without notice to nSize - 1 bytes, padded with NULs like strncpy.
    std::size_t kept = copyable < capacity - 1 ? copyable : capacity - 1;
    std::memcpy(*lpBuffer, result.data, kept);
    std::memset(*lpBuffer + kept, 0, capacity - kept);
    return nSize;
}

long formatAndDeliver(long dwFlags, char* lpSource, long dwMessageId, long dwLanguageId,
                      char** lpBuffer, long nSize, char** Arguments) {
    if (dwFlags & _FORMAT_MESSAGE_FROM_HMODULE) loadNamedFile(lpSource);
    if (dwFlags & _FORMAT_MESSAGE_FROM_SYSTEM) {
        throw moduleFailure("formatMessage(): dwFlags=_FORMAT_MESSAGE_FROM_SYSTEM is unsupported");
    }
    char** argArray = (dwFlags & _FORMAT_MESSAGE_ARGUMENT_ARRAY) ? Arguments : nullptr;
    int maxWidth = static_cast<int>(dwFlags & _FORMAT_MESSAGE_MAX_WIDTH_MASK);
    Text text = messageText(dwFlags, lpSource, dwMessageId, dwLanguageId);
    if (dwFlags & _FORMAT_MESSAGE_IGNORE_INSERTS) return deliver(dwFlags, text, lpBuffer, nSize);
    ResultText result;
    expandMessageText(text.data, text.length, maxWidth, Arguments, argArray, result);
    return deliver(dwFlags, Text{result.data(), result.size()}, lpBuffer, nSize);
}

// The failure text and its line end go out in one write, so that the lines
// of failures in several threads at once never run into each other.
long reportFailure(const std::string& text, char** lpBuffer) {
    std::string line = text + '\n';
    std::cout.write(line.data(), static_cast<std::streamsize>(line.size()));
    std::cout.flush();
    *lpBuffer = nullptr;
    return -1;
}

}  // namespace

long MessageModule::formatMessage(long dwFlags, char* lpSource, long dwMessageId, long dwLanguageId,
                                  char** lpBuffer, long nSize, char** Arguments) {
    try {
        return formatAndDeliver(dwFlags, lpSource, toInt32(dwMessageId), toInt32(dwLanguageId),
                                lpBuffer, nSize, Arguments);
    } catch (MessageTableParserException& failure) {
        return reportFailure(failure.msg, lpBuffer);
    } catch (MessageModuleException& failure) {
        return reportFailure(failure.msg, lpBuffer);
    }
}
