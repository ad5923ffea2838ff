// Warnings and errors of a conversion, in the compilers' "FILE:LINE:" form.
#include "PortReport.h"

#include <algorithm>

namespace {

std::string location(const std::string& file, int line) {
    return line > 0 ? file + ":" + std::to_string(line) : file;
}

}  // namespace

void PortReport::warn(int line, WarningKind kind, std::string text) {
    warnings_.push_back({line, kind, std::move(text)});
}

size_t PortReport::count(WarningKind kind) const {
    return static_cast<size_t>(std::count_if(warnings_.begin(), warnings_.end(),
                                             [&](const PortWarning& w) { return w.kind == kind; }));
}

void PortReport::print(std::ostream& out, const std::string& file,
                       std::string (*escape)(const std::string&)) const {
    std::vector<const PortWarning*> sorted;
    sorted.reserve(warnings_.size());
    for (const PortWarning& warning : warnings_) sorted.push_back(&warning);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const PortWarning* a, const PortWarning* b) { return a->line < b->line; });
    // One write: standard error flushes after every insertion.
    std::string text, line;
    for (const PortWarning* warning : sorted) {
        line.assign(file);
        if (warning->line > 0) line.append(1, ':').append(std::to_string(warning->line));
        line.append(": warning: ").append(warning->text);
        text.append(escape ? escape(line) : line).append(1, '\n');
    }
    out << text;
}

std::string describeError(const std::string& file, const PortError& error) {
    return location(file, error.line) + ": error: " + error.text;
}
