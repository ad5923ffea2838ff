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
    const struct {
        Facility facility;
        const char* expected;
    } cases[] = {{{0x100, 5, "FACILITY_X"},
                  "|facility=0x100 (256);msg-id=0x5 (5);Name=\"FACILITY_X\";def-msg-id=0x1000005 "
                  "(16777221)"},
                 {{0x1234, 0x10005, ""},  // only 12 facility and 16 code bits enter def-msg-id
                  "|facility=0x1234 (4660);msg-id=0x10005 (65541);Name=\"\";def-msg-id=0x2340005 "
                  "(36962309)"}};
    FacilityMap map;
    std::string expectedMap;
    for (auto& c : cases) {
        Facility facility = c.facility;
        EXPECT_EQ(rendered(facility), c.expected);
        std::string name = facility.name + std::to_string(facility.id);
        map.put(name, facility.id, facility, false);
        expectedMap += std::string(c.expected) + "\n";  // ids were given in ascending order
    }
    std::string alias = "alias";
    map.put(alias, 0x100, map.byId[0x100], true);  // a second name: still one line
    EXPECT_EQ(rendered(map), expectedMap);
}

TEST(Dumps, MessagesAndStoreInKeyOrder) {
    FormattableMessage message;
    message.text = "Disk %1 is full.";
    message.symbolicName = "MSG_DISK_FULL";
    message.languageId = 1033;
    message.facilityId = 7;
    message.severityId = 3;
    const std::string line =
        "[msgID=\"MSG_DISK_FULL\";lang=0x409 (1033);facility=0x7 (7);severity=0x3 "
        "(3);msg=\"Disk %1 is full.\"]\n";
    EXPECT_EQ(rendered(message), line);

    MultiLangMessageMap store;
    store.put(1033, static_cast<long>(0xC0070001u), message);
    FormattableMessage raw = message;
    raw.text = "a \"quoted\"\nline";
    store.put(1033, 9, raw);
    store.put(1033, 10, raw);
    const std::string rawLine =
        "[msgID=\"MSG_DISK_FULL\";lang=0x409 (1033);facility=0x7 (7);severity=0x3 "
        "(3);msg=\"a \"quoted\"\nline\"]\n";
    EXPECT_EQ(rendered(store), "{<msgID=0xc0070001 (-1073283071)>; " + line + "}\n" +
                                   "{<msgID=0xa (10)>; " + rawLine + "}\n" + "{<msgID=0x9 (9)>; " +
                                   rawLine + "}\n");
}

}  // namespace
