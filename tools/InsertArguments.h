// The argument array of tqmsg format: each command-line argument converted to
// what the inserts that read it need, as the library's own classifier of
// insert formats describes them. The result is the same on i386 and x86-64.
#ifndef TQMSG_TOOL_INSERT_ARGUMENTS_H
#define TQMSG_TOOL_INSERT_ARGUMENTS_H

#include <string>
#include <vector>

// The array for formatting `text` (the message named `message` in errors):
// element n-1 is the value of insert n, at least 199 elements. Argument n is
// - a pointer to the argument itself for text conversions (s);
// - a 32-bit number (-2147483648..4294967295) for integer, character and
//   floating conversions (a floating conversion prints the element's integer
//   value), sign-extended for signed conversions and zero-extended for
//   unsigned ones, so that conversions reading 64 bits print the same number
//   on both architectures.
// Throws UsageError for arguments that do not fit (a non-number for a number,
// too few arguments) and CommandFailure for a message the tool cannot format:
// a scan the formatter refuses, a refused format, a pointer conversion, or an
// argument that would need two types (a text and a number, or a signed and an
// unsigned number of more than 32 bits).
std::vector<char*> insertArguments(const std::string& text, std::vector<std::string>& args,
                                   const std::string& message);

#endif  // TQMSG_TOOL_INSERT_ARGUMENTS_H
