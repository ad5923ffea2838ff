/* The scenario runner and checks of the C interface's tests. */
#define _POSIX_C_SOURCE 200809L
#include "capi-support.h"

#include <fcntl.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

static int failures;
static FILE* report; /* the original standard error */
static char temporary_path[256];

void check(int ok, const char* file, int line, const char* what, ...) {
    va_list args;
    if (ok) return;
    ++failures;
    fprintf(report, "%s:%d: failed: ", file, line);
    va_start(args, what);
    vfprintf(report, what, args);
    va_end(args);
    fputc('\n', report);
}

void check_text(const char* actual, const char* expected, const char* file, int line,
                const char* what) {
    int same =
        actual == NULL || expected == NULL ? actual == expected : strcmp(actual, expected) == 0;
    check(same, file, line, "%s: got \"%s\", expected \"%s\" (last error \"%s\")", what,
          actual ? actual : "(null)", expected ? expected : "(null)", tqmsg_last_error());
}

const char* data_path(const char* name) {
    static char path[1024];
    snprintf(path, sizeof path, "%s/%s", TQMSG_CAPI_DATA_DIR, name);
    return path;
}

void load_catalogue(void) {
    CHECK(tqmsg_load(data_path("capi.mc")) == 0, "capi.mc loads: %s", tqmsg_last_error());
}

const char* temporary_file(const char* content) {
    FILE* file;
    if (temporary_path[0] != '\0') remove(temporary_path);
    snprintf(temporary_path, sizeof temporary_path, "tqmsg_capi_%ld.mc", (long)getpid());
    file = fopen(temporary_path, "w");
    CHECK(file != NULL, "cannot write %s", temporary_path);
    if (file != NULL) {
        fputs(content, file);
        fclose(file);
    }
    return temporary_path;
}

/* Runs `s` in this process with standard output and error captured in
 * `captured`; returns the exit status of the child. */
static int run_child(const struct scenario* s, const char* captured) {
    int quiet = open(captured, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (quiet < 0) return 1;
    fflush(NULL);
    dup2(quiet, 1);
    dup2(quiet, 2);
    close(quiet);
    s->run();
    if (temporary_path[0] != '\0') remove(temporary_path);
    fflush(NULL);
    return failures == 0 ? 0 : 1;
}

/* Copies what `path` holds to the report; returns its size, -1 when unread. */
static long show_file(const char* path) {
    FILE* file = fopen(path, "rb");
    char chunk[4096];
    size_t n;
    long size = 0;
    if (file == NULL) return -1;
    while ((n = fread(chunk, 1, sizeof chunk, file)) > 0) {
        fwrite(chunk, 1, n, report);
        size += (long)n;
    }
    fclose(file);
    return size;
}

/* Runs `s` in a fresh process; 0 when it passed and wrote nothing. */
static int run_fresh(const struct scenario* s) {
    char captured[256];
    int status = 0;
    pid_t child;
    long written;
    snprintf(captured, sizeof captured, "tqmsg_capi_%ld_%s.out", (long)getpid(), s->name);
    fflush(NULL);
    child = fork();
    if (child < 0) return 1;
    if (child == 0) _exit(run_child(s, captured));
    waitpid(child, &status, 0);
    written = show_file(captured);
    remove(captured);
    if (written != 0)
        fprintf(report, "%s: wrote %ld bytes (above) on its output\n", s->name, written);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        fprintf(report, "%s: failed (status %d)\n", s->name, status);
        return 1;
    }
    return written == 0 ? 0 : 1;
}

int run_scenarios(int argc, char** argv, const struct scenario* scenarios, size_t count) {
    size_t i;
    int failed = 0, ran = 0;
    int reporting = dup(2);
    report = fdopen(reporting, "w");
    if (report == NULL) return 2;
    setvbuf(report, NULL, _IONBF, 0);
    for (i = 0; i < count; ++i) {
        if (argc > 1 && strcmp(argv[1], scenarios[i].name) != 0) continue;
        ++ran;
        failed += run_fresh(&scenarios[i]);
    }
    if (ran == 0) fprintf(report, "no scenario named %s\n", argc > 1 ? argv[1] : "");
    return failed == 0 && ran > 0 ? 0 : 1;
}
