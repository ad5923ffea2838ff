// MultiLangMessageMap: keys and their order, the repeated-pair rule and the
// symbolic-name binding. Each test uses its own store, independent of the
// process-wide one.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MessageModuleMaps.h"

namespace {

FormattableMessage record(const char* text, const char* name = "MSG", long facility = 0,
                          long severity = 0) {
    FormattableMessage message;
    message.text = text;
    message.symbolicName = name;
    message.languageId = 1033;
    message.facilityId = facility;
    message.severityId = severity;
    return message;
}

std::vector<std::string> keyTexts(MultiLangMessageMap& store) {
    std::vector<std::string> keys;
    for (auto& entry : store.msgmap) keys.push_back(entry.first);
    return keys;
}

TEST(MessageStore, FirstPutStoresACopy) {
    MultiLangMessageMap store;
    FormattableMessage message = record("Disk full.");
    FormattableMessage* found = &message;
    EXPECT_EQ(store.get(1033, 1, found), nullptr);
    EXPECT_EQ(found, nullptr);

    EXPECT_TRUE(store.put(1033, 1, message));
    message.text = "changed";
    auto* records = store.get(1033, 1, found);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->text, "Disk full.");
    EXPECT_EQ(records, &store.msgmap.begin()->second);
    EXPECT_EQ(store.get(1031, 1, found), nullptr);
}

TEST(MessageStore, KeysAreSignedDecimalPairsInStrcmpOrder) {
    MultiLangMessageMap store;
    FormattableMessage message = record("x");
    const long pairs[][2] = {{1033, 9},  {1033, 10}, {1033, 1},
                             {1033, -5}, {10, 7},    {1033, static_cast<long>(0xC0000001u)},
                             {1031, 1},  {9, 5}};
    for (auto& pair : pairs) EXPECT_TRUE(store.put(pair[0], pair[1], message));
    std::vector<std::string> expected = {"10.7",   "1031.1",  "1033.-1073741823", "1033.-5",
                                         "1033.1", "1033.10", "1033.9",           "9.5"};
    EXPECT_EQ(keyTexts(store), expected);
    FormattableMessage* found = nullptr;
    for (auto& pair : pairs) EXPECT_NE(store.get(pair[0], pair[1], found), nullptr);
}

TEST(MessageStore, IdentifiersAreNormalisedTo32Bits) {
    MultiLangMessageMap store;
    FormattableMessage message = record("x", "MSG", 0, 3);
    long wide = static_cast<long>(INT64_C(0x1C0000001));  // 0xC0000001 on i386 as well
    EXPECT_TRUE(store.put(1033, wide, message));
    FormattableMessage* found = nullptr;
    EXPECT_NE(store.get(1033, -1073741823L, found), nullptr);
    EXPECT_EQ(keyTexts(store), std::vector<std::string>{"1033.-1073741823"});
}

TEST(MessageStore, RepeatedPairKeepsOrReplacesInPlace) {
    MultiLangMessageMap store;
    FormattableMessage first = record("Text", "FIRST", 7, 3);
    ASSERT_TRUE(store.put(1033, 1, first));
    FormattableMessage* stored = nullptr;
    store.get(1033, 1, stored);

    FormattableMessage renamed = record("Text", "SECOND", 7, 3);
    EXPECT_FALSE(store.put(1033, 1, renamed));
    EXPECT_EQ(stored->symbolicName, "FIRST");

    // Any difference in text, facility or severity replaces all five fields.
    FormattableMessage variants[] = {record("Other", "T", 7, 3), record("Other", "F", 8, 3),
                                     record("Other", "S", 8, 2)};
    for (FormattableMessage& variant : variants) {
        EXPECT_FALSE(store.put(1033, 1, variant));
        FormattableMessage* now = nullptr;
        store.get(1033, 1, now);
        EXPECT_EQ(now, stored);  // replaced in place
        EXPECT_EQ(now->symbolicName, variant.symbolicName);
        EXPECT_EQ(now->facilityId, variant.facilityId);
        EXPECT_EQ(now->severityId, variant.severityId);
    }
    EXPECT_EQ(store.msgmap.size(), 1u);
}

TEST(MessageStore, SymbolicNameStaysBoundToItsFirstIdentifier) {
    MultiLangMessageMap store;
    std::string name = "ID_A", unknown = "UNKNOWN", otherCase = "id_a";
    FormattableMessage english = record("A"), german = record("B");
    EXPECT_TRUE(store.put(1033, name, 5, english));
    EXPECT_TRUE(store.put(1031, name, 7, german));  // filed under 5

    FormattableMessage* found = nullptr;
    EXPECT_EQ(store.get(1031, 7, found), nullptr);
    ASSERT_NE(store.get(1031, name, found), nullptr);
    EXPECT_EQ(found->text, "B");
    EXPECT_NE(store.get(1031, 5, found), nullptr);

    found = &english;
    EXPECT_EQ(store.get(1033, unknown, found), nullptr);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(store.get(1033, otherCase, found), nullptr);
    EXPECT_FALSE(store.put(1033, name, 9, english));  // the pair (1033, 5) exists
}

}  // namespace
