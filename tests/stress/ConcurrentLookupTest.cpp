// After loading, eight threads format and look up messages at once through
// every entry point, and every result is compared with the text expected.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include "FreshProcess.h"
#include "MessageModule.h"

namespace {

const int kMessages = 200, kThreads = 8, kRounds = 20;

// Even codes are plain texts; odd codes take two inserts. With the inserts
// ("disk-<code>", code) and "%" this is what formatting yields.
std::string messageText(int code, int language, const std::string& volume, const std::string& count,
                        const char* percent) {
    std::string tag = language == 0x409 ? "en" : "de", c = std::to_string(code);
    return code % 2 ? "Volume " + volume + " has " + count + " errors (" + tag + ")"
                    : "Plain " + c + " " + tag + " 100" + percent;
}

std::string expectedText(int code, int language) {
    return messageText(code, language, "disk-" + std::to_string(code), std::to_string(code), "%");
}

std::string catalogue() {
    std::string text =
        "LanguageNames=(English=0x409:MSG00409)\nLanguageNames=(German=0x407:MSG00407)\n";
    for (int code = 1; code <= kMessages; ++code) {
        text += "MessageId=" + std::to_string(code) + "\nSymbolicName=MSG_" + std::to_string(code);
        text += "\nLanguage=English\n" + messageText(code, 0x409, "%1", "%2!d!", "%%") + "\n.\n";
        text += "Language=German\n" + messageText(code, 0x407, "%1", "%2!d!", "%%") + "\n.\n";
    }
    return text;
}

// The text entry point `way` gives: 0-1 look up a plain text, 2-5 format one
// with the inserts; "?" when the returned size or pointer is wrong.
std::string viaEntryPoint(int way, int code, int language) {
    std::string value = "disk-" + std::to_string(code), result;
    char buffer[128];
    char* out = buffer;
    char* arguments[] = {&value[0], reinterpret_cast<char*>(static_cast<intptr_t>(code))};
    auto sized = [&](long size) { return size == long(strlen(buffer)) + 1 ? buffer : "?"; };
    switch (way) {
        case 0:
            return TQ_LangLookup(code, language, buffer, sizeof buffer) == buffer ? buffer : "?";
        case 1:
            return TQ_LangLookup(code, language, result);
        case 2:
            return sized(
                TQ_CompoundLangLookup(buffer, sizeof buffer, code, language, value.c_str(), code));
        case 3:
            TQ_CompoundLangLookup(result, code, language, value.c_str(), code);
            return result;
        case 4:
            return sized(MessageModule::formatMessage(_FORMAT_MESSAGE_ARGUMENT_ARRAY, nullptr, code,
                                                      language, &out, sizeof buffer, arguments));
        default: {
            out = nullptr;
            long size = MessageModule::formatMessage(_FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr, code,
                                                     language, &out, 0, value.c_str(), code);
            result = out ? out : "?";
            delete[] out;
            return size == long(result.size()) + 1 ? result : "?";
        }
    }
}

}  // namespace

TEST(Concurrency, EightThreadsLookUpAndFormatAtOnce) {
    inFreshProcess([] {
        TempFile file("stress.mc", catalogue());
        MessageModule module(file.path(), false);
        std::atomic<int> mismatches{0};
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&mismatches, t] {
                for (int i = 0; i < kRounds * kMessages; ++i) {
                    int code = 1 + i % kMessages, turn = code + t + i / kMessages;
                    int way = code % 2 ? 2 + turn % 4 : turn % 2;
                    for (int language : {0x409, 0x407}) {
                        mismatches +=
                            viaEntryPoint(way, code, language) != expectedText(code, language);
                    }
                }
            });
        }
        for (auto& thread : threads) thread.join();
        EXPECT_EQ(mismatches.load(), 0);
    });
}
