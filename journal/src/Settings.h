// The program's journal settings from tqmsg_journal_open: read by every
// report, replaced as a whole by a later open.
#ifndef TQMSG_JOURNAL_SETTINGS_H
#define TQMSG_JOURNAL_SETTINGS_H

#include <string>

namespace tqmsg_journal {

struct Settings {
    std::string identifier;     // SYSLOG_IDENTIFIER and the openlog(3) ident
    std::string messageIdBase;  // 32 hexadecimal digits, as given
};

// Whether `base` is 32 hexadecimal digits, in either case.
bool isMessageIdBase(const char* base);

// Writes the 32 lower-case digits of a MESSAGE_ID and a NUL into `out`: the
// first 24 digits of `base` (lower or upper case) and the identifier's 8.
void composeMessageId(const char* base, long messageId, char out[33]);

// The settings of the last successful tqmsg_journal_open, or null before it.
// Settings are never freed once published, so the pointer (and the text
// openlog(3) keeps) stays valid for the life of the process.
const Settings* currentSettings();

}  // namespace tqmsg_journal

#endif  // TQMSG_JOURNAL_SETTINGS_H
