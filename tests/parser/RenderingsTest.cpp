// Renderings of a table, of the registry and of the module.
#include "ParserTestSupport.h"

namespace {

const char* const SEEDED_TABLE =
    "{\n"
    "Lang-Map: \n"
    "[Forward:->]\n"
    "[Reverse:->]\n"
    "\n"
    "Facility-Map:\n"
    "|facility=0x0 (0);msg-id=0x1 (1);Name=\"\";def-msg-id=0x1 (1)\n"
    "\n"
    "Severity-Map:\n"
    "[Forward:->|key=\"error\"; val=\"0x3 (3)\"|key=\"informational\"; val=\"0x1 (1)\"|"
    "key=\"success\"; val=\"0x0 (0)\"|key=\"warning\"; val=\"0x2 (2)\"]\n"
    "[Reverse:->|key=\"0x0 (0)\"; val=\"Success\"|key=\"0x1 (1)\"; val=\"Informational\"|"
    "key=\"0x2 (2)\"; val=\"Warning\"|key=\"0x3 (3)\"; val=\"Error\"]\n"
    "}\n";

TEST(Renderings, ATableShowsItsThreeMaps) {
    inFreshProcess([] {
        MessageTable* table = loadText("; only a comment\n");
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->toString(), SEEDED_TABLE);
        std::ostringstream out;
        out << *table;
        EXPECT_EQ(out.str(), SEEDED_TABLE);
    });
}

TEST(Renderings, TheModuleShowsTheRegistryThenTheStore) {
    inFreshProcess([] {
        MessageModule module, other;
        EXPECT_EQ(module.toString(), "Message-Tables: \n\nMulti-Lang-Message-Map: (0 entries)\n");
        loadText("; second by load order\n", false, "a.mc");
        loadText(std::string(ENGLISH) + "LanguageNames=(German=0x407:G)\n" +
                     "MessageId=0x1\nSeverity=Error\nSymbolicName=M\nEnglish\n.\n"
                     "Language=German\nDeutsch\n.\n",
                 false, "B.mc");
        std::string a = "tqmsg_" + std::to_string(getpid()) + "_a.mc";
        std::string b = "tqmsg_" + std::to_string(getpid()) + "_B.mc";
        MessageTable* tableA = MessageModule::mtmap.get(a);
        MessageTable* tableB = MessageModule::mtmap.get(b);
        ASSERT_TRUE(tableA != nullptr && tableB != nullptr);
        std::string registry = "TABLE-ID: " + b + "\nTABLE-CONTENTS: \n" + tableB->toString() +
                               "TABLE-ID: " + a + "\nTABLE-CONTENTS: \n" + tableA->toString();
        EXPECT_EQ(MessageModule::mtmap.toString(), registry);
        const std::string expected =
            "Message-Tables: \n" + registry +
            "\nMulti-Lang-Message-Map: (2 entries)\n"
            "{<msgID=0xc0000001 (-1073741823)>; [msgID=\"M\";lang=0x407 (1031);facility=0x0 "
            "(0);severity=0x3 (3);msg=\"Deutsch\"]\n}\n"
            "{<msgID=0xc0000001 (-1073741823)>; [msgID=\"M\";lang=0x409 (1033);facility=0x0 "
            "(0);severity=0x3 (3);msg=\"English\"]\n}\n";
        EXPECT_EQ(module.toString(), expected);
        EXPECT_EQ(other.toString(), expected);
        std::ostringstream out;
        out << std::hex << other;
        EXPECT_NE(out.str().find("(2 entries)"), std::string::npos);
    });
}

}  // namespace
