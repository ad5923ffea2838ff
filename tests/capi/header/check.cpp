// Compiled as C++17 with every warning an error: tqmsg.h stands alone in C++.
#include "tqmsg.h"

int tqmsgHeaderCheck() { return tqmsg_language_code(0x409) != nullptr; }
