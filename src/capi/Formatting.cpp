// The exported formatting functions: each gathers its inserts (a variable
// list, a va_list or an array) and formats through the module's expansion.
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <new>

#include "capi/FormattedText.h"
#include "maps/FailureText.h"
#include "module/ArgumentListEnd.h"
#include "module/StoredMessage.h"
#include "tqmsg.h"

namespace {

// The observer that hands each insert to a C caller's callback; a C callback
// has the observer's own signature, so it is called directly.
struct CallbackObserver {
    InsertObserver observer;

    CallbackObserver(tqmsg_insert_fn callback, void* context) {
        observer.inserted = callback;
        observer.context = context;
    }

    // The observer, or null when there is no callback to tell.
    InsertObserver* orNull() { return observer.inserted != nullptr ? &observer : nullptr; }
};

// `list` must stay alive, and unread by anyone else, while the source is used:
// the formatter copies it before each insert.
InsertSource listSource(va_list* list, InsertObserver* observer) {
    InsertSource source;
    source.list = reinterpret_cast<char**>(list);
    source.observer = observer;
    return source;
}

long formatFromList(char* buf, size_t size, long messageId, long languageId, va_list* list,
                    InsertObserver* observer) {
    return formatIntoBuffer(buf, size, [&](ResultText& text) {
        formatStoredMessage(messageId, languageId, listSource(list, observer), text);
    });
}

long formatFromArray(char* buf, size_t size, long messageId, long languageId, const uintptr_t* args,
                     size_t count, InsertObserver* observer) {
    return formatIntoBuffer(buf, size, [&](ResultText& text) {
        ArrayInserts array(args, count);
        formatStoredMessage(messageId, languageId, array.source(observer), text);
    });
}

// The first of `languages` whose text of `messageId` is stored.
long firstLanguageHolding(long messageId, const long* languages, size_t count) {
    if (languages == nullptr && count != 0) {
        throw moduleFailure("The language list is NULL but its count is %zu", count);
    }
    for (size_t i = 0; i < count; ++i) {
        if (findStoredMessage(toInt32(languages[i]), toInt32(messageId)) != nullptr) {
            return languages[i];
        }
    }
    throw moduleFailure("Message with msgId=0x%lx not found in any of %zu languages",
                        asUnsigned32(messageId), count);
}

// A malloc copy of `text`, NUL-terminated.
char* mallocCopy(const ResultText& text) {
    char* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy == nullptr) throw std::bad_alloc();
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

}  // namespace

extern "C" {

long tqmsg_format(char* buf, size_t size, long message_id, long language_id, ...) {
    va_list list;
    va_start(list, language_id);
    ArgumentListEnd end(list);
    return formatFromList(buf, size, message_id, language_id, &list, nullptr);
}

long tqmsg_vformat(char* buf, size_t size, long message_id, long language_id, va_list args) {
    // A va_list parameter may be a pointer in disguise: copy it into a list of
    // our own, whose address the formatter can take.
    va_list list;
    va_copy(list, args);
    ArgumentListEnd end(list);
    return formatFromList(buf, size, message_id, language_id, &list, nullptr);
}

long tqmsg_format_array(char* buf, size_t size, long message_id, long language_id,
                        const uintptr_t* args, size_t count) {
    return formatFromArray(buf, size, message_id, language_id, args, count, nullptr);
}

long tqmsg_vformat_inserts(char* buf, size_t size, long message_id, long language_id,
                           tqmsg_insert_fn on_insert, void* context, va_list args) {
    va_list list;
    va_copy(list, args);
    ArgumentListEnd end(list);
    CallbackObserver observer(on_insert, context);
    return formatFromList(buf, size, message_id, language_id, &list, observer.orNull());
}

long tqmsg_format_array_inserts(char* buf, size_t size, long message_id, long language_id,
                                const uintptr_t* args, size_t count, tqmsg_insert_fn on_insert,
                                void* context) {
    CallbackObserver observer(on_insert, context);
    return formatFromArray(buf, size, message_id, language_id, args, count, observer.orNull());
}

char* tqmsg_format_alloc(long message_id, long language_id, ...) {
    va_list list;
    va_start(list, language_id);
    ArgumentListEnd end(list);
    return atCBoundary<char*>(nullptr, [&] {
        ResultText text;
        formatStoredMessage(message_id, language_id, listSource(&list, nullptr), text);
        return mallocCopy(text);
    });
}

long tqmsg_format_first(char* buf, size_t size, long message_id, const long* languages,
                        size_t count, ...) {
    va_list list;
    va_start(list, count);
    ArgumentListEnd end(list);
    return formatIntoBuffer(buf, size, [&](ResultText& text) {
        long language = firstLanguageHolding(message_id, languages, count);
        formatStoredMessage(message_id, language, listSource(&list, nullptr), text);
    });
}

const char* tqmsg_symbolic_name(long message_id, long language_id) {
    return atCBoundary<const char*>(nullptr, [&] {
        return storedMessage(toInt32(language_id), toInt32(message_id)).symbolicName.c_str();
    });
}

}  // extern "C"
