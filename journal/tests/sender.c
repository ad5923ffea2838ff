/* Sends the events of the live-journal tests from C, through
 * libtqmsg-journal:  sender FILE BASE SCENARIO
 *   events   one event of each severity, one in German, one with strings and
 *            an explicit priority (what check-entries.py `events` expects);
 *   failure  events that cannot be formatted, each failure text on a line of
 *            standard output for the checker to compare.
 * Exits 1 when a call's result is not the one its contract promises. */
#include <stdio.h>
#include <string.h>
#include <syslog.h>

#include "tqmsg-journal.h"

#define MSG_SERVICE_STARTED 0x41010001L
#define MSG_DISK_FULL 0xC1010010L
#define MSG_DISK_LOW 0x81010011L
#define MSG_JOB_DONE 0x01010012L
#define ENGLISH 0x409L
#define GERMAN 0x407L

static int failures = 0;

static void expect(int ok, const char* what) {
    if (!ok) {
        fprintf(stderr, "sender: %s (%s)\n", what, tqmsg_last_error());
        failures++;
    }
}

static void sendEvents(void) {
    static const char* const job[] = {"nightly", "3 files copied"};
    expect(tqmsg_report(MSG_SERVICE_STARTED, ENGLISH, "2.4.1") == 0, "informational event");
    expect(tqmsg_report(MSG_DISK_FULL, ENGLISH, "/srv", 1048576UL) == 0, "error event");
    expect(tqmsg_report(MSG_DISK_LOW, ENGLISH, "/var", 120, 7) == 0, "warning event");
    expect(tqmsg_report(MSG_JOB_DONE, ENGLISH, "nightly", "3 files copied") == 0, "success event");
    expect(tqmsg_report(MSG_DISK_FULL, GERMAN, "/srv", 2048UL) == 0, "German event");
    expect(tqmsg_report_strings(LOG_CRIT, MSG_JOB_DONE, ENGLISH, job, 2) == 0, "strings event");
}

static void sendFailure(int result, const char* what) {
    expect(result == -1, what);
    expect(tqmsg_last_error()[0] != '\0', "a failure text");
    printf("%s\n", tqmsg_last_error());
}

static void sendFailures(void) {
    static const char* const one[] = {"/data"};
    sendFailure(tqmsg_report(0xC1010099L, ENGLISH, "x"), "unknown message");
    sendFailure(tqmsg_report(MSG_DISK_LOW, 0x40C, "/var", 1, 2), "unknown language");
    sendFailure(tqmsg_report_strings(-1, MSG_DISK_FULL, ENGLISH, one, 1), "missing insert");
}

int main(int argc, char** argv) {
    if (argc != 4) {
        fprintf(stderr, "usage: sender FILE BASE events|failure\n");
        return 2;
    }
    expect(tqmsg_load(argv[1]) == 0, "load");
    expect(tqmsg_journal_open("tqmsg-test", argv[2]) == 0, "open");
    if (strcmp(argv[3], "events") == 0) sendEvents();
    if (strcmp(argv[3], "failure") == 0) sendFailures();
    return failures == 0 ? 0 : 1;
}
