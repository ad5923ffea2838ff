// Turns the bytes of a Windows message file into lines of text.
//
// UTF-16 (either byte order, with or without a byte-order mark: its NUL bytes
// give it away) and UTF-8 with a mark become UTF-8 without one. Other input is
// 8-bit text: kept byte for byte, or transcoded from a code page when one is
// named (iconv names: CP1252, CP932, ...). The text ends at the first Ctrl-Z
// (0x1A, the old end-of-file byte); lines end at line feeds, with a carriage
// return before one dropped.
#ifndef TQMSG_PORT_INPUT_DECODER_H
#define TQMSG_PORT_INPUT_DECODER_H

#include <string>
#include <vector>

#include "PortReport.h"

struct DecodedInput {
    std::vector<std::string> lines;  // line n of the file is lines[n - 1]
    std::string encoding;            // what the input was read as, for the report
};

// Decodes `bytes`; `codePage` empty keeps 8-bit input as it is. Throws
// PortError for bytes that do not decode and for NUL characters.
DecodedInput decodeInput(const std::string& bytes, const std::string& codePage, PortReport& report);

// True when iconv can convert from `codePage` to UTF-8.
bool knownCodePage(const std::string& codePage);

#endif  // TQMSG_PORT_INPUT_DECODER_H
