/* Formatting through the C interface: both argument paths, the snprintf
 * convention, the allocating and language-choosing variants, identifiers and
 * the insert callback. */
#include <limits.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "capi-support.h"

/* The variable-list path under test: tqmsg_format itself, or tqmsg_vformat
 * through a variadic wrapper. */
typedef long (*list_formatter)(char*, size_t, long, long, ...);
static list_formatter format_list = tqmsg_format;

static long via_vformat(char* buf, size_t size, long message_id, long language_id, ...) {
    va_list args;
    long result;
    va_start(args, language_id);
    result = tqmsg_vformat(buf, size, message_id, language_id, args);
    va_end(args);
    return result;
}

static long disk_full_english(char* buf, size_t size) {
    return format_list(buf, size, MSG_DISK_FULL, ENGLISH, "/srv", 1048576UL, 4096UL);
}
static long disk_full_german(char* buf, size_t size) {
    return format_list(buf, size, MSG_DISK_FULL, GERMAN, "/srv", 1048576UL, 4096UL);
}
static long copied(char* buf, size_t size) {
    return format_list(buf, size, MSG_COPIED, ENGLISH, 3, "/backup");
}
static long mixed(char* buf, size_t size) {
    /* %4 reads no value but holds its place in the list. */
    return format_list(buf, size, MSG_MIXED, ENGLISH, "ab", -42, 'x', 0, 0xBEEFUL, "end");
}

/* One message formatted through both paths. */
struct row {
    const char* what;
    long (*via_list)(char*, size_t);
    long message_id, language_id;
    uintptr_t args[6];
    size_t count;
    const char* expected;
};

static const struct row rows[] = {
    {"disk full, English",
     disk_full_english,
     MSG_DISK_FULL,
     ENGLISH,
     {(uintptr_t) "/srv", 1048576, 4096},
     3,
     "Volume /srv is full: 1048576 bytes needed, 4096 free."},
    {"disk full, German",
     disk_full_german,
     MSG_DISK_FULL,
     GERMAN,
     {(uintptr_t) "/srv", 1048576, 4096},
     3,
     "Datentr\xC3\xA4ger /srv ist voll: 1048576 Bytes ben\xC3\xB6tigt, 4096 frei."},
    {"a text ending in %0",
     copied,
     MSG_COPIED,
     ENGLISH,
     {3, (uintptr_t) "/backup"},
     2,
     "Copied 3 files to /backup"},
    {"widths, a character, escapes, hexadecimal",
     mixed,
     MSG_MIXED,
     ENGLISH,
     {(uintptr_t) "ab", (uintptr_t)-42, 'x', 0, 0xBEEF, (uintptr_t) "end"},
     6,
     "[  -42] [ab  ] x%% 0000BEEF\nend"},
};
#define ROWS (sizeof rows / sizeof rows[0])

static long via_array(const struct row* r, char* buf, size_t size) {
    return tqmsg_format_array(buf, size, r->message_id, r->language_id, r->args, r->count);
}

static void same_text_through_both_paths(void) {
    char buf[256];
    size_t i;
    list_formatter formatters[2];
    size_t f;
    formatters[0] = tqmsg_format;
    formatters[1] = via_vformat;
    load_catalogue();
    for (i = 0; i < ROWS; ++i) {
        long length = (long)strlen(rows[i].expected);
        CHECK(via_array(&rows[i], buf, sizeof buf) == length, "%s: array length", rows[i].what);
        CHECK_TEXT(buf, rows[i].expected, rows[i].what);
        for (f = 0; f < 2; ++f) {
            format_list = formatters[f];
            CHECK(rows[i].via_list(buf, sizeof buf) == length, "%s: list length", rows[i].what);
            CHECK_TEXT(buf, rows[i].expected, rows[i].what);
        }
    }
}

/* Each path with the buffer sizes around the text's length: the result is
 * always the whole length, and nothing is written at or past `size`. */
