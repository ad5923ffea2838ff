// IDMap, IDReverseMap, DualIDMap and FacilityMap: results and stored entries.
#include <gtest/gtest.h>

#include <string>

#include "MessageModuleMaps.h"

namespace {

TEST(IDMap, KeepsFirstIdAndOwnsItsKeyCopies) {
    IDMap map;
    std::string name = "Error";
    EXPECT_TRUE(map.put(name, 3));
    name[0] = 'X';  // the map must not refer to the caller's string
    std::string original = "Error", lower = "error";
    ASSERT_NE(map.get(original), nullptr);
    EXPECT_EQ(*map.get(original), 3);
    EXPECT_EQ(map.get(name), nullptr);
    EXPECT_FALSE(map.put(original, 4));
    EXPECT_EQ(*map.get(original), 3);
    EXPECT_TRUE(map.put(lower, 4));  // names differing in case are two entries
    EXPECT_EQ(map.entries.size(), 2u);
}

TEST(IDReverseMap, KeepsFirstText) {
    IDReverseMap map;
    std::string first = "One", second = "Uno";
    EXPECT_EQ(map.get(1), nullptr);
    EXPECT_TRUE(map.put(1, first));
    EXPECT_FALSE(map.put(1, second));
    EXPECT_EQ(*map.get(1), "One");
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
        if (row.textBefore != nullptr) {
            std::string before = row.textBefore;
            map.reverse.put(5, before);
        }
        map.allowDuplicates = row.allowDuplicates;
        EXPECT_EQ(map.put(name, 5, text, row.ignoreConflicts), row.expected);
        // No step is undone: a new name stays even when the put was refused.
        long nameAfter = row.nameBefore == kAbsent ? 5 : row.nameBefore;
        ASSERT_NE(map.getID(name), nullptr);
        EXPECT_EQ(*map.getID(name), nameAfter);
        std::string* stored = map.get(5);
        if (row.textAfter == nullptr) {
            EXPECT_EQ(stored, nullptr);
        } else {
            ASSERT_NE(stored, nullptr);
            EXPECT_EQ(*stored, row.textAfter);
        }
    }
}

TEST(DualIDMap, CaseInsensitiveVariants) {
    DualIDMap map;
    map.allowDuplicates = true;
    std::string success = "Success", warning = "Warning", warn = "Warn";
    EXPECT_TRUE(map.putX(success, 0, success, false));
    std::string upper = "SUCCESS", lower = "success";
    EXPECT_EQ(*map.getIDX(upper), 0);
    EXPECT_EQ(*map.getID(lower), 0);
    EXPECT_EQ(map.getID(success), nullptr);
    EXPECT_EQ(*map.get(lower), "Success");
    EXPECT_EQ(map.get(success), nullptr);

    EXPECT_TRUE(map.putX(warning, 2, warning, false));
    EXPECT_FALSE(map.putX(warn, 2, warn, false));  // refused, but the alias stays
    std::string shout = "WARN";
    EXPECT_EQ(*map.getIDX(shout), 2);
    EXPECT_TRUE(map.putX(warn, 2, warn, true));
    EXPECT_EQ(*map.get(2), "Warning");
}

TEST(FacilityMap, PutAndLookups) {
    FacilityMap map;
    std::string application = "Application", lower = "application", other = "Other";
    Facility first{0, 1, "first"}, second{0, 7, "second"};
    EXPECT_EQ(map.get(0), nullptr);
    EXPECT_EQ(map.get(application), nullptr);
    EXPECT_TRUE(map.put(application, 0, first, false));
    EXPECT_FALSE(map.put(application, 9, second, true));  // present name: always refused
    EXPECT_FALSE(map.put(lower, 9, second, true));
    EXPECT_EQ(map.get(9), nullptr);

    EXPECT_FALSE(map.put(other, 0, second, false));  // a second name of the first record
    std::string shout = "OTHER";
    ASSERT_NE(map.get(shout), nullptr);
    EXPECT_EQ(map.get(shout)->name, "first");
    std::string another = "another";
    EXPECT_TRUE(map.put(another, 0, second, true));

    map.get(lower)->msgId = 42;  // changes through the pointer reach the map
    EXPECT_EQ(map.get(0)->msgId, 42);
    EXPECT_EQ(map.byId.size(), 1u);
}

}  // namespace
