// Sends a finished entry: to the journal, or to syslog(3) when there is no
// journal to take it.
#ifndef TQMSG_JOURNAL_DELIVERY_H
#define TQMSG_JOURNAL_DELIVERY_H

#include <string>

#include "EntryFields.h"
#include "Settings.h"

namespace tqmsg_journal {

// Sends `fields` with sd_journal_sendv; when that fails (no journal socket,
// no journald behind it) logs `message` with syslog(3) at `priority` under
// the identifier of `settings` instead, so that the event is never lost.
void deliver(EntryFields& fields, int priority, const std::string& message,
             const Settings* settings);

}  // namespace tqmsg_journal

#endif  // TQMSG_JOURNAL_DELIVERY_H
