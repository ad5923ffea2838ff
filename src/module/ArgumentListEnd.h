// Internal: the one guard that ends a variable argument list.
#ifndef TQMSG_MODULE_ARGUMENT_LIST_END_H
#define TQMSG_MODULE_ARGUMENT_LIST_END_H

#include <cstdarg>

// Ends a list begun with va_start or va_copy when the scope is left, also
// when an exception passes through it. Construct it right after the list.
class ArgumentListEnd {
public:
    explicit ArgumentListEnd(va_list& list) : list_(list) {}
    ~ArgumentListEnd() { va_end(list_); }
    ArgumentListEnd(const ArgumentListEnd&) = delete;
    ArgumentListEnd& operator=(const ArgumentListEnd&) = delete;

private:
    va_list& list_;
};

#endif  // TQMSG_MODULE_ARGUMENT_LIST_END_H
