// The variadic formatMessage and the exported lookup functions: each fixes
// the flags and forwards to the seven-parameter formatMessage.
#include <cstdarg>
#include <memory>
#include <string>

#include "MessageModule.h"
#include "module/ArgumentListEnd.h"

namespace {

// Moves a buffer that formatMessage allocated into `result` (empty when the
// call failed) and releases it.
const char* takeResult(char* allocated, std::string& result) {
    std::unique_ptr<char[]> owned(allocated);
    result.clear();
    if (owned) result.assign(owned.get());
    return result.c_str();
}

}  // namespace

// `Arguments` carries the address of the list; the formatter copies it before
// each use, so the same list serves any number of inserts on every platform.
long MessageModule::formatMessage(long dwFlags, char* lpSource, long dwMessageId, long dwLanguageId,
                                  char** lpBuffer, long nSize, ...) {
    va_list arguments;
    va_start(arguments, nSize);
    ArgumentListEnd end(arguments);
    return formatMessage(dwFlags, lpSource, dwMessageId, dwLanguageId, lpBuffer, nSize,
                         reinterpret_cast<char**>(&arguments));
}

char* TQ_LangLookup(int messageId, int languageId, char* buffer, int size) {
    MessageModule::formatMessage(0, nullptr, messageId, languageId, &buffer, size,
                                 static_cast<char**>(nullptr));
    return buffer;
}

const char* TQ_LangLookup(int messageId, int languageId, std::string& result) {
    char* allocated = nullptr;
    MessageModule::formatMessage(_FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr, messageId, languageId,
                                 &allocated, 0, static_cast<char**>(nullptr));
    return takeResult(allocated, result);
}

// `size` is taken as a 32-bit signed size on every platform: above 2147483647
// it is negative and nothing is written.
int TQ_CompoundLangLookup(char* buffer, unsigned int size, int messageId, int languageId, ...) {
    va_list arguments;
    va_start(arguments, languageId);
    ArgumentListEnd end(arguments);
    return static_cast<int>(MessageModule::formatMessage(0, nullptr, messageId, languageId, &buffer,
                                                         toInt32(static_cast<long>(size)),
                                                         reinterpret_cast<char**>(&arguments)));
}

void TQ_CompoundLangLookup(std::string& result, int messageId, int languageId, ...) {
    va_list arguments;
    va_start(arguments, languageId);
    ArgumentListEnd end(arguments);
    char* allocated = nullptr;
    MessageModule::formatMessage(_FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr, messageId, languageId,
                                 &allocated, 0, reinterpret_cast<char**>(&arguments));
    takeResult(allocated, result);
}
