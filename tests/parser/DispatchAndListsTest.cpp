// Top-level dispatch and the three name lists, with their map rules.
#include "ParserTestSupport.h"

namespace {

TEST(Dispatch, KeywordsAreFoundAnywhereInTheirFixedOrder) {
    inFreshProcess([] {
        loadText(ENGLISH +
                 "  xMessageIdTypedef=anything ( ) Language\n"  // "messageidtypedef" wins: ignored
                 // "language" is tried before "messageid"; with no message stored yet it
                 // opens a definition whose own value is not used.
                 "MessageId=9 Language=English\nSymbolicName=A\none\n.\n"
                 "junk MESSAGEID=0x10\nSymbolicName=B\nsixteen\n.\n"
                 "MessageIdX=7\nSymbolicName=C\nseventeen\n.\n");
        EXPECT_EQ(idOf("A"), 1);
        EXPECT_EQ(idOf("B"), 16);
        EXPECT_EQ(idOf("C"), 17);  // a pair not named exactly "messageid" is ignored
    });
}

TEST(Lists, OneEntryPerLineBetweenTheParentheses) {
    inFreshProcess([] {
        MessageTable* table = loadText(
            "LanguageNames=(English=1:MSG1 French=2:MSG2)\n"
            "FacilityNames=\n; comment\n\n(Runtime=2:R)\nStorage=3:S\n\n;c\nDisk=0X1F ) tail\n"
            "SeverityNames=(\n\tFatal = 3 : F\n ) ;done\n"
            "SeverityNames=\n(\nGrave=2\n)\n");
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(idIn(table->languages, "ENGLISH"), 1);
        EXPECT_EQ(*table->languages.get(1), "1:MSG1 French=2:MSG2");
        EXPECT_EQ(idIn(table->languages, "french"), -1);
        std::string runtime = "runtime", storage = "STORAGE", disk = "disk";
        EXPECT_EQ(table->facilities.get(runtime), nullptr);  // after "(" on its line: ignored
        ASSERT_NE(table->facilities.get(storage), nullptr);
        EXPECT_EQ(table->facilities.get(storage)->name, "S");
        ASSERT_NE(table->facilities.get(disk), nullptr);
        EXPECT_EQ(table->facilities.get(disk)->id, 31);
        EXPECT_EQ(table->facilities.get(disk)->name, "");
        EXPECT_EQ(idIn(table->severities, "fatal"), 3);
        EXPECT_EQ(idIn(table->severities, "grave"), 2);
        EXPECT_EQ(*table->severities.get(3), "Error");  // the seeded text stays
    });
}

TEST(Lists, MapsAcceptRepeatsAndAliasesButRefuseConflicts) {
    inFreshProcess([] {
        MessageTable* table = loadText(
            "LanguageNames=(English=1:A)\nLanguageNames=(English=1:A)\n"  // exact repeat
            "LanguageNames=(Anglais=1:A)\n"                               // alias, same text
            "SeverityNames=(Error=0x2:E)\n"  // known name keeps its number
            "FacilityNames=(App=0:APP)\n");  // second name of Application
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(idIn(table->languages, "anglais"), 1);
        EXPECT_EQ(idIn(table->severities, "error"), 3);
        std::string app = "app";
        ASSERT_NE(table->facilities.get(app), nullptr);
        EXPECT_EQ(table->facilities.get(app)->name, "");  // the seeded record, not the new one
    });
    expectLoadError(
        "LanguageNames=(English=1:A)\nLanguageNames=(English=2:B)\n", 2,
        "Cannot insert: 2, <name=\"English\"; value=\"2:B\"> tuple into languagenamesMap");
    expectLoadError(
        "FacilityNames=(Application=0:APP)\n", 1,
        "Cannot insert: 0, <name=\"Application\"; value=\"0:APP\"> tuple into facilitynamesMap");
}

}  // namespace
