/* Test support for the C interface: checks, scenarios in fresh processes and
 * the test catalogue.
 *
 * The message store is process-wide, so every scenario runs in a child
 * process of its own. The child's standard output and standard error go to a
 * file that must stay empty: the library never writes on them. Checks report
 * on a copy of the original standard error. */
#ifndef TQMSG_TESTS_CAPI_SUPPORT_H
#define TQMSG_TESTS_CAPI_SUPPORT_H

#include <stddef.h>

#include "tqmsg.h"

/* Identifiers and languages of capi.mc. */
#define MSG_DISK_FULL 0xC1010010L
#define MSG_COPIED 0x41010011L
#define MSG_MIXED 0x00010012L
#define MSG_BAD_FORMAT 0x00010013L
#define MSG_ENGLISH_ONLY 0x00010014L
#define ENGLISH 0x409L
#define GERMAN 0x407L

struct scenario {
    const char* name;
    void (*run)(void);
};

/* Runs each scenario of `scenarios` in a fresh process, or only the one
 * named by argv[1]. Returns the exit status for main. */
int run_scenarios(int argc, char** argv, const struct scenario* scenarios, size_t count);

/* Records a failed check unless `ok`; `what` and the rest as printf. */
void check(int ok, const char* file, int line, const char* what, ...);
#define CHECK(ok, ...) check((ok) != 0, __FILE__, __LINE__, __VA_ARGS__)

/* Checks that `actual` (may be NULL) equals `expected` (may be NULL). */
void check_text(const char* actual, const char* expected, const char* file, int line,
                const char* what);
#define CHECK_TEXT(actual, expected, what) check_text(actual, expected, __FILE__, __LINE__, what)

/* Loads capi.mc, failing the scenario when it does not load. */
void load_catalogue(void);

/* The path of a file of the test data directory (a static buffer). */
const char* data_path(const char* name);

/* Writes `content` into a new temporary file and returns its path (a static
 * buffer, valid until the next call); the file is removed when the scenario
 * ends. */
const char* temporary_file(const char* content);

#endif /* TQMSG_TESTS_CAPI_SUPPORT_H */
