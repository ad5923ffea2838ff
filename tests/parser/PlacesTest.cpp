// Where each stored text and each name list stands in its file, as the parser
// records it for tools that rewrite single texts.
#include "ParserTestSupport.h"

namespace {

// "language/identifier header first-last end" of every text place.
std::string textPlacesOf(MessageTable* table) {
    std::string rendered;
    for (auto& place : table->textPlaces) {
        rendered += std::to_string(place.languageId) + "/" + std::to_string(place.messageId) + " " +
                    std::to_string(place.headerLine) + " " + std::to_string(place.firstTextLine) +
                    "-" + std::to_string(place.lastTextLine) + " " + std::to_string(place.endLine) +
                    ";";
    }
    return rendered;
}

// "list first-last numbers..." of every list place.
std::string listPlacesOf(MessageTable* table) {
    std::string rendered;
    for (auto& place : table->listPlaces) {
        rendered += std::string(place.listName) + " " + std::to_string(place.firstLine) + "-" +
                    std::to_string(place.lastLine);
        for (long number : place.numbers) rendered += " " + std::to_string(number);
        rendered += ";";
    }
    return rendered;
}

const struct {
    const char* what;
    const char* content;
    const char* texts;
    const char* lists;
} CASES[] = {
    {"comments and blank lines inside a text are not its first or last line",
     "LanguageNames=(English=1:A)\n"
     "MessageId=3\nSymbolicName=A\n; note\nfirst\n\n; c\nlast\n; after\n.\n",
     "1/3 2 5-8 10;", "languagenames 1-1 1;"},
    {"a continuation starts at its Language line; an empty text ends before its end",
     "LanguageNames=(E=1:A)\nLanguageNames=(\n  G=2:B\n; c\n  F=3:C\n)\n"
     "MessageId=\nLanguage=G\nSymbolicName=A\n.\n\nLanguage=F\nText\n  .  \n",
     "2/1 7 10-9 10;3/1 12 13-13 14;", "languagenames 1-1 1;languagenames 2-6 2 3;"},
    {"a list opened on a later line, the last entry before its ')' and a text at the end",
     "SeverityNames=\n(ignored\nFatal=3:F\n  Bad=2:B ) x\nLanguageNames=(E=7:X\n)\n"
     "MessageId=0x10\nSeverity=Fatal\nSymbolicName=A\nLanguage=E\na\n.",
     "7/-1073741808 7 11-11 12;", "severitynames 1-4 3 2;languagenames 5-6 7;"},
};

TEST(Places, TextsAndListsAreFoundWhereTheyStand) {
    for (const auto& row : CASES) {
        inFreshProcess([&] {
            MessageTable* table = loadText(row.content);
            ASSERT_NE(table, nullptr) << row.what;
            EXPECT_EQ(textPlacesOf(table), row.texts) << row.what;
            EXPECT_EQ(listPlacesOf(table), row.lists) << row.what;
        });
    }
}

}  // namespace
