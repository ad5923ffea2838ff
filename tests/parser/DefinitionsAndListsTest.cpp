// Top-level dispatch, the three name lists with their map rules, and message
// definitions: identifiers and counters, defaults, continuation blocks, text
// assembly and the end-of-file cases.
#include "ParserTestSupport.h"

namespace {

// "id:name" of the facility a table knows as `name`, or "<none>".
std::string facilityOf(MessageTable* table, std::string name) {
    Facility* facility = table->facilities.get(name);
    return facility == nullptr ? "<none>" : std::to_string(facility->id) + ":" + facility->name;
}

const long GERMAN_ID = 0x407;

TEST(Definitions, CodesComeFromTheFacilityCounters) {
    inFreshProcess([] {
        loadText(ENGLISH +
                 "FacilityNames=(Runtime=2:R\nBig=0x1FFE:B)\n"
                 "MessageId=\nSymbolicName=A\n.\n"
                 "MessageId=\nSymbolicName=B\n.\n"
                 "MessageId=5\nSymbolicName=C\n.\n"
                 "MessageId=\nSymbolicName=D\n.\n"
                 "MessageId=+3\nSymbolicName=E\n.\n"  // counter 7, plus 3
                 "MessageId=+0x10\nSymbolicName=F\n.\n"
                 "MessageId=0x10\nSeverity=Error\nFacility=runtime\nSymbolicName=G\n.\n"
                 // H advances the table's copy of Runtime, I takes the record's counter
                 "MessageId=\nSymbolicName=H\nOutputBase=16\n.\n"
                 "MessageId=\nFacility=Runtime\nSeverity=Warning\nSymbolicName=I\n.\n"
                 // a declared facility counts from 1; only 12 and 16 bits of the parts count
                 "MessageId=\nSeverity=Warning\nFacility=Big\nSymbolicName=K\n.\n"
                 "MessageId=0x12345\nFacility=Big\nSymbolicName=J\n.\n");
        const struct {
            const char* name;
            uint32_t id;
        } expected[] = {{"A", 1},          {"B", 2},          {"C", 5},          {"D", 6},
                        {"E", 10},         {"F", 0x1B},       {"G", 0xC0020010}, {"H", 0xC0020011},
                        {"I", 0x80020011}, {"K", 0x8FFE0001}, {"J", 0x8FFE2345}};
        for (const auto& row : expected) {
            EXPECT_EQ(idOf(row.name), toInt32(static_cast<long>(row.id))) << row.name;
        }
    });
    // A negative step goes back from the counter (6), onto A's pair.
    expectLoadError(ENGLISH + "MessageId=5\nSymbolicName=A\n.\nMessageId=-1\nSymbolicName=B\n.\n",
                    7, "Cannot insert <0x409, B, > tuple into MultiLangMessageMap");
}

TEST(Definitions, HeadersSetTheDefaultsAndContinuationsAddLanguages) {
    inFreshProcess([] {
        MessageTable* table = loadText(
            "LanguageNames=(English=0x409:A)\nLanguageNames=(German=0x407:B)\n"
            "SeverityNames=(Fatal=3:F)\n"
            "MessageId=1\nlanguage=GERMAN\nSeverity=fatal\nSymbolicName=A\nEins\n.\n"
            "MessageId=7\nSeverity=Warning\nSymbolicName=B\nLanguage=English\nSeven\n.\n"
            "\nLanguage=German\n; comment\nSieben\n.\n"
            "MessageId=\nSymbolicName=C\nAcht\n.\n"
            "Language=English\nSymbolicName=C2\nEight\n.\n");  // numbered like C
        EXPECT_EQ(idOf("A"), toInt32(0xC0000001L));            // the names match in any case
        EXPECT_EQ(textOf(GERMAN_ID, idOf("A")), "Eins");
        long b = idOf("B");
        EXPECT_EQ(b, toInt32(0x80000007L));
        EXPECT_EQ(textOf(0x409, b), "Seven");
        EXPECT_EQ(textOf(GERMAN_ID, b), "Sieben");
        ASSERT_NE(recordOf(GERMAN_ID, b), nullptr);
        EXPECT_EQ(recordOf(GERMAN_ID, b)->severityId, 2);
        EXPECT_EQ(recordOf(GERMAN_ID, b)->symbolicName, "B");
        EXPECT_EQ(textOf(GERMAN_ID, toInt32(0x80000008L)), "Acht");  // no step for a continuation
        EXPECT_EQ(idOf("C2"), toInt32(0x80000008L));
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->currentFacility.msgId, 9);
        ASSERT_NE(table->lastMessage, nullptr);
        EXPECT_EQ(table->lastMessage->text, "Eight");
        EXPECT_EQ(table->defaultLanguage, "English");
        EXPECT_EQ(table->lineNumber, 0);
        EXPECT_EQ(table->fileName, "");
    });
}

