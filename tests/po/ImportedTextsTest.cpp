// Translations that a message file cannot hold as they are still come back
// from the imported file as texts that format the same; the others come back
// exactly, whether they replace a text or are added.
#include <gtest/gtest.h>

#include <fstream>

#include "FileEdits.h"
#include "FreshProcess.h"
#include "MessageFileTexts.h"
#include "PoImport.h"

namespace {

const std::string SOURCE = "source %1";

const struct {
    const char* what;
    std::string translation;
    bool exact;     // read back as written; otherwise formatted the same
    bool replaces;  // the file has a German text to replace
} ROWS[] = {
    {"plain", "plain %1 text", true, false},
    {"escapes, quotes and tabs", "t\t%1 \"q\" \\ 100%% %n%.", true, true},
    {"two lines", "two\nlines %1", true, false},
    {"no final line break", "ends %1 with %0", true, true},
    {"a leading blank", " leading %1", false, false},
    {"a blank line", "%1\n\nafter", false, true},
    {"a line holding only a period", "%1\n.\nend", false, false},
    {"a line starting like a comment", ";%1 first", false, true},
    {"a header word in the first line", "Language %1 Severity", false, false},
    {"a trailing blank", "%1 trailing ", false, true},
    {"a line longer than the reader's", std::string(5000, 'x') + "%1" + std::string(4000, 'y'),
     false, false},
};

const long GERMAN = 0x407;

// A file with one English message per row; the rows that replace hold German too.
std::string baseFile() {
    std::string content =
        "LanguageNames=(English=0x409:MSG00409)\nLanguageNames=(German=0x407:MSG00407)\n";
    int number = 0;
    for (const auto& row : ROWS) {
        ++number;
        content += "MessageId=" + std::to_string(number) + "\nSymbolicName=T" +
                   std::to_string(number) + "\nLanguage=English\n" + SOURCE + "\n.\n";
        if (row.replaces) content += "Language=German\nalt %1\n.\n";
    }
    return content;
}

// The formatter's reading of `text` with the argument "ARG".
std::string formatted(const std::string& text) {
    char* arguments[] = {const_cast<char*>("ARG")};
    char* buffer = nullptr;
    long flags = _FORMAT_MESSAGE_FROM_STRING | _FORMAT_MESSAGE_ARGUMENT_ARRAY |
                 _FORMAT_MESSAGE_ALLOCATE_BUFFER;
    if (MessageModule::formatMessage(flags, const_cast<char*>(text.c_str()), 0, 0, &buffer, 0,
                                     arguments) < 0) {
        return "<failed>";
    }
    std::string result = buffer;
    delete[] buffer;
    return result;
}

TEST(ImportedTexts, ComeBackExactlyOrFormattedTheSame) {
    TempFile base("base.mc", baseFile()), imported("imported.mc", "");
    inFreshProcess([&] {
        MessageFileTexts file(base.path());
        PoCatalogue catalogue;
        catalogue.header = "Content-Type: text/plain; charset=UTF-8\n";
        for (std::size_t i = 0; i < sizeof(ROWS) / sizeof(ROWS[0]); ++i) {
            PoEntry entry;
            entry.context = "T" + std::to_string(i + 1);
            entry.source = SOURCE;
            entry.translation = ROWS[i].translation;
            catalogue.entries.push_back(entry);
        }
        ImportReport report;
        std::string content = importCatalogue(file, readFileContent(base.path()), catalogue,
                                              {"memory.po", "German", "", ""}, report);
        std::ofstream(imported.path(), std::ios::binary) << content;
        EXPECT_EQ(report.changed, 5);
        EXPECT_EQ(report.added, 6);
    });
    inFreshProcess([&] {
        MessageModule module;
        try {
            MessageModule::loadFile(&module, imported.path(), false);
        } catch (MessageTableParserException& e) {
            FAIL() << e.msg;
        }
        long id = 0;
        for (const auto& row : ROWS) {
            FormattableMessage* record = nullptr;
            MessageModule::mlmap.get(GERMAN, ++id, record);
            ASSERT_NE(record, nullptr) << row.what;
            if (row.exact) {
                EXPECT_EQ(record->text, row.translation) << row.what;
            } else {
                EXPECT_EQ(formatted(record->text), formatted(row.translation)) << row.what;
            }
            MessageModule::mlmap.get(0x409, id, record);
            EXPECT_EQ(record->text, SOURCE) << row.what;
        }
    });
}

}  // namespace
