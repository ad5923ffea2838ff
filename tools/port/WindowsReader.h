// Reads the Windows message-file dialect as documented: statements separated
// by any white space, ";" comments to the end of a line, name lists in any
// layout, MessageId empty, absolute or +n, and each text from the line after
// its Language= statement to a line of exactly ".".
#ifndef TQMSG_PORT_WINDOWS_READER_H
#define TQMSG_PORT_WINDOWS_READER_H

#include "PortReport.h"
#include "WindowsSource.h"

// Throws PortError for input that is not in the dialect; warns about what it
// drops (MessageIdTypedef, OutputBase, comments) and about a text ended by
// the end of the file. The lines of message texts are moved out of `lines`.
WindowsSource readWindowsSource(std::vector<std::string>& lines, PortReport& report);

#endif  // TQMSG_PORT_WINDOWS_READER_H
