// What an event's entry says about the event itself: its priority, its
// message ID and the identifier fields that catalogues and queries use.
#ifndef TQMSG_JOURNAL_EVENT_FIELDS_H
#define TQMSG_JOURNAL_EVENT_FIELDS_H

#include "EntryFields.h"
#include "Settings.h"

namespace tqmsg_journal {

// The syslog priority of an identifier's severity bits (31-30): Error
// LOG_ERR, Warning LOG_WARNING, Informational and Success LOG_INFO.
int severityPriority(long messageId);

// Adds PRIORITY, MESSAGE_ID and SYSLOG_IDENTIFIER (when `settings` is not
// null), TQMSG_ID, TQMSG_SYMBOL (when the store has a name for the message)
// and TQMSG_LANGUAGE.
void addEventFields(EntryFields& fields, const Settings* settings, int priority, long messageId,
                    long languageId);

// Adds TQMSG_INSERT_N for the first occurrence of each insert number; meant
// as the tqmsg_insert_fn of the format calls, with an InsertFields context.
struct InsertFields {
    EntryFields* fields;
    unsigned char seen[200];  // by insert number, 1 to 199
};
void addInsertField(void* insertFields, int number, const char* text, std::size_t length);

}  // namespace tqmsg_journal

#endif  // TQMSG_JOURNAL_EVENT_FIELDS_H
