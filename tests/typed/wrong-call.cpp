// The wrong calls compiled as C++.
#include "wrong-call.c"
