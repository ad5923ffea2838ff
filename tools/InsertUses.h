// Which inserts a message text uses and how: the tool passes an argument as
// an integer only when every use of its insert has an integer conversion.
#ifndef TQMSG_TOOL_INSERT_USES_H
#define TQMSG_TOOL_INSERT_USES_H

#include <set>
#include <string>

struct InsertUses {
    std::set<int> used;     // insert numbers that occur in the text
    std::set<int> textual;  // ... with a conversion that is not d i u x X o c
                            // (the default "s" included)

    bool isInteger(int insert) const { return used.count(insert) && !textual.count(insert); }
    int highest() const { return used.empty() ? 0 : *used.rbegin(); }
};

// Scans `text` as the formatter reads it: "%%" and other escapes are skipped,
// "%N" and "%N!format!" are inserts (N of one to three digits).
InsertUses scanInserts(const std::string& text);

#endif  // TQMSG_TOOL_INSERT_USES_H
