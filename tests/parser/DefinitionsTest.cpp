// Message definitions: identifiers and counters, defaults, continuation
// blocks, text assembly and the end-of-file cases.
#include "ParserTestSupport.h"

namespace {

const long ENGLISH_ID = 0x409, GERMAN_ID = 0x407;

std::string textOf(long languageId, long messageId) {
    FormattableMessage* record = recordOf(languageId, messageId);
    return record == nullptr ? "<none>" : record->text;
}

TEST(Definitions, CodesComeFromTheFacilityCounters) {
    inFreshProcess([] {
        loadText(std::string(ENGLISH) +
                 "FacilityNames=(Runtime=2:R\nBig=0x1FFF:B)\n"
                 "MessageId=\nSymbolicName=A\n.\n"
                 "MessageId=\nSymbolicName=B\n.\n"
                 "MessageId=5\nSymbolicName=C\n.\n"
                 "MessageId=\nSymbolicName=D\n.\n"
                 "MessageId=+3\nSymbolicName=E\n.\n"  // counter 7, plus 3
                 "MessageId=+0x10\nSymbolicName=F\n.\n"
                 "MessageId=0x10\nSeverity=Error\nFacility=runtime\nSymbolicName=G\n.\n"
                 // H advances the table's copy of Runtime, I takes the record's counter
                 "MessageId=\nSymbolicName=H\n.\n"
                 "MessageId=\nFacility=Runtime\nSeverity=Warning\nSymbolicName=I\n.\n"
                 "MessageId=0x12345\nSeverity=Warning\nFacility=Big\nSymbolicName=J\n.\n");
        const struct {
            const char* name;
            uint32_t id;
        } expected[] = {{"A", 1},          {"B", 2},         {"C", 5},          {"D", 6},
                        {"E", 10},         {"F", 0x1B},      {"G", 0xC0020010}, {"H", 0xC0020011},
                        {"I", 0x80020011}, {"J", 0x8FFF2345}};
        for (const auto& row : expected) {
            EXPECT_EQ(idOf(row.name), toInt32(static_cast<long>(row.id))) << row.name;
        }
    });
}

TEST(Definitions, HeadersSetTheDefaultsOfLaterDefinitions) {
    inFreshProcess([] {
        loadText(
            "LanguageNames=(English=0x409:A)\nLanguageNames=(German=0x407:B)\n"
            "SeverityNames=(Fatal=3:F)\n"
            "MessageId=1\nlanguage=GERMAN\nSeverity=fatal\nSymbolicName=A\nEins\n.\n"
            "MessageId=2\nSymbolicName=B\nZwei\n.\n");
        long b = idOf("B");
        EXPECT_EQ(b, toInt32(0xC0000002L));
        ASSERT_NE(recordOf(GERMAN_ID, b), nullptr);
        EXPECT_EQ(recordOf(GERMAN_ID, b)->severityId, 3);
        EXPECT_EQ(recordOf(GERMAN_ID, b)->symbolicName, "B");
    });
}

TEST(Definitions, ContinuationBlocksAddLanguagesToTheLastMessage) {
    inFreshProcess([] {
        MessageTable* table = loadText(
            "LanguageNames=(English=0x409:A)\nLanguageNames=(German=0x407:B)\n"
            "MessageId=7\nSeverity=Warning\nSymbolicName=A\nLanguage=English\nSeven\n.\n"
            "\nLanguage=German\n; comment\nSieben\n.\n");
        long a = idOf("A");
        EXPECT_EQ(a, toInt32(0x80000007L));
        EXPECT_EQ(textOf(ENGLISH_ID, a), "Seven");
        EXPECT_EQ(textOf(GERMAN_ID, a), "Sieben");
        ASSERT_NE(recordOf(GERMAN_ID, a), nullptr);
        EXPECT_EQ(recordOf(GERMAN_ID, a)->severityId, 2);
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->currentFacility.msgId, 8);  // a continuation does not advance it
        ASSERT_NE(table->lastMessage, nullptr);
        EXPECT_EQ(table->lastMessage->text, "Sieben");
        EXPECT_EQ(table->defaultLanguage, "German");
        EXPECT_EQ(table->lineNumber, 0);
        EXPECT_EQ(table->fileName, "");
    });
}

TEST(Definitions, TextLinesAreTrimmedAndJoined) {
    for (bool trailingOnly : {false, true}) {
        inFreshProcess([&] {
            loadText(std::string(ENGLISH) +
                         "MessageId=\nSymbolicName=A\n  first  \r\n; dropped\n\n"
                         "\tsecond Language=x ; kept\t\n  .  \n"
                         "MessageId=\nSymbolicName=EMPTY\n.\n",
                     trailingOnly);
            EXPECT_EQ(textOf(ENGLISH_ID, idOf("A")), trailingOnly
                                                         ? "  first\n\tsecond Language=x ; kept"
                                                         : "first\nsecond Language=x ; kept");
            EXPECT_EQ(textOf(ENGLISH_ID, idOf("EMPTY")), "");
        });
    }
}

TEST(Definitions, AHeaderBlockEndingTheFileStoresNothing) {
    inFreshProcess([] {
        MessageTable* table = loadText(
            std::string(ENGLISH) + "MessageId=4\nSymbolicName=A\n.\nMessageId=\nSymbolicName=B");
        EXPECT_EQ(idOf("B"), -1);
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(table->currentFacility.msgId, 6);  // the counter advanced all the same
    });
    inFreshProcess([] {  // the last text line ends the file together with its "." line
        loadText(std::string(ENGLISH) + "MessageId=\nSymbolicName=A\ntext\n .");
        EXPECT_EQ(textOf(ENGLISH_ID, 1), "text");
    });
}

TEST(Definitions, SymbolicNamesStayBoundToTheirFirstIdentifier) {
    const std::string twice = std::string(ENGLISH) +
                              "MessageId=1\nSymbolicName=A\none\n.\n"
                              "MessageId=2\nSymbolicName=A\ntwo\n.\n";
    expectLoadError(twice, 9, "Cannot insert <0x409, A, two> tuple into MultiLangMessageMap");
    expectLoadError(std::string(ENGLISH) + "MessageId=5\nSymbolicName=A\n.\n" +
                        "MessageId=-1\nSymbolicName=B\n.\n",
                    7, "Cannot insert <0x409, B, > tuple into MultiLangMessageMap");
}

}  // namespace
