// The parts of libtqmsg-journal that need no journal: the settings of
// tqmsg_journal_open and the fields an event's entry is made of.
#include <gtest/gtest.h>
#include <syslog.h>

#include <cstdint>
#include <map>
#include <string>

#include "EventFields.h"
#include "tqmsg-journal.h"

namespace tqmsg_journal {
namespace {

// The fields of an entry as name -> value; a name given twice fails.
std::map<std::string, std::string> fieldMap(EntryFields& fields) {
    std::map<std::string, std::string> found;
    for (const iovec& field : fields.iovecs()) {
        std::string text(static_cast<const char*>(field.iov_base), field.iov_len);
        std::size_t equals = text.find('=');
        EXPECT_TRUE(found.emplace(text.substr(0, equals), text.substr(equals + 1)).second)
            << "field given twice: " << text;
    }
    return found;
}

TEST(JournalOpen, RefusesMalformedBasesAndKeepsTheEarlierSettings) {
    ASSERT_EQ(tqmsg_journal_open("svc", "0123456789abcdef0123456789ABCDEF"), 0);
    EXPECT_STREQ(tqmsg_last_error(), "");
    const Settings* earlier = currentSettings();
    const char* const malformed[] = {nullptr,
                                     "",
                                     "0123456789abcdef0123456789abcde",
                                     "0123456789abcdef0123456789abcdef0",
                                     "0123456789abcdef0123456789abcdeg",
                                     "0123456789abcdef-123456789abcdef",
                                     "{0123456789abcdef0123456789abcde}"};
    for (const char* base : malformed) {
        SCOPED_TRACE(base ? base : "(null)");
        EXPECT_EQ(tqmsg_journal_open("other", base), -1);
        EXPECT_NE(std::string(tqmsg_last_error()).find("not 32 hexadecimal digits"),
                  std::string::npos);
        EXPECT_EQ(currentSettings(), earlier);
    }
    EXPECT_EQ(tqmsg_journal_open("", "0123456789abcdef0123456789abcdef"), -1);
    EXPECT_EQ(tqmsg_journal_open(nullptr, "0123456789abcdef0123456789abcdef"), -1);
    EXPECT_EQ(currentSettings(), earlier);
    EXPECT_EQ(earlier->identifier, "svc");
}

TEST(EventFields, PriorityAndIdentifiersFollowTheIdentifier) {
    ASSERT_EQ(tqmsg_journal_open("svc", "0123456789ABCDEF0123456789abcdef"), 0);
    struct Row {
        long long messageId;  // as written; taken as its 32-bit signed value
        long languageId;
        int priority;
        const char *messageIdField, *idField, *languageField;
    } rows[] = {
        {0xC1010010L, 0x409, LOG_ERR, "0123456789abcdef01234567c1010010", "0xC1010010", "0x409"},
        {-1056899056L, 0x407, LOG_ERR, "0123456789abcdef01234567c1010010", "0xC1010010", "0x407"},
        {0x81010011L, 0xC07, LOG_WARNING, "0123456789abcdef0123456781010011", "0x81010011",
         "0xC07"},
        {0x41010001L, 0x413, LOG_INFO, "0123456789abcdef0123456741010001", "0x41010001", "0x413"},
        {0x00000012L, 0x416, LOG_INFO, "0123456789abcdef0123456700000012", "0x00000012", "0x416"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.idField);
        long messageId = static_cast<std::int32_t>(row.messageId);
        EXPECT_EQ(severityPriority(messageId), row.priority);
        EntryFields fields;
        addEventFields(fields, currentSettings(), severityPriority(messageId), messageId,
                       row.languageId);
        auto found = fieldMap(fields);
        EXPECT_EQ(found["PRIORITY"], std::to_string(row.priority));
        EXPECT_EQ(found["MESSAGE_ID"], row.messageIdField);
        EXPECT_EQ(found["TQMSG_ID"], row.idField);
        EXPECT_EQ(found["TQMSG_LANGUAGE"], row.languageField);
        EXPECT_EQ(found["SYSLOG_IDENTIFIER"], "svc");
        EXPECT_EQ(found.count("TQMSG_SYMBOL"), 0u) << "no file is loaded";
    }
}

TEST(EventFields, EachInsertIsOneFieldWhateverTimesTheTextUsesIt) {
    EntryFields fields;
    fields.add("MESSAGE", std::string("two\nlines"));
    InsertFields inserts{&fields, {}};
    addInsertField(&inserts, 2, "/srv", 4);
    addInsertField(&inserts, 1, "a=b", 3);
    addInsertField(&inserts, 2, "/srv", 4);
    addInsertField(&inserts, 199, "", 0);
    auto found = fieldMap(fields);
    EXPECT_EQ(found.size(), 4u);
    EXPECT_EQ(found["MESSAGE"], "two\nlines");
    EXPECT_EQ(found["TQMSG_INSERT_1"], "a=b");
    EXPECT_EQ(found["TQMSG_INSERT_2"], "/srv");
    EXPECT_EQ(found["TQMSG_INSERT_199"], "");
    fields.truncate(1);
    EXPECT_EQ(fieldMap(fields).size(), 1u);
}

}  // namespace
}  // namespace tqmsg_journal
