// The exported lookup functions and the variadic formatMessage.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "FormatTestSupport.h"
#include "FreshProcess.h"

namespace {

const int ENGLISH = 1033;
const int GERMAN = 1031;

void storeExamples() {
    storeMessage(ENGLISH, 1, "Disk full");
    storeMessage(ENGLISH, 2, "Volume %1 has %2!d! errors");
    storeMessage(ENGLISH, 3, "100%% done");
    storeMessage(ENGLISH, 4, "Needs %1");
}

TEST(Lookup, LangLookupIntoABuffer) {
    inFreshProcess([&] {
        storeExamples();
        char buffer[64];
        EXPECT_EQ(TQ_LangLookup(1, ENGLISH, buffer, 64), buffer);
        EXPECT_STREQ(buffer, "Disk full");
        EXPECT_EQ(TQ_LangLookup(1, ENGLISH, buffer, 5), buffer);
        EXPECT_STREQ(buffer, "Disk");
        EXPECT_EQ(TQ_LangLookup(3, ENGLISH, buffer, 64), buffer);
        EXPECT_STREQ(buffer, "100% done");

        std::strcpy(buffer, "kept");
        testing::internal::CaptureStdout();
        EXPECT_EQ(TQ_LangLookup(1, ENGLISH, buffer, 0), buffer);
        EXPECT_EQ(TQ_LangLookup(1, GERMAN, buffer, 64), nullptr);
        EXPECT_EQ(TQ_LangLookup(4, ENGLISH, buffer, 64), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "Message with langId=0x407, msgId=0x1 not found\n"
                  "Insert %1 has no argument: no argument source was given\n");
        EXPECT_STREQ(buffer, "kept");
    });
}

TEST(Lookup, LangLookupIntoAString) {
    inFreshProcess([&] {
        storeExamples();
        std::string result = "old";
        EXPECT_STREQ(TQ_LangLookup(1, ENGLISH, result), "Disk full");
        EXPECT_EQ(result, "Disk full");
        testing::internal::CaptureStdout();
        const char* failed = TQ_LangLookup(1, GERMAN, result);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "Message with langId=0x407, msgId=0x1 not found\n");
        ASSERT_NE(failed, nullptr);
        EXPECT_STREQ(failed, "");
        EXPECT_EQ(result, "");
    });
}

TEST(Lookup, CompoundLangLookupTakesTheVariableArguments) {
    inFreshProcess([&] {
        storeExamples();
        char buffer[64] = "kept";
        EXPECT_EQ(TQ_CompoundLangLookup(buffer, 64, 2, ENGLISH, "data", 5), 25);
        EXPECT_STREQ(buffer, "Volume data has 5 errors");
        EXPECT_EQ(TQ_CompoundLangLookup(buffer, 10, 2, ENGLISH, "data", 5), 10);
        EXPECT_STREQ(buffer, "Volume da");

        std::strcpy(buffer, "kept");
        testing::internal::CaptureStdout();
        EXPECT_EQ(TQ_CompoundLangLookup(buffer, 0x80000000u, 2, ENGLISH, "data", 5), -1);
        EXPECT_EQ(TQ_CompoundLangLookup(buffer, 64, 2, GERMAN, "data", 5), -1);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "Message with langId=0x407, msgId=0x2 not found\n");
        EXPECT_STREQ(buffer, "kept");

        std::string result = "old";
        TQ_CompoundLangLookup(result, 2, ENGLISH, "data", 5);
        EXPECT_EQ(result, "Volume data has 5 errors");
        testing::internal::CaptureStdout();
        TQ_CompoundLangLookup(result, 2, GERMAN, "data", 5);
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(result, "");
    });
}

TEST(Lookup, VariadicFormatMessagePassesItsArgumentsOn) {
    char buffer[64];
    char* target = buffer;
    long result = MessageModule::formatMessage(_FORMAT_MESSAGE_FROM_STRING | 12,
                                               const_cast<char*>("%3!x! %1 of %2!d!"), 0, 0,
                                               &target, 64, "part", 7, 255);
    EXPECT_EQ(result, 15);
    EXPECT_STREQ(buffer, "ff part of \n7\n");  // the width 12 is handed on too
}

}  // namespace
