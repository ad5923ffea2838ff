// After loading, eight threads format and look up messages at once through
// every entry point, and every result is compared with the text expected.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include "FreshProcess.h"
#include "MessageModule.h"

namespace {

const int kMessages = 200;  // per language; odd codes have inserts
const int kThreads = 8;
const int kRounds = 20;
const int kLanguages[] = {0x409, 0x407};

std::string languageName(int language) { return language == 0x409 ? "en" : "de"; }

std::string plainText(int code, int language) {
    return "Plain " + std::to_string(code) + " " + languageName(language) + " 100%";
}

// The expected text of an insert message with the values ("disk-<code>", code).
std::string insertText(int code, int language) {
    return "Volume disk-" + std::to_string(code) + " has " + std::to_string(code) + " errors (" +
           languageName(language) + ")";
}

std::string catalogue() {
    std::string text =
        "LanguageNames=(English=0x409:MSG00409)\nLanguageNames=(German=0x407:MSG00407)\n";
    for (int code = 1; code <= kMessages; ++code) {
        std::string name = "MSG_" + std::to_string(code);
        for (int language : kLanguages) {
            text += language == 0x409 ? "MessageId=" + std::to_string(code) +
                                            "\nSymbolicName=" + name + "\nLanguage=English\n"
                                      : "Language=German\n";
            text += code % 2
                        ? "Volume %1 has %2!d! errors (" + languageName(language) + ")"
                        : "Plain " + std::to_string(code) + " " + languageName(language) + " 100%%";
            text += "\n.\n";
        }
    }
    return text;
}

// One round over every message through one entry point; returns the mismatches.
int checkAll(int thread) {
    int mismatches = 0;
    auto expect = [&](bool same) { mismatches += same ? 0 : 1; };
    for (int code = 1; code <= kMessages; ++code) {
        for (int language : kLanguages) {
            std::string value = "disk-" + std::to_string(code);
            char buffer[128];
            std::string result;
            if (code % 2 == 0) {
                std::string expected = plainText(code, language);
                expect(TQ_LangLookup(code, language, buffer, sizeof buffer) == buffer &&
                       expected == buffer);
                expect(expected == TQ_LangLookup(code, language, result));
                continue;
            }
            std::string expected = insertText(code, language);
            switch ((code + thread) % 4) {
                case 0:
                    expect(TQ_CompoundLangLookup(buffer, sizeof buffer, code, language,
                                                 value.c_str(),
                                                 code) == static_cast<int>(expected.size()) + 1 &&
                           expected == buffer);
                    break;
                case 1:
                    TQ_CompoundLangLookup(result, code, language, value.c_str(), code);
                    expect(result == expected);
                    break;
                case 2: {
                    char* arguments[] = {&value[0],
                                         reinterpret_cast<char*>(static_cast<intptr_t>(code))};
                    char* out = buffer;
                    expect(MessageModule::formatMessage(_FORMAT_MESSAGE_ARGUMENT_ARRAY, nullptr,
                                                        code, language, &out, 10,
                                                        arguments) == 10 &&
                           expected.substr(0, 9) == buffer);
                    break;
                }
                default: {
                    char* out = nullptr;
                    long size =
                        MessageModule::formatMessage(_FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr, code,
                                                     language, &out, 0, value.c_str(), code);
                    expect(size == static_cast<long>(expected.size()) + 1 && out &&
                           expected == out);
                    delete[] out;
                }
            }
        }
    }
    return mismatches;
}

}  // namespace

TEST(Concurrency, EightThreadsLookUpAndFormatAtOnce) {
    inFreshProcess([] {
        TempFile file("stress.mc", catalogue());
        MessageModule module(file.path(), false);
        ASSERT_EQ(MessageModule::mlmap.msgmap.size(), 2u * kMessages);

        std::atomic<int> mismatches{0};
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&mismatches, t] {
                for (int round = 0; round < kRounds; ++round) {
                    mismatches += checkAll(t + round);
                }
            });
        }
        for (auto& thread : threads) {
            thread.join();
        }
        EXPECT_EQ(mismatches.load(), 0);
    });
}
