/* A small service written in C: it loads its message file at start, takes the
 * language of its messages from the locale (LC_ALL, LC_MESSAGES, LANG) with
 * English as the fallback, and formats its status messages through tqmsg.h.
 * The MSG_ identifiers come from messages.h, which `tqmsg header` generates
 * from the same message file at build time. */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>

#include "messages.h"
#include "tqmsg.h"

#define ENGLISH 0x409L

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
