// Turns the lines of a Windows message text into logical lines that format
// the same through this library: trailing blanks are dropped (the Windows
// documentation does not settle whether they survive) and the escapes only
// the Windows formatter knows ("%b", "%t", "%r") become ones both read alike.
// What no rewrite can keep is reported: text after "%0", inserts above 99 and
// "*" widths, a "%" alone at a line's end.
#ifndef TQMSG_PORT_TEXT_CONVERSION_H
#define TQMSG_PORT_TEXT_CONVERSION_H

#include <set>
#include <string>
#include <vector>

#include "PortReport.h"

// What the conversion of one file learns as it goes: the insert formats that
// the library's formatter accepts, so each is classified once.
struct TextConversionState {
    std::set<std::string> acceptedFormats;  // as they stand in a line: "!d!"
};

// `lineNumbers` gives the file line of each of `lines`, for the warnings.
std::vector<std::string> convertTextLines(const std::vector<std::string>& lines,
                                          const std::vector<int>& lineNumbers,
                                          TextConversionState& state, PortReport& report);

#endif  // TQMSG_PORT_TEXT_CONVERSION_H
