// formatMessage: text sources, flags, delivery and the failure boundary.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "FormatTestSupport.h"
#include "FreshProcess.h"

namespace {

const long ENGLISH = 1033;

struct Delivery {
    long flags;
    long nSize;
    long result;
    const char* text;  // null: *lpBuffer still points to the untouched caller buffer
};

// Formats the stored 'Disk full' (id 1, English) with the given flags and size.
Outcome formatDiskFull(long flags, long nSize, char* callerBuffer) {
    char* target = callerBuffer;
    Outcome outcome;
    testing::internal::CaptureStdout();
    outcome.result =
        MessageModule::formatMessage(flags, nullptr, 1, ENGLISH, &target, nSize, nullptr);
    outcome.printed = testing::internal::GetCapturedStdout();
    outcome.nulled = target == nullptr;
    if (target != nullptr) outcome.text = target;
    if (target != callerBuffer) delete[] target;
    return outcome;
}

TEST(FormatMessage, DeliversIntoTheCallersBufferOrANewOne) {
    const Delivery rows[] = {
        {0, 100, 10, "Disk full"},
        {0, 10, 10, "Disk full"},
        {0, 9, 9, "Disk ful"},
        {0, 1, 1, ""},
        {0, 0, -1, "untouched"},
        {0, -5, -1, "untouched"},
        {_FORMAT_MESSAGE_ALLOCATE_BUFFER, 0, 10, "Disk full"},
        {_FORMAT_MESSAGE_ALLOCATE_BUFFER, 64, 65, "Disk full"},
        {_FORMAT_MESSAGE_ALLOCATE_BUFFER, -3, 10, "Disk full"},
        {0x4000, 100, 10, "Disk full"},
    };
    inFreshProcess([&] {
        storeMessage(ENGLISH, 1, "Disk full");
        for (const Delivery& row : rows) {
            char buffer[128];
            std::strcpy(buffer, "untouched");
            Outcome outcome = formatDiskFull(row.flags, row.nSize, buffer);
            EXPECT_EQ(outcome.result, row.result) << row.flags << "/" << row.nSize;
            EXPECT_EQ(outcome.text, row.text) << row.flags << "/" << row.nSize;
            EXPECT_EQ(outcome.printed, "") << row.flags << "/" << row.nSize;
            EXPECT_FALSE(outcome.nulled);
        }
    });
}

TEST(FormatMessage, CopiesStopAtANulInsideTheResultWhileSizesCountIt) {
    inFreshProcess([&] {
        storeMessage(ENGLISH, 1, std::string("ab\0cd", 5));
        char buffer[16];
        std::memset(buffer, 'x', sizeof buffer);
        char* target = buffer;
        EXPECT_EQ(MessageModule::formatMessage(0, nullptr, 1, ENGLISH, &target, 16, nullptr), 6);
        EXPECT_STREQ(buffer, "ab");
        EXPECT_EQ(buffer[3], 'x');
        EXPECT_EQ(MessageModule::formatMessage(0, nullptr, 1, ENGLISH, &target, 4, nullptr), 4);
        EXPECT_EQ(std::string(buffer, 5), std::string("ab\0\0x", 5));
    });
}

TEST(FormatMessage, EachFailurePrintsItsLineAndNullsTheBuffer) {
    inFreshProcess([&] {
        storeMessage(ENGLISH, 1, "Disk full");
        char buffer[64] = "mine";
        const std::pair<long, std::string> lookups[] = {
            {0, "Message with langId=0x0, msgId=0x1 not found"},
            {1031, "Message with langId=0x407, msgId=0x1 not found"},
        };
        for (const auto& lookup : lookups) {
            char* target = buffer;
            testing::internal::CaptureStdout();
            long result =
                MessageModule::formatMessage(0, nullptr, 1, lookup.first, &target, 64, nullptr);
            EXPECT_EQ(testing::internal::GetCapturedStdout(), lookup.second + "\n");
            EXPECT_EQ(result, -1);
            EXPECT_EQ(target, nullptr);
        }
        EXPECT_STREQ(buffer, "mine");
        char* target = buffer;
        testing::internal::CaptureStdout();
        MessageModule::formatMessage(0, nullptr, static_cast<long>(0xC0000001u), ENGLISH, &target,
                                     64, nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "Message with langId=0x409, msgId=0xc0000001 not found\n");
    });
    const char* system = "formatMessage(): dwFlags=_FORMAT_MESSAGE_FROM_SYSTEM is unsupported";
    expectFailure(formatArray("Hello", {}, _FORMAT_MESSAGE_FROM_SYSTEM), system);
    expectFailure(formatArray("Hello", {}, _FORMAT_MESSAGE_FROM_SYSTEM | 0x0200), system);
    const std::pair<long, std::string> nullSources[] = {
        {_FORMAT_MESSAGE_FROM_STRING, "_FORMAT_MESSAGE_FROM_STRING"},
        {_FORMAT_MESSAGE_FROM_HMODULE, "_FORMAT_MESSAGE_FROM_HMODULE"},
    };
    for (const auto& source : nullSources) {
        char buffer[8];
        char* target = buffer;
        testing::internal::CaptureStdout();
        EXPECT_EQ(MessageModule::formatMessage(source.first, nullptr, 0, 0, &target, 8, nullptr),
                  -1);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "formatMessage(): dwFlags = " + source.second +
                      " : function parameter lpSource is NULL.\n");
        EXPECT_EQ(target, nullptr);
    }
}

