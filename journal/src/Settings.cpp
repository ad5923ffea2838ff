// tqmsg_journal_open: checks the base of message IDs and publishes the new
// settings for the reports that follow.
#include "Settings.h"

#include <atomic>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <deque>
#include <mutex>
#include <new>

#include "tqmsg-journal.h"

namespace tqmsg_journal {
namespace {

constexpr std::size_t BASE_DIGITS = 32;
constexpr std::size_t PREFIX_DIGITS = 24;  // the other 8 are the message identifier

std::atomic<const Settings*> published{nullptr};

// Every settings record ever published: kept so that a report still reading
// an older one, and openlog(3), never see freed memory.
std::deque<Settings>& allSettings() {
    static std::deque<Settings> settings;
    return settings;
}

// Fails a call of this file's C functions with `reason`; allocates nothing.
int refuse(const char* reason) {
    tqmsg_set_last_error(reason);
    return -1;
}

}  // namespace

bool isMessageIdBase(const char* base) {
    if (base == nullptr || std::strlen(base) != BASE_DIGITS) return false;
    for (std::size_t i = 0; i < BASE_DIGITS; ++i) {
        if (!std::isxdigit(static_cast<unsigned char>(base[i]))) return false;
    }
    return true;
}

void composeMessageId(const char* base, long messageId, char out[33]) {
    static const char digits[] = "0123456789abcdef";
    for (std::size_t i = 0; i < PREFIX_DIGITS; ++i) {
        out[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(base[i])));
    }
    auto bits = static_cast<std::uint32_t>(messageId);
    for (std::size_t i = 0; i < 8; ++i)
        out[PREFIX_DIGITS + i] = digits[(bits >> (28 - 4 * i)) & 0xF];
    out[BASE_DIGITS] = '\0';
}

const Settings* currentSettings() { return published.load(std::memory_order_acquire); }

}  // namespace tqmsg_journal

extern "C" int tqmsg_journal_open(const char* identifier, const char* message_id_base) {
    using namespace tqmsg_journal;
    if (identifier == nullptr || *identifier == '\0') {
        return refuse("tqmsg_journal_open: the identifier is empty");
    }
    if (!isMessageIdBase(message_id_base)) {
        char reason[160];  // the words and at most 64 bytes of the base
        std::snprintf(reason, sizeof reason,
                      "tqmsg_journal_open: the message ID base \"%.64s\" is not 32 hexadecimal "
                      "digits",
                      message_id_base != nullptr ? message_id_base : "(null)");
        return refuse(reason);
    }
    try {
        static std::mutex publishing;
        std::lock_guard<std::mutex> lock(publishing);
        allSettings().push_back(Settings{identifier, message_id_base});
        published.store(&allSettings().back(), std::memory_order_release);
    } catch (const std::bad_alloc&) {
        return refuse("tqmsg_journal_open: out of memory");
    }
    tqmsg_set_last_error("");
    return 0;
}

extern "C" int tqmsg_journal_message_id(char* buf, size_t size, const char* message_id_base,
                                        long message_id) {
    using namespace tqmsg_journal;
    if (size > 0) buf[0] = '\0';
    if (!isMessageIdBase(message_id_base)) {
        return refuse("tqmsg_journal_message_id: the message ID base is not 32 hexadecimal digits");
    }
    if (size < BASE_DIGITS + 1) {
        return refuse("tqmsg_journal_message_id: the buffer holds fewer than 33 bytes");
    }
    composeMessageId(message_id_base, message_id, buf);
    tqmsg_set_last_error("");
    return 0;
}
