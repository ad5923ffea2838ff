// The renderings of the maps and records, byte for byte, and toHex on either
// word size. The seeded severity and facility maps are checked, rendered as
// part of a table, by the parser tests.
#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>

#include "MessageModuleMaps.h"

namespace {

// What operator<< writes; toString() must say the same.
template <typename Renderable>
std::string rendered(Renderable& object) {
    std::ostringstream out;
    out << object;
    EXPECT_EQ(object.toString(), out.str());
    return out.str();
}

TEST(ToHex, Extremes) {
    const struct {
        long value;
        const char* expected;
    } cases[] = {{255, "0xff (255)"},
                 {static_cast<long>(0xC0000001u), "0xc0000001 (-1073741823)"},
                 {static_cast<long>(INT64_C(0x80000000)), "0x80000000 (-2147483648)"},
                 {0x7FFFFFFF, "0x7fffffff (2147483647)"},
                 {static_cast<long>(INT64_C(0x1FFFFFFFF)), "0xffffffff (-1)"}};
    for (auto& c : cases) EXPECT_EQ(toHex(c.value), c.expected) << c.value;
}

TEST(Dumps, EmptyMapsAndNameMaps) {
    IDMap ids;
    FacilityMap facilities;
    MultiLangMessageMap store;
    DualIDMap dual;
    EXPECT_EQ(rendered(ids) + rendered(facilities) + rendered(store), "");
    EXPECT_EQ(rendered(dual), "[Forward:->]\n[Reverse:->]\n");
    std::string name = "Warn", text = "Warning", negative = "neg";
    dual.putX(name, 2, text, false);
    dual.reverse.put(-1, negative);  // signed order: negative identifiers first
    EXPECT_EQ(
        rendered(dual),
        "[Forward:->|key=\"warn\"; val=\"0x2 (2)\"]\n"
        "[Reverse:->|key=\"0xffffffff (-1)\"; val=\"neg\"|key=\"0x2 (2)\"; val=\"Warning\"]\n");
}

TEST(Dumps, Facilities) {
    Facility facility{0x1234, 0x10005, "FACILITY_X"};  // 12 facility and 16 code bits count
    const std::string line =
        "|facility=0x1234 (4660);msg-id=0x10005 (65541);Name=\"FACILITY_X\";def-msg-id=0x2340005 "
        "(36962309)";
    EXPECT_EQ(rendered(facility), line);
    FacilityMap map;
    std::string name = "x", alias = "alias";
    map.put(name, 0x1234, facility, false);
    map.put(alias, 0x1234, facility, true);  // a second name: still one line
    EXPECT_EQ(rendered(map), line + "\n");
}

// Texts are written raw; the store is walked in key-text order ("1033.10" first).
TEST(Dumps, MessagesAndStoreInKeyOrder) {
    FormattableMessage message;
    message.text = "Disk \"%1\"\nfull.";
    message.symbolicName = "MSG_DISK_FULL";
    message.languageId = 1033;
    message.facilityId = 7;
    message.severityId = 3;
    const std::string line =
        "[msgID=\"MSG_DISK_FULL\";lang=0x409 (1033);facility=0x7 (7);severity=0x3 "
        "(3);msg=\"Disk \"%1\"\nfull.\"]\n";
    EXPECT_EQ(rendered(message), line);
    MultiLangMessageMap store;
    store.put(1033, 9, message);
    store.put(1033, 10, message);
    EXPECT_EQ(rendered(store),
              "{<msgID=0xa (10)>; " + line + "}\n{<msgID=0x9 (9)>; " + line + "}\n");
}

}  // namespace
