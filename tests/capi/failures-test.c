/* Every failure of the C interface: -1 or NULL, the library's own text in
 * tqmsg_last_error(), an emptied buffer, and nothing written on the process's
 * output (the runner checks that). */
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "capi-support.h"

static char buf[64];
static const uintptr_t disk_args[3] = {(uintptr_t) "/srv", 1, 2};

static long unknown_message(void) { return tqmsg_format(buf, sizeof buf, 0x12345L, ENGLISH); }
static long unknown_language(void) {
    return tqmsg_format(buf, sizeof buf, MSG_DISK_FULL, 0x40CL, "/srv", 1UL, 2UL);
}
static long unclosed_insert_format(void) {
    return tqmsg_format(buf, sizeof buf, MSG_BAD_FORMAT, ENGLISH, 1);
}
/* An array of exactly two elements on the heap, so that AddressSanitizer
 * sees any read of a third. */
static long too_few_array_arguments(void) {
    uintptr_t* two = malloc(2 * sizeof *two);
    long result;
    if (two == NULL) return 0;
    memcpy(two, disk_args, 2 * sizeof *two);
    result = tqmsg_format_array(buf, sizeof buf, MSG_DISK_FULL, ENGLISH, two, 2);
    free(two);
    return result;
}
static long no_array(void) {
    return tqmsg_format_array(buf, sizeof buf, MSG_DISK_FULL, ENGLISH, NULL, 3);
}
static long no_buffer(void) {
    return tqmsg_format_array(NULL, 10, MSG_DISK_FULL, ENGLISH, disk_args, 3);
}
static long no_language_list(void) {
    return tqmsg_format_first(buf, sizeof buf, MSG_DISK_FULL, NULL, 2, "/srv", 1UL, 2UL);
}
static long first_without_the_message(void) {
    static const long languages[2] = {0x40C, 0x410};
    return tqmsg_format_first(buf, sizeof buf, MSG_DISK_FULL, languages, 2, "/srv", 1UL, 2UL);
}

static void formatting_failures(void) {
    static const struct {
        const char* what;
        long (*call)(void);
        const char* error;
    } rows[] = {
        {"unknown message", unknown_message, "Message with langId=0x409, msgId=0x12345 not found"},
        {"unknown language", unknown_language,
         "Message with langId=0x40c, msgId=0xc1010010 not found"},
        {"unclosed insert format", unclosed_insert_format,
         "Invalid message string: Ends in an unclosed format %1!d, format string begin marker ! "
         "noticed without any matching end marker after escape sequence %"},
        {"too few array arguments", too_few_array_arguments,
         "Insert %3 has no argument: the argument array holds 2"},
        {"NULL array", no_array, "The argument array is NULL but its count is 3"},
        {"NULL buffer", no_buffer, "The buffer is NULL but its size is 10"},
        {"NULL language list", no_language_list, "The language list is NULL but its count is 2"},
        {"no language holds it", first_without_the_message,
         "Message with msgId=0xc1010010 not found in any of 2 languages"},
    };
    size_t i;
    load_catalogue();
    for (i = 0; i < sizeof rows / sizeof rows[0]; ++i) {
        long result;
        memset(buf, '#', sizeof buf);
        result = rows[i].call();
        CHECK(result == -1, "%s: result %ld", rows[i].what, result);
        CHECK_TEXT(tqmsg_last_error(), rows[i].error, rows[i].what);
        CHECK(rows[i].call != no_buffer ? buf[0] == '\0' : buf[0] == '#', "%s: buffer",
              rows[i].what);
        /* The next successful call clears the text. */
        CHECK(tqmsg_format_array(buf, sizeof buf, MSG_DISK_FULL, ENGLISH, disk_args, 3) > 0,
              "%s: a good call after it", rows[i].what);
        CHECK_TEXT(tqmsg_last_error(), "", rows[i].what);
    }
}

static void load_failures(void) {
    const char* good_then_bad =
        "LanguageNames=(English=0x409:MSG00409)\n"
        "MessageId=0x1\nSymbolicName=MSG_STORED\nLanguage=English\nStored %1.\n.\n"
        "MessageId=0x2\nSymbolicName=MSG_REFUSED\nLanguage=French\nNever stored.\n.\n";
    char expected[1024];
    char text[64];
    const char* path;

    CHECK(tqmsg_load(NULL) == -1, "NULL path");
    CHECK_TEXT(tqmsg_last_error(), "The path of the file to load is NULL", "NULL path");

    CHECK(tqmsg_load("no-such-file.mc") == -1, "missing file");
    CHECK_TEXT(tqmsg_last_error(),
               "File: \"no-such-file.mc\" - Unable to open file: no-such-file.mc "
               "(No such file or directory)",
               "missing file");

    path = data_path("");
    CHECK(tqmsg_load(path) == -1, "directory");
    snprintf(expected, sizeof expected, "File: \"%s\" - Unable to open file: %s (Is a directory)",
             path, path);
    CHECK_TEXT(tqmsg_last_error(), expected, "directory");

    path = temporary_file(good_then_bad);
    CHECK(tqmsg_load(path) == -1, "parse error");
    snprintf(expected, sizeof expected, "File: \"%s\", Line: 9 - Unknown language: French", path);
    CHECK_TEXT(tqmsg_last_error(), expected, "parse error");
    /* The message stored before the error stays. */
    CHECK(tqmsg_format(text, sizeof text, 0x1L, ENGLISH, "here") > 0, "message before the error");
    CHECK_TEXT(text, "Stored here.", "message before the error");

    load_catalogue();
    CHECK(tqmsg_load(data_path("capi.mc")) == -1, "second load");
    snprintf(expected, sizeof expected, "File: %s, already loaded", data_path("capi.mc"));
    CHECK_TEXT(tqmsg_last_error(), expected, "second load");
}

static void lookups_without_answer(void) {
    load_catalogue();
    CHECK(tqmsg_format_alloc(0x12345L, ENGLISH) == NULL, "format_alloc");
    CHECK_TEXT(tqmsg_last_error(), "Message with langId=0x409, msgId=0x12345 not found",
               "format_alloc");
    CHECK(tqmsg_symbolic_name(0x12345L, ENGLISH) == NULL, "symbolic name");
    CHECK_TEXT(tqmsg_last_error(), "Message with langId=0x409, msgId=0x12345 not found",
               "symbolic name");
    CHECK(tqmsg_language_code(0x1234) == NULL, "language code");
    CHECK_TEXT(tqmsg_last_error(), "No code is known for the language 0x1234", "language code");
    CHECK(tqmsg_language_from_locale("xx_YY") == -1, "locale");
    CHECK_TEXT(tqmsg_last_error(), "No language is known for the locale \"xx_YY\"", "locale");
}

int main(int argc, char** argv) {
    static const struct scenario scenarios[] = {
        {"formatting_failures", formatting_failures},
        {"load_failures", load_failures},
        {"lookups_without_answer", lookups_without_answer},
    };
    return run_scenarios(argc, argv, scenarios, sizeof scenarios / sizeof scenarios[0]);
}
