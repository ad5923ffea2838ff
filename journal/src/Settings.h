// The program's journal settings from tqmsg_journal_open: read by every
// report, replaced as a whole by a later open.
#ifndef TQMSG_JOURNAL_SETTINGS_H
#define TQMSG_JOURNAL_SETTINGS_H

#include <string>

namespace tqmsg_journal {

struct Settings {
    std::string identifier;       // SYSLOG_IDENTIFIER and the openlog(3) ident
    std::string messageIdPrefix;  // the base's first 24 hex digits, lower case
};

// The settings of the last successful tqmsg_journal_open, or null before it.
// Settings are never freed once published, so the pointer (and the text
// openlog(3) keeps) stays valid for the life of the process.
const Settings* currentSettings();

}  // namespace tqmsg_journal

#endif  // TQMSG_JOURNAL_SETTINGS_H
