// Symbolic names and (language, identifier) pairs that two message files
// checked together both define. Loaded one after the other, the second file
// would either fail with the store's refusal or quietly add its texts to the
// first file's message; this finds the clash before that load, naming both
// files and lines.
#ifndef TQMSG_TOOL_DEFINITION_CLASHES_H
#define TQMSG_TOOL_DEFINITION_CLASHES_H

#include <string>
#include <vector>

struct DefinitionClash {
    std::string description;  // what both define, in words
    std::string firstFile;
    int firstLine;
    std::string secondFile;
    int secondLine;
};

// Each file is loaded alone, in a child process of its own (the store is
// process-wide and keeps what it is given), and the definitions its load
// recorded are compared. A file that does not load alone contributes the
// definitions stored before its error; its error is left to the real load.
std::vector<DefinitionClash> findDefinitionClashes(const std::vector<std::string>& files);

#endif  // TQMSG_TOOL_DEFINITION_CLASHES_H
