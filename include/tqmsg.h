/* tqmsg: the C interface to the message catalogue.
 *
 * A C program loads its message files with tqmsg_load() and formats their
 * messages with the tqmsg_format family. Every text lives in the same
 * process-wide store as the C++ interface's (MessageModule.h), and the texts
 * are formatted by the same code, so both interfaces give the same bytes.
 *
 * Conventions of every function here:
 *  1. Failures are return values: -1 (or NULL), with a text for people in
 *     tqmsg_last_error(). Nothing is ever written to standard output or
 *     standard error, nothing aborts the program and no C++ exception leaves
 *     a function of this header.
 *  2. Formatting follows snprintf: at most size - 1 bytes and a NUL are
 *     written, never a byte past `size`; `buf` may be NULL when `size` is 0;
 *     the result is the length of the whole formatted text (without its NUL),
 *     so a caller whose buffer was too small can retry with a larger one.
 *     After a failure buf[0] is '\0' when size > 0.
 *  3. Message and language identifiers are taken as 32-bit signed values on
 *     every architecture: 0xC1010010 and -1056899056L name the same message.
 *  4. There is no fallback between languages: a message is formatted in the
 *     language asked for, or the call fails. tqmsg_format_first() makes a
 *     program's choice of languages explicit.
 *
 * Threads: loading must not overlap any other call. Formatting may run in
 * many threads at once; each thread has its own last-error text.
 */
#ifndef TQMSG_H
#define TQMSG_H

#include <stdarg.h>
#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define TQMSG_C_API __attribute__((visibility("default")))
#else
#define TQMSG_C_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Loads the message file `path` into the process-wide store. A file loads
 * once per process: loading it again fails. Messages stored before a failure
 * in the file stay in the store. Returns 0, or -1 with tqmsg_last_error()
 * naming the file (and the line, for an error in its text). */
TQMSG_C_API int tqmsg_load(const char* path);

/* The text of the calling thread's last failure, "" when its last call
 * succeeded or it has made none. Valid until the thread's next call of a
 * function of this header. */
TQMSG_C_API const char* tqmsg_last_error(void);

/* Formats message `message_id` of language `language_id` into `buf`, its
 * inserts %1, %2, ... taken in order from the arguments after `language_id`
 * with the types their formats name (a text by default). Returns the length
 * of the whole text, or -1. */
TQMSG_C_API long tqmsg_format(char* buf, size_t size, long message_id, long language_id, ...);

/* tqmsg_format with the inserts in `args`; `args` is left as va_arg would
 * leave it after an unknown number of reads: va_end it, do not reuse it. */
TQMSG_C_API long tqmsg_vformat(char* buf, size_t size, long message_id, long language_id,
                               va_list args);

/* tqmsg_format with insert N taken from args[N - 1], an array of
 * pointer-sized values: a text as (uintptr_t)"disk", a number as 42. An
 * insert numbered above `count` is a failure; nothing past the array is read. */
TQMSG_C_API long tqmsg_format_array(char* buf, size_t size, long message_id, long language_id,
                                    const uintptr_t* args, size_t count);

/* tqmsg_format into a buffer from malloc, which the caller releases with
 * free. NULL on failure. */
TQMSG_C_API char* tqmsg_format_alloc(long message_id, long language_id, ...);

/* tqmsg_format in the first of `count` languages of `languages` that holds
 * the message, for example the user's language and then English. Returns the
 * length of the text, or -1 when no language holds the message or formatting
 * fails. */
TQMSG_C_API long tqmsg_format_first(char* buf, size_t size, long message_id, const long* languages,
                                    size_t count, ...);

/* The Windows language identifier of a POSIX locale name: "de_DE.UTF-8" and
 * "de" give 0x407, "pt_BR" 0x416, "C" and "POSIX" English (0x409); the
 * codeset and "@modifier" are ignored, "pt-BR" is read as "pt_BR", and a
 * region the table lacks gives its language ("de_LU": 0x407). NULL asks for
 * the process's locale from LC_ALL, then LC_MESSAGES, then LANG (the first one
 * set and not empty; "C" when none is). Returns -1 for an unknown or empty
 * name. */
TQMSG_C_API long tqmsg_language_from_locale(const char* locale);

/* The POSIX code of a Windows language identifier ("de" for 0x407, "pt_BR"
 * for 0x416), or NULL when the table of languages lacks it. The text is
 * static. */
TQMSG_C_API const char* tqmsg_language_code(long language_id);

/* The symbolic name of a stored message ("" when its file gave none), or NULL
 * when the store has no such message. The text lives as long as the process. */
TQMSG_C_API const char* tqmsg_symbolic_name(long message_id, long language_id);

/* Called once for each insert of a text as it is formatted, in the order of
 * the text: its number (1 to 199) and the `length` bytes it became. */
typedef void (*tqmsg_insert_fn)(void* context, int number, const char* text, size_t length);

/* tqmsg_vformat, and tqmsg_format_array, that also hand each formatted
 * insert to `on_insert` (for loggers that record inserts as fields of their
 * own). After a failure the inserts formatted before it have been handed
 * over. `on_insert` may be NULL. */
TQMSG_C_API long tqmsg_vformat_inserts(char* buf, size_t size, long message_id, long language_id,
                                       tqmsg_insert_fn on_insert, void* context, va_list args);
TQMSG_C_API long tqmsg_format_array_inserts(char* buf, size_t size, long message_id,
                                            long language_id, const uintptr_t* args, size_t count,
                                            tqmsg_insert_fn on_insert, void* context);

/* For libraries built on this interface (libtqmsg-journal): makes `text`
 * (copied; NULL as "") the calling thread's last-error text, so that their
 * own failures read like this header's. */
TQMSG_C_API void tqmsg_set_last_error(const char* text);

#ifdef __cplusplus
}
#endif

#endif /* TQMSG_H */
