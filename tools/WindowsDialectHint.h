// Recognises message files written for the Windows message compiler among the
// files that fail to load, so that `tqmsg check` can point at `tqmsg port`.
#ifndef TQMSG_TOOL_WINDOWS_DIALECT_HINT_H
#define TQMSG_TOOL_WINDOWS_DIALECT_HINT_H

#include <string>

// The construct of the Windows dialect that the library's `failure` to load
// `file` points to ("English without LanguageNames", "several statements on
// one line", ...), or "" when the failure is no sign of that dialect. Only the
// failure text is read, and for an end of file inside a text, whether the
// file declares any language.
std::string windowsDialectCause(const std::string& file, const std::string& failure);

// The hint line for `file` (without "hint: ") naming the command that
// converts it, or "" when windowsDialectCause finds nothing.
std::string windowsDialectHint(const std::string& file, const std::string& failure);

#endif  // TQMSG_TOOL_WINDOWS_DIALECT_HINT_H
