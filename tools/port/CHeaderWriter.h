// The C/C++ header of message identifiers that `tqmsg header` and
// `tqmsg port --header` write: one commented #define per symbolic name, its
// value an int usable directly as the messageId of the TQ_ functions.
#ifndef TQMSG_PORT_C_HEADER_WRITER_H
#define TQMSG_PORT_C_HEADER_WRITER_H

#include <cstdint>
#include <string>
#include <vector>

// True when `name` can be a C macro name: an ASCII letter or "_", then ASCII
// letters, digits and "_".
bool isCIdentifier(const std::string& name);

// `name` made a C identifier: every other byte becomes "_", and "_" goes
// before a leading digit ("My-Name" -> "My_Name", "1st" -> "_1st").
std::string cIdentifierFrom(const std::string& name);

struct CHeaderEntry {
    std::string name;
    uint32_t id;
    std::string comment;  // the message text on one line
};

// The header text, entries sorted by identifier (equal ones keep their order).
// `command` names the generating subcommand, `languageId` the language of the
// comments and `path` the file whose base name makes the include guard;
// `appendix` is placed after the entries, inside the guard.
std::string writeCHeader(const std::string& command, long languageId, const std::string& path,
                         std::vector<CHeaderEntry> entries, const std::string& appendix = "");

#endif  // TQMSG_PORT_C_HEADER_WRITER_H
