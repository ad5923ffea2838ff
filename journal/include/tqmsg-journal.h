/* tqmsg-journal: the events of a ported service in the systemd journal.
 *
 * A service that called ReportEvent on Windows calls tqmsg_report with the
 * same event identifier and inserts: the message is formatted as
 * tqmsg_format formats it (tqmsg.h) and sent as one journal entry carrying
 *   MESSAGE           the formatted text,
 *   PRIORITY          3 for Error, 4 for Warning, 6 for Informational and
 *                     Success identifiers (or the priority given),
 *   MESSAGE_ID        the first 24 hexadecimal digits of the program's base
 *                     and the 32-bit identifier as 8, in lower case,
 *   TQMSG_ID          the identifier, "0x" and 8 upper-case digits,
 *   TQMSG_SYMBOL      its symbolic name (when its file gave one),
 *   TQMSG_LANGUAGE    the language identifier, "0x" and hexadecimal,
 *   TQMSG_INSERT_N    insert N as it appears in the text,
 *   SYSLOG_IDENTIFIER the identifier given to tqmsg_journal_open.
 * A journal catalogue written by `tqmsg catalog` explains each MESSAGE_ID in
 * `journalctl -x`, in the reader's language.
 *
 * Conventions of every function here, beside those of tqmsg.h:
 *  1. Failures are return values: -1, with a text in tqmsg_last_error().
 *  2. An event is never dropped. A message that cannot be formatted is still
 *     sent, with MESSAGE saying why, TQMSG_ERROR the library's failure text
 *     and the inserts that could be read; the call then returns -1.
 *  3. Without a journal (no journal socket) the text goes to syslog(3) with
 *     the same priority and identifier, which then become the process's
 *     openlog(3) settings.
 *  4. Before the first successful tqmsg_journal_open an entry has no
 *     SYSLOG_IDENTIFIER and no MESSAGE_ID.
 *
 * Threads: reports may run in many threads at once; tqmsg_journal_open may
 * run beside them (a report uses the settings before or after the call, never
 * a mix of both). Loading message files must not overlap reports.
 */
#ifndef TQMSG_JOURNAL_H
#define TQMSG_JOURNAL_H

#include <stdarg.h>
#include <stddef.h>

#include "tqmsg.h"

#if defined(__GNUC__)
#define TQMSG_JOURNAL_API __attribute__((visibility("default")))
#else
#define TQMSG_JOURNAL_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Sets the program's SYSLOG_IDENTIFIER (not empty) and its 128-bit base of
 * message IDs: 32 hexadecimal digits in either case, as
 * `journalctl --new-id128` prints them. A later call replaces the earlier
 * settings. Returns 0, or -1 for an empty identifier or a malformed base,
 * leaving the earlier settings in place. */
TQMSG_JOURNAL_API int tqmsg_journal_open(const char* identifier, const char* message_id_base);

/* Writes into `buf` the MESSAGE_ID that events `message_id` get with
 * `message_id_base` (32 hexadecimal digits and a NUL: `size` at least 33),
 * for queries (journalctl MESSAGE_ID=...) and catalogues. Returns 0, or -1
 * for a malformed base or a buffer too small (buf[0] is then '\0' when
 * size > 0). */
TQMSG_JOURNAL_API int tqmsg_journal_message_id(char* buf, size_t size, const char* message_id_base,
                                               long message_id);

/* Formats message `message_id` of language `language_id` with the inserts
 * after it, as tqmsg_format does, and sends one entry at the priority of the
 * identifier's severity. Returns 0, or -1 when the message could not be
 * formatted (the entry then says why). */
TQMSG_JOURNAL_API int tqmsg_report(long message_id, long language_id, ...);

/* tqmsg_report with the inserts in `args`; va_end it, do not reuse it. */
TQMSG_JOURNAL_API int tqmsg_vreport(long message_id, long language_id, va_list args);

/* tqmsg_report with insert N taken from strings[N - 1] as a text, as
 * ReportEvent passes its strings, at `priority` (LOG_ERR ... from
 * <syslog.h>), or at the priority of the identifier's severity when
 * `priority` is -1. An insert numbered above `count` fails as in
 * tqmsg_format_array. Returns 0, or -1 (nothing is sent when `priority` is
 * neither -1 nor 0 to 7). */
TQMSG_JOURNAL_API int tqmsg_report_strings(int priority, long message_id, long language_id,
                                           const char* const* strings, size_t count);

#ifdef __cplusplus
}
#endif

#endif /* TQMSG_JOURNAL_H */
