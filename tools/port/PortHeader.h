// The C header of a converted file, under the original file's symbolic
// names: the one the program was written against keeps compiling unchanged,
// whatever names the converted file had to use. Same form as `tqmsg header`:
// one commented #define per name, its value an int.
#ifndef TQMSG_PORT_PORT_HEADER_H
#define TQMSG_PORT_PORT_HEADER_H

#include <string>

#include "PortConverter.h"

// `escape` puts a stored text on one line; `headerPath` names the include guard.
std::string portHeader(const PortResult& result, const std::string& headerPath,
                       std::string (*escape)(const std::string&));

// The text the library stores for `lines` written by writeTextLines.
std::string storedText(const std::vector<std::string>& fileLines);

#endif  // TQMSG_PORT_PORT_HEADER_H
