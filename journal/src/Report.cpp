// tqmsg_report, tqmsg_vreport and tqmsg_report_strings: format the event,
// build its entry and deliver it, also when the message cannot be formatted.
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <vector>

#include "Delivery.h"
#include "EventFields.h"
#include "tqmsg-journal.h"

namespace tqmsg_journal {
namespace {

// What one thread reuses from report to report, so that a report allocates
// only when its entry is larger than every earlier one.
struct Workspace {
    EntryFields fields;
    std::vector<char> text = std::vector<char>(1024);
    std::string message;
    std::vector<std::uintptr_t> arguments;
};

Workspace& workspace() {
    thread_local Workspace space;
    return space;
}

// Formats with `format(buf, size, on_insert, context)`, one call of the
// tqmsg_format family, into `space.text`, the inserts into `space.fields`; a
// text longer than the buffer is formatted again into one that fits. Returns
// the text's length, or -1.
template <class Format>
long formatEvent(Workspace& space, Format format) {
    std::size_t fieldsBefore = space.fields.count();
    InsertFields inserts{&space.fields, {}};
    long length = format(space.text.data(), space.text.size(), addInsertField, &inserts);
    if (length >= 0 && static_cast<std::size_t>(length) >= space.text.size()) {
        space.fields.truncate(fieldsBefore);
        inserts = InsertFields{&space.fields, {}};
        space.text.resize(static_cast<std::size_t>(length) + 1);
        length = format(space.text.data(), space.text.size(), addInsertField, &inserts);
    }
    return length;
}

// The MESSAGE of an event whose message could not be formatted.
std::string failureMessage(long messageId, long languageId, const std::string& failure) {
    char event[96];  // two 8-digit numbers and the words around them
    std::snprintf(event, sizeof event, "Event 0x%08lX (language 0x%lX) could not be formatted: ",
                  static_cast<unsigned long>(static_cast<std::uint32_t>(messageId)),
                  static_cast<unsigned long>(static_cast<std::uint32_t>(languageId)));
    return event + failure;
}

template <class Format>
int reportEvent(int priority, long messageId, long languageId, Format format) {
    try {
        Workspace& space = workspace();
        const Settings* settings = currentSettings();
        space.fields.clear();
        addEventFields(space.fields, settings, priority, messageId, languageId);
        long length = formatEvent(space, format);
        std::string failure;
        if (length >= 0) {
            space.message.assign(space.text.data(), static_cast<std::size_t>(length));
        } else {
            failure = tqmsg_last_error();
            space.message = failureMessage(messageId, languageId, failure);
            space.fields.add("TQMSG_ERROR", failure);
        }
        space.fields.add("MESSAGE", space.message);
        deliver(space.fields, priority, space.message, settings);
        tqmsg_set_last_error(failure.c_str());
        return length >= 0 ? 0 : -1;
    } catch (const std::bad_alloc&) {
        tqmsg_set_last_error("tqmsg_report: out of memory");
        return -1;
    }
}

}  // namespace
}  // namespace tqmsg_journal

using namespace tqmsg_journal;

extern "C" int tqmsg_vreport(long message_id, long language_id, va_list args) {
    // A second pass, for a text longer than the buffer, needs the arguments
    // again from the start.
    va_list again;
    va_copy(again, args);
    int pass = 0;
    int result =
        reportEvent(severityPriority(message_id), message_id, language_id,
                    [&](char* buf, std::size_t size, tqmsg_insert_fn onInsert, void* context) {
                        return tqmsg_vformat_inserts(buf, size, message_id, language_id, onInsert,
                                                     context, pass++ == 0 ? args : again);
                    });
    va_end(again);
    return result;
}

extern "C" int tqmsg_report(long message_id, long language_id, ...) {
    va_list args;
    va_start(args, language_id);
    int result = tqmsg_vreport(message_id, language_id, args);
    va_end(args);
    return result;
}

extern "C" int tqmsg_report_strings(int priority, long message_id, long language_id,
                                    const char* const* strings, size_t count) {
    if (priority < -1 || priority > 7) {
        tqmsg_set_last_error("tqmsg_report_strings: the priority is not -1 or 0 to 7");
        return -1;
    }
    if (priority == -1) priority = severityPriority(message_id);
    if (strings == nullptr) count = 0;
    return reportEvent(priority, message_id, language_id,
                       [&](char* buf, std::size_t size, tqmsg_insert_fn onInsert, void* context) {
                           std::vector<std::uintptr_t>& arguments = workspace().arguments;
                           arguments.assign(count, 0);
                           for (std::size_t i = 0; i < count; ++i) {
                               arguments[i] = reinterpret_cast<std::uintptr_t>(strings[i]);
                           }
                           return tqmsg_format_array_inserts(buf, size, message_id, language_id,
                                                             arguments.data(), count, onInsert,
                                                             context);
                       });
}
