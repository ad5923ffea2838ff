// formatMessage: text sources, flags, delivery and the failure boundary.

#include <fcntl.h>

#include <cstring>
#include <fstream>
#include <map>
#include <thread>

#include "FormatTestSupport.h"

namespace {

const long ENGLISH = 1033;

TEST(FormatMessage, DeliversIntoTheCallersBufferOrANewOne) {
    const struct {
        long flags, nSize, result;
        const char* text;  // "untouched": *lpBuffer still points to the caller's buffer
    } rows[] = {{0, 100, 10, "Disk full"},
                {0, 10, 10, "Disk full"},
                {0, 9, 9, "Disk ful"},
                {0, 1, 1, ""},
                {0, 0, -1, "untouched"},
                {0, -5, -1, "untouched"},
                {_FORMAT_MESSAGE_ALLOCATE_BUFFER, 0, 10, "Disk full"},
                {_FORMAT_MESSAGE_ALLOCATE_BUFFER, 64, 65, "Disk full"},
                {_FORMAT_MESSAGE_ALLOCATE_BUFFER, -3, 10, "Disk full"},
                {0x4000, 100, 10, "Disk full"}};
    inFreshProcess([&] {
        storeMessage(ENGLISH, 1, "Disk full");
        for (const auto& row : rows) {
            char buffer[128] = "untouched";
            Outcome outcome = format(row.flags, nullptr, 1, ENGLISH, buffer, row.nSize, nullptr);
            EXPECT_EQ(outcome.result, row.result) << row.flags << "/" << row.nSize;
            EXPECT_EQ(outcome.text, row.text) << row.flags << "/" << row.nSize;
            EXPECT_EQ(outcome.printed, "") << row.flags << "/" << row.nSize;
        }
    });
}

TEST(FormatMessage, CopiesStopAtANulInsideTheResultWhileSizesCountIt) {
    inFreshProcess([&] {
        storeMessage(ENGLISH, 1, std::string("ab\0cd", 5));
        char buffer[16];
        std::memset(buffer, 'x', sizeof buffer);
        EXPECT_EQ(format(0, nullptr, 1, ENGLISH, buffer, 16, nullptr).result, 6);
        EXPECT_EQ(std::string(buffer, 4), std::string("ab\0x", 4));
        EXPECT_EQ(format(0, nullptr, 1, ENGLISH, buffer, 4, nullptr).result, 4);
        EXPECT_EQ(std::string(buffer, 5), std::string("ab\0\0x", 5));
    });
}

TEST(FormatMessage, EachFailurePrintsItsLineAndNullsTheBuffer) {
    inFreshProcess([&] {
        storeMessage(ENGLISH, 1, "Disk full");
        const struct {
            long id, language;
            const char* printed;
        } misses[] = {{1, 0, "Message with langId=0x0, msgId=0x1 not found"},
                      {1, 1031, "Message with langId=0x407, msgId=0x1 not found"},
                      {static_cast<long>(0xC0000001u), ENGLISH,
                       "Message with langId=0x409, msgId=0xc0000001 not found"}};
        char buffer[64] = "mine";
        for (const auto& miss : misses) {
            expectFailure(format(0, nullptr, miss.id, miss.language, buffer, 64, nullptr),
                          miss.printed);
        }
        EXPECT_STREQ(buffer, "mine");
    });
    const std::pair<long, const char*> nullSources[] = {
        {_FORMAT_MESSAGE_FROM_STRING, "_FORMAT_MESSAGE_FROM_STRING"},
        {_FORMAT_MESSAGE_FROM_HMODULE, "_FORMAT_MESSAGE_FROM_HMODULE"}};
    for (const auto& source : nullSources) {
        char buffer[8];
        expectFailure(format(source.first, nullptr, 0, 0, buffer, 8, nullptr),
                      std::string("formatMessage(): dwFlags = ") + source.second +
                          " : function parameter lpSource is NULL.");
    }
}

// Failure lines once came out merged when threads failed at once: the text
// and its line end were written by separate calls.
TEST(FormatMessage, FailureLinesOfConcurrentCallsStayWhole) {
    inFreshProcess([&] {
        const int threads = 8, failures = 5000;
        TempFile output("failures.txt", "");
        std::fflush(stdout);
        int savedOutput = dup(1), file = open(output.path().c_str(), O_WRONLY);
        dup2(file, 1);
        std::vector<std::thread> workers;
        for (int t = 1; t <= threads; ++t) {
            workers.emplace_back([t] {
                char buffer[8];
                for (int i = 0; i < failures; ++i) TQ_LangLookup(t, 0x407, buffer, sizeof buffer);
            });
        }
        for (std::thread& worker : workers) worker.join();
        std::fflush(stdout);
        dup2(savedOutput, 1);
        close(file);
        close(savedOutput);
        std::map<std::string, int> lines, expected;
        std::ifstream in(output.path());
        for (std::string line; std::getline(in, line);) ++lines[line];
        for (int t = 1; t <= threads; ++t) {
            expected["Message with langId=0x407, msgId=0x" + std::to_string(t) + " not found"] =
                failures;
        }
        EXPECT_EQ(lines, expected);
    });
}

const char* const DISK_FILE =
    "LanguageNames=(English=0x409:MSG00409)\n"
    "MessageId=0x1\nSeverity=Error\nSymbolicName=MSG_DISK_FULL\nLanguage=English\n"
    "Disk %1 is full.\n.\n";

// A named file is loaded on the first call that needs it, and only once.
TEST(FormatMessage, LoadsANamedFileOnceOnDemand) {
    inFreshProcess([&] {
        TempFile file("disk.mc", DISK_FILE);
        std::string path = file.path();
        const char* values[] = {"/tmp"};
        char buffer[64];
        const long fromFile = _FORMAT_MESSAGE_FROM_HMODULE | _FORMAT_MESSAGE_ARGUMENT_ARRAY;
        Outcome failed = format(fromFile, path.c_str(), 1, 0x409, buffer, 64, nullptr);
        EXPECT_TRUE(failed.nulled);  // no module yet: storing is refused
        EXPECT_EQ(failed.printed.find("File: \"" + path + "\", Line: "), 0u) << failed.printed;
        EXPECT_EQ(MessageModule::mtmap.get(path), nullptr);

        MessageModule module;
        expectFailure(
            format(fromFile | _FORMAT_MESSAGE_FROM_SYSTEM | _FORMAT_MESSAGE_IGNORE_INSERTS,
                   path.c_str(), 0, 0, buffer, 64, nullptr),
            "formatMessage(): dwFlags=_FORMAT_MESSAGE_FROM_SYSTEM is unsupported");
        EXPECT_NE(MessageModule::mtmap.get(path), nullptr);  // loaded before the refusal
        std::remove(path.c_str());  // a later call must not read the file again
        Outcome outcome = format(fromFile, path.c_str(), static_cast<long>(0xC0000001u), 0x409,
                                 buffer, 64, const_cast<char**>(values));
        EXPECT_EQ(outcome.text + "/" + std::to_string(outcome.result), "Disk /tmp is full./19");
    });
}

}  // namespace
