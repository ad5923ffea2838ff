#include "Delivery.h"

// Entries name the service's event, not this library's source line.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <syslog.h>
#include <systemd/sd-journal.h>
#include <unistd.h>

#include <mutex>

namespace tqmsg_journal {
namespace {

// Where journald listens. libsystemd reports success when this socket is
// missing (it drops the entry silently), so its absence is checked here.
constexpr const char* JOURNAL_SOCKET = "/run/systemd/journal/socket";

bool sentToJournal(EntryFields& fields) {
    if (access(JOURNAL_SOCKET, F_OK) != 0) return false;
    const std::vector<iovec>& entry = fields.iovecs();
    return sd_journal_sendv(entry.data(), static_cast<int>(entry.size())) >= 0;
}

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
    if (sentToJournal(fields)) return;
    useSyslogIdentity(settings);
    syslog(priority, "%s", message.c_str());
}

}  // namespace tqmsg_journal
