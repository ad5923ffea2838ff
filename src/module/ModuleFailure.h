// Internal: the one place where the module composes its failure texts.
#ifndef TQMSG_MODULE_MODULE_FAILURE_H
#define TQMSG_MODULE_MODULE_FAILURE_H

#include "MessageModuleMaps.h"

// A MessageModuleException whose text is `format` filled printf-style into a
// buffer of 5000 characters; a longer text is cut at its end. Use as
// `throw moduleFailure("...", ...)`.
MessageModuleException moduleFailure(const char* format, ...) __attribute__((format(printf, 1, 2)));

#endif  // TQMSG_MODULE_MODULE_FAILURE_H
