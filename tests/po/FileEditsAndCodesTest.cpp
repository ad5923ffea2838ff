// Line edits keep every untouched byte and end new lines like their
// neighbours; language codes map to Windows identifiers and back.
#include <gtest/gtest.h>

#include <functional>

#include "FileEdits.h"
#include "LanguageCodes.h"

namespace {

const struct {
    const char* what;
    const char* content;
    std::function<void(FileEdits&)> edit;
    const char* expected;
} EDITS[] = {
    {"a range replaced", "a\nb\nc\n",
     [](FileEdits& e) {
         e.replace(2, 2, {"X", "Y"});
     },
     "a\nX\nY\nc\n"},
    {"an empty range inserts before its line", "a\n.\n",
     [](FileEdits& e) { e.replace(2, 1, {"T"}); }, "a\nT\n.\n"},
    {"a range replaced by nothing", "a\nb\nc", [](FileEdits& e) { e.replace(1, 2, {}); }, "c"},
    {"carriage returns kept and copied", "a\r\nb\r\n",
     [](FileEdits& e) { e.insertAfter(1, {"N"}); }, "a\r\nN\r\nb\r\n"},
    {"a last line without line feed gets one", "a\nb",
     [](FileEdits& e) { e.insertAfter(2, {"N"}); }, "a\nb\nN\n"},
    {"insertions at one line keep their order, the top of the file included", "a\n",
     [](FileEdits& e) {
         e.insertAfter(0, {"0"});
         e.insertAfter(1, {"1"});
         e.insertAfter(1, {"2"});
     },
     "0\na\n1\n2\n"},
    {"nothing asked, nothing changed", "x\r\ny", [](FileEdits&) {}, "x\r\ny"},
};

TEST(FileEdits, ChangeOnlyTheLinesAsked) {
    for (const auto& row : EDITS) {
        FileEdits edits(row.content);
        row.edit(edits);
        EXPECT_EQ(edits.result(), row.expected) << row.what;
    }
}

TEST(LanguageCodes, MapCommonCodesBothWays) {
    const struct {
        const char* code;
        long id;
    } rows[] = {{"de", 0x407}, {"de_DE", 0x407}, {"fr", 0x40C},          {"es", 0xC0A},
                {"pt", 0x416}, {"pt-BR", 0x416}, {"pt_PT.UTF-8", 0x816}, {"zh_CN", 0x804},
                {"zh", 0x804}, {"en", 0x409},    {"ja", 0x411},          {"ru", 0x419},
                {"xx", -1},    {"", -1}};
    for (const auto& row : rows) EXPECT_EQ(windowsLanguageId(row.code), row.id) << row.code;
    EXPECT_EQ(poLanguageCode(0x407), "de");
    EXPECT_EQ(poLanguageCode(0x804), "zh_CN");
    EXPECT_EQ(poLanguageCode(0x816), "pt_PT");
    EXPECT_EQ(poLanguageCode(0x1), "");
}

}  // namespace
