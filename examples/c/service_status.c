/* A small service written in C: it loads its message file at start, takes the
 * language of its messages from the locale (LC_ALL, LC_MESSAGES, LANG) with
 * English as the fallback, and formats its status messages through tqmsg.h.
 * Built with libtqmsg-journal (TQMSG_EXAMPLE_JOURNAL), it also reports its
 * events to the systemd journal, as its Windows original did with
 * ReportEvent.
 * The MSG_ identifiers come from messages.h, which `tqmsg header` generates
 * from the same message file at build time. */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "messages.h"
#include "tqmsg.h"

#define ENGLISH 0x409L

#ifdef TQMSG_EXAMPLE_JOURNAL
#include <syslog.h>

#include "tqmsg-journal.h"

/* The service's message ID base, made once with `journalctl --new-id128`:
 * the MESSAGE_ID of each event, and the journal catalogue that
 * `tqmsg catalog --base` writes, derive from it. */
#define MESSAGE_ID_BASE "3f6a0c1e9b2d4e57a8c1d2e3f4a5b6c7"

/* The events of a run, in English: journalctl -x shows each in the reader's
 * language from the catalogue. A failure is reported, the run goes on. Only
 * with SERVICE_STATUS_JOURNAL=1 in the environment, so that the example's
 * test runs leave the machine's journal alone. */
static void report_events(void) {
    const char* wanted = getenv("SERVICE_STATUS_JOURNAL");
    if (wanted == NULL || strcmp(wanted, "1") != 0) return;
    if (tqmsg_journal_open("service_status", MESSAGE_ID_BASE) != 0 ||
        tqmsg_report(MSG_SERVICE_STARTED, ENGLISH, "1.1") != 0 ||
        tqmsg_report(MSG_JOB_LATE, ENGLISH, "nightly", 12) != 0 ||
        tqmsg_report(MSG_DISK_FULL, ENGLISH, "/srv", 1048576UL, 4096UL) != 0 ||
        tqmsg_report_strings(LOG_NOTICE, MSG_SERVICE_STOPPING, ENGLISH, NULL, 0) != 0)
        fprintf(stderr, "service_status: %s\n", tqmsg_last_error());
}
#endif

/* The user's language, then English; `languages` receives them and the
 * count is returned. */
static size_t choose_languages(long languages[2]) {
    long user = tqmsg_language_from_locale(NULL);
    size_t count = 0;
    if (user != -1 && user != ENGLISH) languages[count++] = user;
    languages[count++] = ENGLISH;
    return count;
}

/* A long text in a buffer of the right size: asks for the length first, as
 * with snprintf, then formats into a buffer from malloc. */
static void print_disk_full(const long* languages, size_t count) {
    long length =
        tqmsg_format_first(NULL, 0, MSG_DISK_FULL, languages, count, "/srv", 1048576UL, 4096UL);
    char* text = length < 0 ? NULL : malloc((size_t)length + 1);
    if (text == NULL) return;
    tqmsg_format_first(text, (size_t)length + 1, MSG_DISK_FULL, languages, count, "/srv", 1048576UL,
                       4096UL);
    printf("%s\n", text);
    free(text);
}

/* The array functions take one language: try each in turn. */
static long format_array_first(char* buf, size_t size, long message_id, const long* languages,
                               size_t count, const uintptr_t* args, size_t arg_count) {
    long length = -1;
    size_t i;
    for (i = 0; i < count && length < 0; ++i)
        length = tqmsg_format_array(buf, size, message_id, languages[i], args, arg_count);
    return length;
}

int main(int argc, char** argv) {
    const char* file = argc > 1 ? argv[1] : MESSAGES_FILE;
    long languages[2];
    size_t count;
    char line[256];
    /* Inserts from an array, as code ported from Windows passes them. */
    uintptr_t job[3];

    if (tqmsg_load(file) != 0) {
        fprintf(stderr, "service_status: %s\n", tqmsg_last_error());
        return 1;
    }
#ifdef TQMSG_EXAMPLE_JOURNAL
    report_events();
#endif
    count = choose_languages(languages);
    printf("language: %s\n", tqmsg_language_code(languages[0]));

    if (tqmsg_format_first(line, sizeof line, MSG_SERVICE_STARTED, languages, count, "1.1") >= 0)
        printf("%s\n", line);
    if (tqmsg_format_first(line, sizeof line, MSG_JOB_LATE, languages, count, "nightly", 12) >= 0)
        printf("%s\n", line);
    print_disk_full(languages, count);

    job[0] = (uintptr_t) "weekly";
    job[1] = 1200;
    job[2] = 35;
    if (format_array_first(line, sizeof line, MSG_JOB_DONE, languages, count, job, 3) >= 0)
        printf("%s\n", line);

    /* A failure is a result and a text, never output of the library's own. */
    if (tqmsg_format_first(line, sizeof line, 0x7777L, languages, count) < 0)
        printf("failed as expected: %s\n", tqmsg_last_error());
    return 0;
}