static void buffer_sizes_follow_snprintf(void) {
    char buf[256];
    size_t i, s, path;
    load_catalogue();
    for (i = 0; i < ROWS; ++i) {
        size_t length = strlen(rows[i].expected);
        size_t sizes[5];
        sizes[0] = 0;
        sizes[1] = 1;
        sizes[2] = length;
        sizes[3] = length + 1;
        sizes[4] = length + 2;
        for (path = 0; path < 2; ++path) {
            long result = path == 0 ? via_array(&rows[i], NULL, 0) : rows[i].via_list(NULL, 0);
            CHECK(result == (long)length, "%s: NULL with size 0 gives %ld", rows[i].what, result);
            for (s = 0; s < 5; ++s) {
                size_t size = sizes[s], kept = size == 0           ? 0
                                               : size - 1 < length ? size - 1
                                                                   : length;
                memset(buf, '#', sizeof buf);
                result = path == 0 ? via_array(&rows[i], buf, size) : rows[i].via_list(buf, size);
                CHECK(result == (long)length, "%s, size %zu: result %ld", rows[i].what, size,
                      result);
                CHECK(memcmp(buf, rows[i].expected, kept) == 0, "%s, size %zu: text", rows[i].what,
                      size);
                CHECK(size == 0 ? buf[0] == '#' : buf[kept] == '\0', "%s, size %zu: end",
                      rows[i].what, size);
                CHECK(buf[size == 0 ? 0 : kept + 1] == '#', "%s, size %zu: written past",
                      rows[i].what, size);
            }
        }
    }
}

static void allocated_text(void) {
    char* text;
    load_catalogue();
    text = tqmsg_format_alloc(MSG_DISK_FULL, ENGLISH, "/srv", 1048576UL, 4096UL);
    CHECK_TEXT(text, rows[0].expected, "format_alloc");
    free(text);
    CHECK(tqmsg_format_alloc(MSG_DISK_FULL, 0x40C) == NULL, "format_alloc fails for French");
    CHECK(strcmp(tqmsg_last_error(), "") != 0, "format_alloc failure has a text");
}

static void first_language_holding_the_message(void) {
    static const struct {
        const char* what;
        long message_id;
        long languages[3];
        size_t count;
        const char* expected; /* NULL: no language holds it */
    } cases[] = {
        {"the first language", MSG_ENGLISH_ONLY, {ENGLISH, GERMAN}, 2, "Only in English: x"},
        {"past a missing language",
         MSG_ENGLISH_ONLY,
         {GERMAN, 0x40C, ENGLISH},
         3,
         "Only in English: x"},
        {"German before English",
         MSG_DISK_FULL,
         {GERMAN, ENGLISH},
         2,
         "Datentr\xC3\xA4ger x ist voll: 1 Bytes ben\xC3\xB6tigt, 2 frei."},
        {"none of them", MSG_ENGLISH_ONLY, {GERMAN, 0x40C}, 2, NULL},
        {"an empty list", MSG_ENGLISH_ONLY, {0}, 0, NULL},
    };
    char buf[128];
    size_t i;
    load_catalogue();
    for (i = 0; i < sizeof cases / sizeof cases[0]; ++i) {
        long result = tqmsg_format_first(buf, sizeof buf, cases[i].message_id, cases[i].languages,
                                         cases[i].count, "x", 1UL, 2UL);
        long expected = cases[i].expected ? (long)strlen(cases[i].expected) : -1;
        CHECK(result == expected, "%s: result %ld", cases[i].what, result);
        CHECK_TEXT(buf, cases[i].expected ? cases[i].expected : "", cases[i].what);
    }
}

/* 0xC1010010 and -1056899056L are the same 32-bit identifier; so is any
 * wider value with the same low 32 bits on a 64-bit long. */
