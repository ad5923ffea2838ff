#include "Delivery.h"

// Entries name the service's event, not this library's source line.
#define SD_JOURNAL_SUPPRESS_LOCATION
#include <syslog.h>
#include <systemd/sd-journal.h>
#include <unistd.h>

#include <atomic>
#include <ctime>
#include <mutex>

namespace tqmsg_journal {
namespace {

// Where journald listens. libsystemd reports success when this socket is
// missing (it drops the entry silently, errno restored), so its presence is
// checked here: at most once a second, since a look at the file system costs
// as much as a third of a send, and the socket comes and goes with the
// system's journal, not from one event to the next.
constexpr const char* JOURNAL_SOCKET = "/run/systemd/journal/socket";

bool journalSocketExists() {
    static std::atomic<long> checkedInSecond{-1};
    static std::atomic<bool> exists{false};
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    if (checkedInSecond.load(std::memory_order_acquire) != now.tv_sec) {
        exists.store(access(JOURNAL_SOCKET, F_OK) == 0, std::memory_order_relaxed);
        checkedInSecond.store(now.tv_sec, std::memory_order_release);
    }
    return exists.load(std::memory_order_relaxed);
}

bool sentToJournal(EntryFields& fields) {
    if (!journalSocketExists()) return false;
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