TEST(FormatMessage, StringSourceAndIgnoreInserts) {
    Outcome hello = formatList("Hello", 0, static_cast<char**>(nullptr));
    EXPECT_EQ(hello.text, "Hello");
    EXPECT_EQ(hello.result, 6);
    Outcome raw = formatList("Value %1!d!%n", _FORMAT_MESSAGE_IGNORE_INSERTS | 3,
                             static_cast<char**>(nullptr));
    EXPECT_EQ(raw.text, "Value %1!d!%n");
    EXPECT_EQ(raw.result, 14);
    expectFailure(formatList("50%", _FORMAT_MESSAGE_ALLOCATE_BUFFER, static_cast<char**>(nullptr)),
                  "Invalid message string: 50%, string cannot end with an escape sequence %");
}

const char* const DISK_FILE =
    "LanguageNames=(English=0x409:MSG00409)\n"
    "MessageId=0x1\nSeverity=Error\nSymbolicName=MSG_DISK_FULL\nLanguage=English\n"
    "Disk %1 is full.\n.\n";

TEST(FormatMessage, LoadsANamedFileOnceOnDemand) {
    inFreshProcess([&] {
        MessageModule module;
        TempFile file("disk.mc", DISK_FILE);
        char* path = const_cast<char*>(file.path().c_str());
        const char* values[] = {"/tmp"};
        char buffer[64];
        char* target = buffer;
        testing::internal::CaptureStdout();
        EXPECT_EQ(
            MessageModule::formatMessage(_FORMAT_MESSAGE_FROM_HMODULE | _FORMAT_MESSAGE_FROM_SYSTEM,
                                         path, 0, 0, &target, 64, nullptr),
            -1);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "formatMessage(): dwFlags=_FORMAT_MESSAGE_FROM_SYSTEM is unsupported\n");
        std::string name = file.path();
        EXPECT_NE(MessageModule::mtmap.get(name), nullptr);  // loaded before the refusal
        for (int call = 0; call < 2; ++call) {
            target = buffer;
            long result = MessageModule::formatMessage(
                _FORMAT_MESSAGE_FROM_HMODULE | _FORMAT_MESSAGE_ARGUMENT_ARRAY, path,
                static_cast<long>(0xC0000001u), 0x409, &target, 64, const_cast<char**>(values));
            EXPECT_EQ(result, 19);
            EXPECT_STREQ(buffer, "Disk /tmp is full.");
            std::remove(path);  // a second call must not read the file again
        }
    });
}

TEST(FormatMessage, ReportsAFileThatFailsToLoad) {
    inFreshProcess([&] {
        TempFile file("disk.mc", DISK_FILE);  // no module yet: storing is refused
        char* target = nullptr;
        testing::internal::CaptureStdout();
        long result = MessageModule::formatMessage(
            _FORMAT_MESSAGE_FROM_HMODULE | _FORMAT_MESSAGE_FROM_SYSTEM,
            const_cast<char*>(file.path().c_str()), 1, 0x409, &target, 64, nullptr);
        std::string printed = testing::internal::GetCapturedStdout();
        EXPECT_EQ(result, -1);
        EXPECT_EQ(printed.find("File: \"" + file.path() + "\", Line: "), 0u) << printed;
        std::string name = file.path();
        EXPECT_EQ(MessageModule::mtmap.get(name), nullptr);
    });
}

}  // namespace
