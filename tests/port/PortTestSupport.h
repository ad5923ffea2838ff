// Verbs for the converter's tests: format a stored message as a program
// would, and load a converted file. Every verb that loads must run inside
// inFreshProcess (the store is process-wide).
#ifndef TQMSG_TESTS_PORT_TEST_SUPPORT_H
#define TQMSG_TESTS_PORT_TEST_SUPPORT_H

#include <string>
#include <vector>

#include "FreshProcess.h"
#include "MessageModule.h"

// The formatted message (language, id) with the inserts "A", "B", "C", or
// "<failed: ...>" with what the formatter printed.
inline std::string formatStored(long languageId, long messageId) {
    static const char* values[] = {"A", "B", "C"};
    char* buffer = nullptr;
    testing::internal::CaptureStdout();
    long result = MessageModule::formatMessage(
        _FORMAT_MESSAGE_ALLOCATE_BUFFER | _FORMAT_MESSAGE_ARGUMENT_ARRAY, nullptr, messageId,
        languageId, &buffer, 0, const_cast<char**>(values));
    std::string printed = testing::internal::GetCapturedStdout();
    if (result < 0 || buffer == nullptr) return "<failed: " + printed + ">";
    std::string text = buffer;
    delete[] buffer;
    return text;
}

// Loads `path`; the library's error text, or "" when it loaded.
inline std::string loadConverted(const std::string& path) {
    try {
        MessageModule module(path, false);
    } catch (MessageTableParserException& e) {
        return e.msg;
    } catch (MessageModuleException& e) {
        return e.msg;
    }
    return "";
}

#endif  // TQMSG_TESTS_PORT_TEST_SUPPORT_H
