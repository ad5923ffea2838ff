/* Compiled by the typed.* tests: a call whose arguments do not match the
 * inserts' types must not compile (the tests built with WRONG_* expect a
 * failure); the same call with the right arguments must. */
#include "every_kind.h"

int main(void) {
    char buf[64];
#if defined(WRONG_SWAPPED)
    return (int)format_MSG_PRICE(buf, sizeof buf, 0x409, 2.5, "Tea");
#elif defined(WRONG_TEXT_FOR_NUMBER)
    return (int)format_MSG_EVERY_KIND(buf, sizeof buf, 0x409, -5, "disk", 7u, -6L, 8UL, 'x',
                                      (const void*)buf, (size_t)9, -10LL);
#elif defined(WRONG_COUNT)
    return (int)format_MSG_PRICE(buf, sizeof buf, 0x409, "Tea");
#else
    return (int)format_MSG_PRICE(buf, sizeof buf, 0x409, "Tea", 2.5);
#endif
}
