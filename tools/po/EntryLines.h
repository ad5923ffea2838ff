// Where the entries of a PO file stand, for messages that point the
// translator at the right line. libgettextpo does not say where an entry it
// read came from, so the file is searched for each entry's context line.
#ifndef TQMSG_PO_ENTRY_LINES_H
#define TQMSG_PO_ENTRY_LINES_H

#include <map>
#include <string>

// Context (symbolic name) -> line of the "msgstr" keyword of its entry, for
// every entry whose context stands on one line as a plain quoted name.
// Obsolete ("#~") entries are left out; an unreadable file gives no lines.
std::map<std::string, int> entryLines(const std::string& poPath);

#endif  // TQMSG_PO_ENTRY_LINES_H
