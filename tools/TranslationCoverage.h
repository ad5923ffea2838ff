// How many of a file's messages each of its declared languages has a text
// for: there is no fallback between languages, so a missing text fails in
// that language only.
#ifndef TQMSG_TOOL_TRANSLATION_COVERAGE_H
#define TQMSG_TOOL_TRANSLATION_COVERAGE_H

#include <string>
#include <vector>

#include "FileMessages.h"

struct LanguageCoverage {
    long languageId;
    std::string language;              // its declared name
    size_t texts;                      // messages with a text in it
    size_t messages;                   // messages of the file
    std::vector<std::string> missing;  // names of the others, in file order
};

// One entry per language the file declares, in declaration order.
std::vector<LanguageCoverage> coverageOf(MessageTable& table,
                                         const std::vector<FileMessage>& messages);

// "French: 3 of 4 messages (75%)", the percentage rounded down so that
// 100% means complete.
std::string coverageLine(const LanguageCoverage& coverage);

#endif  // TQMSG_TOOL_TRANSLATION_COVERAGE_H