static void identifiers_are_32_bit(void) {
    long spellings[3];
    size_t count = 2, i;
    char buf[128];
    spellings[0] = (long)0xC1010010UL;
    spellings[1] = -1056899056L;
#if LONG_MAX > 2147483647L
    spellings[count++] = 0x7FFFFFFFC1010010L;
#endif
    load_catalogue();
    for (i = 0; i < count; ++i) {
        uintptr_t args[3];
        args[0] = (uintptr_t) "/srv";
        args[1] = 1048576;
        args[2] = 4096;
        CHECK(tqmsg_format_array(buf, sizeof buf, spellings[i], ENGLISH, args, 3) > 0,
              "spelling %zu: %s", i, tqmsg_last_error());
        CHECK_TEXT(tqmsg_symbolic_name(spellings[i], ENGLISH), "MSG_DISK_FULL", "symbolic name");
    }
    CHECK(tqmsg_symbolic_name(MSG_DISK_FULL, 0x40C) == NULL, "no French text");
    CHECK_TEXT(tqmsg_last_error(), "Message with langId=0x40c, msgId=0xc1010010 not found",
               "symbolic name failure");
}

struct heard {
    char text[256];
};

static void remember_insert(void* context, int number, const char* text, size_t length) {
    struct heard* heard = context;
    size_t used = strlen(heard->text);
    snprintf(heard->text + used, sizeof heard->text - used, "%d=%.*s;", number, (int)length, text);
}

static long mixed_with_inserts(char* buf, size_t size, struct heard* heard, ...) {
    va_list args;
    long result;
    va_start(args, heard);
    result = tqmsg_vformat_inserts(buf, size, MSG_MIXED, ENGLISH, remember_insert, heard, args);
    va_end(args);
    return result;
}

static void inserts_reach_the_callback(void) {
    const char* expected = "2=  -42;1=ab  ;3=x;4=%;5=0000BEEF;6=end;";
    struct heard heard;
    char buf[128];
    load_catalogue();
    memset(&heard, 0, sizeof heard);
    CHECK(mixed_with_inserts(buf, sizeof buf, &heard, "ab", -42, 'x', 0, 0xBEEFUL, "end") > 0,
          "list: %s", tqmsg_last_error());
    CHECK_TEXT(heard.text, expected, "inserts from the list");
    memset(&heard, 0, sizeof heard);
    CHECK(tqmsg_format_array_inserts(buf, sizeof buf, MSG_MIXED, ENGLISH, rows[3].args, 6,
                                     remember_insert, &heard) > 0,
          "array: %s", tqmsg_last_error());
    CHECK_TEXT(heard.text, expected, "inserts from the array");
    /* The inserts before a failure have been handed over. */
    memset(&heard, 0, sizeof heard);
    CHECK(tqmsg_format_array_inserts(buf, sizeof buf, MSG_MIXED, ENGLISH, rows[3].args, 4,
                                     remember_insert, &heard) == -1,
          "array of 4 fails at %%5");
    CHECK_TEXT(heard.text, "2=  -42;1=ab  ;3=x;4=%;", "inserts before the failure");
    CHECK(tqmsg_format_array_inserts(buf, sizeof buf, MSG_MIXED, ENGLISH, rows[3].args, 6, NULL,
                                     NULL) == (long)strlen(rows[3].expected),
          "no callback");
}

int main(int argc, char** argv) {
    static const struct scenario scenarios[] = {
        {"same_text_through_both_paths", same_text_through_both_paths},
        {"buffer_sizes_follow_snprintf", buffer_sizes_follow_snprintf},
        {"allocated_text", allocated_text},
        {"first_language_holding_the_message", first_language_holding_the_message},
        {"identifiers_are_32_bit", identifiers_are_32_bit},
        {"inserts_reach_the_callback", inserts_reach_the_callback},
    };
    return run_scenarios(argc, argv, scenarios, sizeof scenarios / sizeof scenarios[0]);
}
