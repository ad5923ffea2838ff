// The converter: a Windows message file in, a file in this library's dialect
// out, with the same identifiers, languages and texts (a line feed for each
// line break), every definition fully explicit so no counting rule can differ.
#ifndef TQMSG_PORT_PORT_CONVERTER_H
#define TQMSG_PORT_PORT_CONVERTER_H

#include <string>
#include <vector>

#include "MessageFileWriter.h"
#include "PortReport.h"
#include "PortedFile.h"

struct PortOptions {
    ResolveOptions resolve;
    std::string codePage;        // 8-bit input is transcoded from it; "" keeps it
    bool finalLineBreak = true;  // false: no line feed after a text's last line
    std::string namePrefix;      // before every written symbolic name
    bool customerBit = false;    // asked for bit 29: refused, the library cannot carry it
};

// A symbolic name of the original file with its identifier, for a C header.
struct HeaderName {
    std::string name;
    unsigned long id;
    size_t definition;  // index into content.definitions
};

struct PortResult {
    MessageFileContent content;
    std::vector<HeaderName> headerNames;  // in file order, original names
    std::string encoding;                 // what the input was read as
};

// Converts the bytes of the file `fileName`. Throws PortError when the file
// cannot be converted; warnings go to `report`.
PortResult portMessageFile(const std::string& bytes, const std::string& fileName,
                           const PortOptions& options, PortReport& report);

#endif  // TQMSG_PORT_PORT_CONVERTER_H
