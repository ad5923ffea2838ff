// The tool's messages on standard error, and the hints it adds to the
// library's load failures. Every line names the running subcommand
// ("tqmsg list: ...") and has its control bytes escaped, so that the bytes of
// a bad message file never reach the terminal raw.
#ifndef TQMSG_TOOL_DIAGNOSTICS_H
#define TQMSG_TOOL_DIAGNOSTICS_H

#include <string>
#include <vector>

// The prefix of every message, such as "tqmsg header"; "tqmsg" until set.
void setCommandName(const std::string& name);
const std::string& commandName();

// Writes "<command>: <line>" to standard error for each line of `text`,
// after what standard output holds so far.
void printError(const std::string& text);

// `name` as one shell word: as it is, or in single quotes.
std::string shellWord(const std::string& name);

// Lines that explain the library's `failure` to load `file`: the system's
// reason when the file cannot be opened, a UTF-16 file or a UTF-8 byte-order
// mark that made the first line unreadable, a number too large for 32 bits.
// Empty when there is nothing to add.
std::vector<std::string> loadFailureHints(const std::string& file, const std::string& failure);

#endif  // TQMSG_TOOL_DIAGNOSTICS_H