TEST(Definitions, TextLinesAreTrimmedAndJoined) {
    for (bool trailingOnly : {false, true}) {
        inFreshProcess([&] {
            loadText(ENGLISH +
                         "MessageId=\r\nSymbolicName=A\r\n  first  \r\n; dropped\r\n\r\n"
                         "\tsecond Language=x ; kept\t\r\n  .  \r\n"
                         "MessageId=\nSymbolicName=EMPTY\n.\n",
                     trailingOnly);
            EXPECT_EQ(textOf(0x409, idOf("A")), trailingOnly ? "  first\n\tsecond Language=x ; kept"
                                                             : "first\nsecond Language=x ; kept");
            EXPECT_EQ(textOf(0x409, idOf("EMPTY")), "");
        });
    }
}

TEST(Definitions, TheLastLineMayEndTheFileWithoutALineFeed) {
    inFreshProcess([] {  // a header block: nothing stored, the counter advanced all the same
        MessageTable* table =
            loadText(ENGLISH + "MessageId=4\nSymbolicName=A\n.\nMessageId=\nSymbolicName=B");
        EXPECT_EQ(idOf("B"), -1);
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->currentFacility.msgId, 6);
    });
    inFreshProcess([] {  // a "." line ends the message with its last text line
        loadText(ENGLISH + "MessageId=\nSymbolicName=A\ntext\n .");
        EXPECT_EQ(textOf(0x409, 1), "text");
    });
}

TEST(Dispatch, KeywordsAreFoundAnywhereInTheirFixedOrder) {
    inFreshProcess([] {
        loadText("\xEF\xBB\xBF" + ENGLISH +  // a byte-order mark is text before the keyword
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
            "LanguageNames=(;a comment, not an entry\nGerman=2:G\n)\n"
            "(x) FacilityNames=\n; comment\n\n(Runtime=2:R)\nStorage=3:S\n\n;c\nDisk=0X1F ) tail\n"
            "SeverityNames=(\n\tFatal = 3 : F\n ) ;done\n"
            "SeverityNames=\n(\nGrave=2\n)\n");
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(idIn(table->languages, "ENGLISH"), 1);
        EXPECT_EQ(*table->languages.get(1), "1:MSG1 French=2:MSG2");
        EXPECT_EQ(idIn(table->languages, "german"), 2);
        // Only a "(" after the keyword opens the list; Runtime follows it on its line: ignored.
        EXPECT_EQ(facilityOf(table, "runtime") + " " + facilityOf(table, "STORAGE") + " " +
                      facilityOf(table, "disk"),
                  "<none> 3:S 31:");
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
        EXPECT_EQ(facilityOf(table, "app"), "0:");  // the seeded record, not the new one
    });
    expectLoadError(
        "LanguageNames=(English=1:A)\nLanguageNames=(English=2:B)\n", 2,
        "Cannot insert: 2, <name=\"English\"; value=\"2:B\"> tuple into languagenamesMap");
    expectLoadError(
        "FacilityNames=(Application=0:APP)\n", 1,
        "Cannot insert: 0, <name=\"Application\"; value=\"0:APP\"> tuple into facilitynamesMap");
}

TEST(Lists, LanguagesAreRecordedInDeclarationOrder) {
    const struct {
        const char* content;
        std::vector<long> order;
    } rows[] = {
        {"LanguageNames=(English=0x409:A\nGerman=0x407:B)\n", {0x409, 0x407}},
        {"LanguageNames=(Zulu=9:Z)\n;LanguageNames=(X=1:X)\nLanguageNames=(Neutral=0:N)\n", {9, 0}},
        // an exact repeat and an alias keep the first place of their id
        {"LanguageNames=(B=2:X)\nLanguageNames=(A=1:Y)\nLanguageNames=(B=2:X\nC=2:X)\n", {2, 1}},
        {"SeverityNames=(S=1:S)\n", {}},
    };
    for (const auto& row : rows) {
        inFreshProcess([&] {
            MessageTable* table = loadText(row.content);
            ASSERT_NE(table, nullptr);
            EXPECT_EQ(table->declaredLanguages, row.order) << row.content;
        });
    }
}

}  // namespace
