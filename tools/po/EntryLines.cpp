// The search for context lines.
#include "EntryLines.h"

#include <fstream>

namespace {

// The name in a line 'msgctxt "NAME"' (NAME without quotes or backslashes).
bool contextOn(const std::string& line, std::string& name) {
    const std::string keyword = "msgctxt \"";
    if (line.compare(0, keyword.size(), keyword) != 0) return false;
    std::size_t close = line.find('"', keyword.size());
    if (close == std::string::npos || line.find('\\') != std::string::npos) return false;
    if (line.find_first_not_of(" \t\r", close + 1) != std::string::npos) return false;
    name = line.substr(keyword.size(), close - keyword.size());
    return true;
}

}  // namespace

std::map<std::string, int> entryLines(const std::string& poPath) {
    std::map<std::string, int> lines;
    std::ifstream in(poPath);
    std::string line, pending;
    bool waiting = false;  // a context was seen; its msgstr line comes next
    for (int number = 1; std::getline(in, line); ++number) {
        std::string name;
        if (contextOn(line, name)) {
            pending = name;
            waiting = true;
        } else if (waiting && line.compare(0, 6, "msgstr") == 0) {
            lines.emplace(pending, number);
            waiting = false;
        }
    }
    return lines;
}
