// A Windows message file resolved: every message with its 32-bit identifier,
// severity, facility and texts per language, as the Windows rules give them.
// Names are still the file's own.
#ifndef TQMSG_PORT_PORTED_FILE_H
#define TQMSG_PORT_PORTED_FILE_H

#include <string>
#include <vector>

// A severity, facility or language that messages use, as the file names it.
struct UsedName {
    std::string name;
    unsigned long value;
    std::string symbol;
};

struct PortedText {
    size_t language;  // index into PortedFile::languages
    int line;         // of the Language= statement
    std::vector<std::string> lines;
    std::vector<int> lineNumbers;
};

struct PortedMessage {
    unsigned long id;          // severity, facility and number composed
    int line;                  // of the MessageId= statement
    size_t severity;           // index into PortedFile::severities
    size_t facility;           // index into PortedFile::facilities
    std::string symbolicName;  // empty when the file gives none
    std::vector<PortedText> texts;
};

struct PortedFile {
    std::vector<UsedName> languages, severities, facilities;  // in order of first use
    std::vector<PortedMessage> messages;                      // in file order
};

// How the undocumented and the documented-but-unused values are taken.
struct ResolveOptions {
    unsigned long applicationFacility = 0;  // 0 as Windows builds give it, or 0xFFF
    unsigned long firstMessageNumber = 1;   // of a facility whose first MessageId is empty
    std::vector<std::pair<std::string, unsigned long>> languageMoves;  // name -> new id
};

#endif  // TQMSG_PORT_PORTED_FILE_H
