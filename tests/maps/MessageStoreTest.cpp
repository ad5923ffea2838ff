// MultiLangMessageMap: keys and their order, the repeated-pair rule and the
// symbolic-name binding; MessageTableMap: exact file names, refusal of
// repeats, and clear. Each test uses its own maps, independent of the
// process-wide ones.
#include <vector>

#include "FreshProcess.h"
#include "MessageTable.h"

namespace {

FormattableMessage* stored(MultiLangMessageMap& store, long languageId, long messageId) {
    FormattableMessage* found = nullptr;
    store.get(languageId, messageId, found);
    return found;
}

TEST(MessageStore, FirstPutStoresACopy) {
    MultiLangMessageMap store;
    FormattableMessage message{"Disk full.", "MSG", 1033, 0, 0};
    FormattableMessage* found = &message;
    EXPECT_EQ(store.get(1033, 1, found), nullptr);
    EXPECT_EQ(found, nullptr);  // cleared on a miss
    EXPECT_TRUE(store.put(1033, 1, message));
    message.text = "changed";
    EXPECT_EQ(store.get(1033, 1, found), &store.msgmap.begin()->second);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->text, "Disk full.");
    EXPECT_EQ(stored(store, 1031, 1), nullptr);
}

TEST(MessageStore, KeysAreSigned32BitDecimalPairsInStrcmpOrder) {
    MultiLangMessageMap store;
    FormattableMessage message{"x", "MSG", 1033, 0, 0};
    const long pairs[][2] = {
        {1033, 9},  {1033, 10}, {1033, 1},
        {1033, -5}, {10, 7},    {1033, static_cast<long>(0xC0000001u)},
        {1031, 1},  {9, 5},     {1033, static_cast<long>(INT64_C(0x100000005))}};  // 5 on i386 too
    for (auto& pair : pairs) EXPECT_TRUE(store.put(pair[0], pair[1], message));
    std::vector<std::string> keys,
        expected = {"10.7",    "1031.1", "1033.-1073741823", "1033.-5", "1033.1",
                    "1033.10", "1033.5", "1033.9",           "9.5"};
    for (auto& entry : store.msgmap) keys.push_back(entry.first);
    EXPECT_EQ(keys, expected);
    for (auto& pair : pairs) EXPECT_NE(stored(store, pair[0], pair[1]), nullptr);
    EXPECT_NE(stored(store, 1033, 5), nullptr);
}

TEST(MessageStore, RepeatedPairKeepsOrReplacesInPlace) {
    MultiLangMessageMap store;
    FormattableMessage first{"Text", "FIRST", 1033, 7, 3}, renamed{"Text", "2", 1033, 7, 3};
    ASSERT_TRUE(store.put(1033, 1, first));
    FormattableMessage* original = stored(store, 1033, 1);
    EXPECT_FALSE(store.put(1033, 1, renamed));
    EXPECT_EQ(original->symbolicName, "FIRST");

    // Any difference in text, facility or severity replaces all five fields.
    FormattableMessage variants[] = {
        {"Other", "T", 1033, 7, 3}, {"Other", "F", 1033, 8, 3}, {"Other", "S", 1033, 8, 2}};
    for (FormattableMessage& variant : variants) {
        EXPECT_FALSE(store.put(1033, 1, variant));
        FormattableMessage* now = stored(store, 1033, 1);
        EXPECT_EQ(now, original);  // replaced in place
        EXPECT_EQ(now->symbolicName, variant.symbolicName);
        EXPECT_EQ(now->facilityId, variant.facilityId);
        EXPECT_EQ(now->severityId, variant.severityId);
    }
    EXPECT_EQ(store.msgmap.size(), 1u);
}

TEST(MessageStore, SymbolicNameStaysBoundToItsFirstIdentifier) {
    MultiLangMessageMap store;
    std::string name = "ID_A", unknown = "UNKNOWN", otherCase = "id_a";
    FormattableMessage english{"A", "MSG", 1033, 0, 0}, german{"B", "MSG", 1033, 0, 0};
    EXPECT_TRUE(store.put(1033, name, 5, english));
    EXPECT_TRUE(store.put(1031, name, 7, german));  // filed under 5
    EXPECT_EQ(stored(store, 1031, 7), nullptr);
    FormattableMessage* found = &english;
    ASSERT_NE(store.get(1031, name, found), nullptr);
    EXPECT_EQ(found->text, "B");
    EXPECT_EQ(store.get(1033, unknown, found), nullptr);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(store.get(1033, otherCase, found), nullptr);
    EXPECT_FALSE(store.put(1033, name, 9, english));  // the pair (1033, 5) exists
}

TEST(TableRegistry, RegistersExactNamesOnce) {
    TempFile empty("empty.mc", "");
    std::string path = empty.path();
    MessageTableMap registry;
    MessageTable* first = new MessageTable(nullptr, path, false);
    MessageTable* second = new MessageTable(nullptr, path, false);
    std::string name = "a.mc", dotted = "./a.mc", upper = "A.mc";

    EXPECT_EQ(registry.get(name), nullptr);
    EXPECT_TRUE(registry.put(name, first));
    EXPECT_FALSE(registry.put(name, second));  // not taken over
    EXPECT_EQ(registry.get(name), first);
    EXPECT_EQ(registry.get(dotted), nullptr);
    EXPECT_EQ(registry.get(upper), nullptr);
    EXPECT_TRUE(registry.put(upper, nullptr));  // clear skips empty slots
    delete second;

    registry.clear();  // destroys `first`; a leak checker sees if it did not
    EXPECT_TRUE(registry.tables.empty());
    EXPECT_EQ(registry.get(name), nullptr);
    registry.clear();
}

}  // namespace
