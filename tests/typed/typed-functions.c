/* The typed functions of a generated header format what snprintf makes of
 * the same conversions, in both languages; compiled as C and as C++. */
#include <stdio.h>
#include <string.h>

#include "every_kind.h"

static int failures = 0;

static void expect(const char* what, long length, const char* got, const char* wanted) {
    if (length != (long)strlen(wanted) || strcmp(got, wanted) != 0) {
        printf("FAIL %s: %ld \"%s\", expected \"%s\"\n", what, length, got, wanted);
        ++failures;
    }
}

int main(void) {
    char got[512], wanted[512];
    const void* pointer = &failures;
    if (tqmsg_load(TYPED_MESSAGES) != 0) {
        printf("FAIL load: %s\n", tqmsg_last_error());
        return 1;
    }
    long length = format_MSG_EVERY_KIND(got, sizeof got, 0x409, "disk", -5, 7u, -6L, 8UL, 'x',
                                        pointer, (size_t)9, -10LL);
    snprintf(wanted, sizeof wanted, "%s %d %u %ld %lu %c %p %zu %lld", "disk", -5, 7u, -6L, 8UL,
             'x', pointer, (size_t)9, -10LL);
    expect("every kind, English", length, got, wanted);
    length = format_MSG_EVERY_KIND(got, sizeof got, 0x407, "disk", -5, 7u, -6L, 8UL, 'x', pointer,
                                   (size_t)9, -10LL);
    snprintf(wanted, sizeof wanted, "%lld %zu %p %c %lu %ld %u %d %s", -10LL, (size_t)9, pointer,
             'x', 8UL, -6L, 7u, -5, "disk");
    expect("every kind, German", length, got, wanted);
    length = format_MSG_PRICE(got, sizeof got, 0x409, "Tea", 2.5);
    snprintf(wanted, sizeof wanted, "%s costs %.2f.", "Tea", 2.5);
    expect("floating", length, got, wanted);
    length = format_MSG_NO_INSERTS(got, sizeof got, 0x407);
    expect("no inserts", length, got, "Nichts einzusetzen.");
    if (format_MSG_NO_INSERTS(got, sizeof got, 0x40c) != -1 || got[0] != '\0') {
        printf("FAIL unknown language: \"%s\", expected -1 and \"\"\n", got);
        ++failures;
    }
    return failures != 0;
}
