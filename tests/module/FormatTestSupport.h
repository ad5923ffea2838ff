// Test support for the formatter: calls with captured standard output.
#ifndef TQMSG_TESTS_FORMAT_TEST_SUPPORT_H
#define TQMSG_TESTS_FORMAT_TEST_SUPPORT_H

#include <vector>

#include "FreshProcess.h"
#include "MessageModule.h"

// What one formatMessage call did.
struct Outcome {
    long result = 0;
    std::string text;     // *lpBuffer after the call (when not nulled)
    std::string printed;  // everything written to std::cout
    bool nulled = false;  // *lpBuffer was set to null
};

// Calls formatMessage with *lpBuffer = `buffer`; a buffer allocated for the
// caller is read and released.
template <typename... Values>
Outcome format(long flags, const char* source, long id, long language, char* buffer, long nSize,
               Values... values) {
    char* target = buffer;
    Outcome outcome;
    testing::internal::CaptureStdout();
    outcome.result = MessageModule::formatMessage(flags, const_cast<char*>(source), id, language,
                                                  &target, nSize, values...);
    outcome.printed = testing::internal::GetCapturedStdout();
    outcome.nulled = target == nullptr;
    if (target != nullptr) outcome.text = target;
    if (target != buffer) delete[] target;
    return outcome;
}

// Formats `text` (from a string) into a 4096-byte buffer, with `flags` added.
template <typename... Values>
Outcome formatList(const char* text, long flags, Values... values) {
    static char buffer[4096];
    buffer[0] = '\0';
    return format(flags | _FORMAT_MESSAGE_FROM_STRING, text, 0, 0, buffer, sizeof buffer,
                  values...);
}

// The same with an argument array.
inline Outcome formatArray(const char* text, std::vector<char*> values, long flags = 0) {
    return formatList(text, flags | _FORMAT_MESSAGE_ARGUMENT_ARRAY,
                      values.empty() ? static_cast<char**>(nullptr) : values.data());
}

inline char* asElement(long value) { return reinterpret_cast<char*>(value); }

// The failure line `expected` was printed, the buffer pointer nulled and -1 returned.
inline void expectFailure(const Outcome& outcome, const std::string& expected) {
    EXPECT_EQ(outcome.result, -1);
    EXPECT_TRUE(outcome.nulled);
    EXPECT_EQ(outcome.printed, expected + "\n");
}

// Stores `text` under (language, id) in the process-wide store.
inline void storeMessage(long languageId, long messageId, const std::string& text) {
    FormattableMessage record;
    record.text = text;
    record.languageId = languageId;
    std::string name = "MSG_" + std::to_string(messageId);
    ASSERT_TRUE(MessageModule::getMessageMap()->put(languageId, name, messageId, record));
}

#endif  // TQMSG_TESTS_FORMAT_TEST_SUPPORT_H
