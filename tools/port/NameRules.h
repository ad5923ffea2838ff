// The names of a converted file: symbolic names the library can keep, unique
// in the file, made up where the Windows file gives none; and the language,
// severity and facility names its lists declare. Every change is reported.
#ifndef TQMSG_PORT_NAME_RULES_H
#define TQMSG_PORT_NAME_RULES_H

#include <string>
#include <vector>

#include "MessageFileWriter.h"
#include "PortReport.h"
#include "PortedFile.h"
#include "WindowsSource.h"

struct FileNames {
    std::vector<std::string> symbolicNames;  // written, per message
    std::vector<std::string> headerNames;    // for the C header, per message; "" for none
    std::vector<std::string> languages, severities, facilities;  // written, per used name
    std::vector<NameEntry> languageEntries, severityEntries, facilityEntries;  // the lists
};

// `fileName` is the input's path (its base name prefixes made-up names);
// `prefix` goes before every written symbolic name.
FileNames nameEverything(const PortedFile& file, const std::string& fileName,
                         const std::string& prefix, PortReport& report);

#endif  // TQMSG_PORT_NAME_RULES_H
