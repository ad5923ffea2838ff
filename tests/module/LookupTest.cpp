// The exported lookup functions, after success and after failure.
#include <cstring>

#include "FormatTestSupport.h"

namespace {

const int ENGLISH = 1033, GERMAN = 1031;

// The failure line of a German lookup of `id` (below 10: the same in hex).
std::string missing(int id) {
    return "Message with langId=0x407, msgId=0x" + std::to_string(id) + " not found\n";
}

TEST(Lookup, LangAndCompoundLangLookup) {
    inFreshProcess([&] {
        storeMessage(ENGLISH, 1, "Disk full");
        storeMessage(ENGLISH, 2, "Volume %1 has %2!d! errors");
        storeMessage(ENGLISH, 4, "Needs %1");  // the lookup formats, without inserts
        char buffer[64];
        EXPECT_EQ(TQ_LangLookup(1, ENGLISH, buffer, 5), buffer);
        EXPECT_STREQ(buffer, "Disk");
        EXPECT_EQ(TQ_CompoundLangLookup(buffer, 10, 2, ENGLISH, "data", 5), 10);
        EXPECT_STREQ(buffer, "Volume da");
        std::string result = "old";
        EXPECT_STREQ(TQ_LangLookup(1, ENGLISH, result), "Disk full");
        EXPECT_EQ(result, "Disk full");
        TQ_CompoundLangLookup(result, 2, ENGLISH, "data", 5);
        EXPECT_EQ(result, "Volume data has 5 errors");

        std::strcpy(buffer, "kept");
        testing::internal::CaptureStdout();
        EXPECT_EQ(TQ_LangLookup(1, ENGLISH, buffer, 0), buffer);
        EXPECT_EQ(TQ_LangLookup(1, GERMAN, buffer, 64), nullptr);
        EXPECT_EQ(TQ_LangLookup(4, ENGLISH, buffer, 64), nullptr);
        EXPECT_EQ(TQ_CompoundLangLookup(buffer, 0x80000000u, 2, ENGLISH, "data", 5), -1);
        EXPECT_EQ(TQ_CompoundLangLookup(buffer, 64, 2, GERMAN, "data", 5), -1);
        EXPECT_EQ(
            testing::internal::GetCapturedStdout(),
            missing(1) + "Insert %1 has no argument: no argument source was given\n" + missing(2));
        EXPECT_STREQ(buffer, "kept");

        testing::internal::CaptureStdout();
        const char* failed = TQ_LangLookup(1, GERMAN, result);
        ASSERT_NE(failed, nullptr);
        EXPECT_EQ(std::string(failed) + "/" + result, "/");
        result = "old";
        TQ_CompoundLangLookup(result, 2, GERMAN, "data", 5);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), missing(1) + missing(2));
        EXPECT_EQ(result, "");
    });
}

}  // namespace
