#include "Delivery.h"

#include <syslog.h>
#include <systemd/sd-journal.h>

#include <mutex>

namespace tqmsg_journal {
namespace {

// Points openlog(3) at the identifier of `settings` the first time syslog is
// needed with them. openlog keeps the pointer: settings are never freed.
void useSyslogIdentity(const Settings* settings) {
    static std::mutex opening;
    static const Settings* opened = nullptr;
    if (settings == nullptr) return;
    std::lock_guard<std::mutex> lock(opening);
    if (opened == settings) return;
    openlog(settings->identifier.c_str(), LOG_PID, LOG_USER);
    opened = settings;
}

}  // namespace

void deliver(EntryFields& fields, int priority, const std::string& message,
             const Settings* settings) {
    const std::vector<iovec>& entry = fields.iovecs();
    if (sd_journal_sendv(entry.data(), static_cast<int>(entry.size())) >= 0) return;
    useSyslogIdentity(settings);
    syslog(priority, "%s", message.c_str());
}

}  // namespace tqmsg_journal
