/* Compiled as C99 and C11 with every warning an error: tqmsg.h stands alone. */
#include "tqmsg.h"

int tqmsg_header_check(void) { return tqmsg_language_code(0x409) != 0; }
