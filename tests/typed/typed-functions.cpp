// The same checks compiled as C++: the generated header must serve both.
#include "typed-functions.c"
