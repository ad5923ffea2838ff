// IDMap, IDReverseMap, DualIDMap and FacilityMap: results and stored entries.
#include <gtest/gtest.h>

#include <string>

#include "MessageModuleMaps.h"

namespace {

TEST(IDMap, KeepsFirstEntryAndOwnsItsKeyCopies) {
    IDMap map;
    std::string name = "Error", original = "Error", lower = "error";
    EXPECT_TRUE(map.put(name, 3));
    name[0] = 'X';  // the map must not refer to the caller's string
    EXPECT_EQ(map.get(name), nullptr);
    EXPECT_FALSE(map.put(original, 4));
    ASSERT_NE(map.get(original), nullptr);
    EXPECT_EQ(*map.get(original), 3);
    EXPECT_TRUE(map.put(lower, 4));  // names differing in case are two entries

    IDReverseMap reverse;
    std::string first = "One", second = "Uno";
    EXPECT_EQ(reverse.get(1), nullptr);
    EXPECT_TRUE(reverse.put(1, first));
    EXPECT_FALSE(reverse.put(1, second));
    EXPECT_EQ(*reverse.get(1), "One");
}

// One row per combination of what the map holds before put("name", 5, "Text").
struct DualCase {
    const char* label;
    bool allowDuplicates;
    long nameBefore;         // kAbsent, 5 (same id) or 6 (other id)
    const char* textBefore;  // text stored under 5 before, or null
    bool ignoreConflicts;
    bool expected;
    const char* textAfter;  // text stored under 5 after, or null
};
const long kAbsent = -999;

const DualCase kDualCases[] = {
    {"new name, new id", true, kAbsent, nullptr, false, true, "Text"},
    {"alias of equal text", true, kAbsent, "Text", false, true, "Text"},
    {"alias of other text, strict", true, kAbsent, "Other", false, false, "Other"},
    {"alias of other text, lenient", true, kAbsent, "Other", true, true, "Other"},
    {"exact repeat", true, 5, "Text", false, true, "Text"},
    {"known name, new id text", true, 5, nullptr, false, true, "Text"},
    {"known name, other text, strict", true, 5, "Other", false, false, "Other"},
    {"known name, other text, lenient", true, 5, "Other", true, true, "Other"},
    {"name of other id, strict", true, 6, nullptr, false, false, nullptr},
    {"name of other id, strict, id present", true, 6, "Text", false, false, "Text"},
    {"name of other id, lenient", true, 6, nullptr, true, true, "Text"},
    {"name of other id, lenient, id present", true, 6, "Other", true, true, "Other"},
    {"no duplicates: all new", false, kAbsent, nullptr, false, true, "Text"},
    {"no duplicates: id present", false, kAbsent, "Text", true, false, "Text"},
    {"no duplicates: name present", false, 5, nullptr, true, false, nullptr},
    {"no duplicates: exact repeat", false, 5, "Text", true, false, "Text"},
    {"no duplicates: name of other id", false, 6, nullptr, true, false, nullptr},
};

TEST(DualIDMap, PutOutcomeTable) {
    for (const DualCase& row : kDualCases) {
        SCOPED_TRACE(row.label);
        DualIDMap map;
        std::string name = "name", text = "Text";
        if (row.nameBefore != kAbsent) map.forward.put(name, row.nameBefore);
        std::string before = row.textBefore ? row.textBefore : "";
        if (row.textBefore != nullptr) map.reverse.put(5, before);
        map.allowDuplicates = row.allowDuplicates;
        EXPECT_EQ(map.put(name, 5, text, row.ignoreConflicts), row.expected);
        // No step is undone: a new name stays even when the put was refused.
        long nameAfter = row.nameBefore == kAbsent ? 5 : row.nameBefore;
        ASSERT_NE(map.getID(name), nullptr);
        EXPECT_EQ(*map.getID(name), nameAfter);
        std::string* stored = map.get(5);
        EXPECT_EQ(stored ? *stored : "<none>", row.textAfter ? row.textAfter : "<none>");
    }
}

TEST(DualIDMap, CaseInsensitiveVariantsStoreAndFindLowerCase) {
    DualIDMap map;
    std::string success = "Success", upper = "SUCCESS", lower = "success";
    EXPECT_TRUE(map.putX(success, 0, success, false));
    EXPECT_EQ(*map.getIDX(upper), 0);
    EXPECT_EQ(map.getID(success), nullptr);
    EXPECT_EQ(*map.get(lower), "Success");
    EXPECT_EQ(map.get(success), nullptr);
}

TEST(FacilityMap, PutAndLookups) {
    FacilityMap map;
    std::string application = "Application", lower = "application", other = "Other";
    std::string shout = "OTHER", another = "another";
    // A counter is kept as a 32-bit value on every platform: 1 here.
    Facility first{0, static_cast<long>(INT64_C(0x100000001)), "first"}, second{0, 7, "second"};
    EXPECT_EQ(map.get(0), nullptr);
    EXPECT_EQ(map.get(application), nullptr);
    EXPECT_TRUE(map.put(application, 0, first, false));
    EXPECT_FALSE(map.put(lower, 9, second, true));  // present name: always refused
    EXPECT_EQ(map.get(9), nullptr);
    EXPECT_FALSE(map.put(other, 0, second, false));  // a second name of the first record
    ASSERT_NE(map.get(shout), nullptr);
    EXPECT_EQ(map.get(shout)->name + std::to_string(map.get(shout)->msgId), "first1");
    EXPECT_TRUE(map.put(another, 0, second, true));
    map.get(lower)->msgId = 42;  // changes through the pointer reach the map
    EXPECT_EQ(map.get(0)->msgId, 42);
    EXPECT_EQ(map.byId.size(), 1u);
}

}  // namespace
