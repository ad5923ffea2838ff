// Warnings and errors of a conversion, in the compilers' "FILE:LINE:" form.
#include "PortReport.h"

#include <algorithm>

namespace {

std::string location(const std::string& file, int line) {
    return line > 0 ? file + ":" + std::to_string(line) : file;
}

}  // namespace

void PortReport::warn(int line, WarningKind kind, const std::string& text) {
    warnings_.push_back({line, kind, text});
}

size_t PortReport::count(WarningKind kind) const {
    return static_cast<size_t>(std::count_if(warnings_.begin(), warnings_.end(),
                                             [&](const PortWarning& w) { return w.kind == kind; }));
}

void PortReport::print(std::ostream& out, const std::string& file) const {
    std::vector<PortWarning> sorted = warnings_;
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const PortWarning& a, const PortWarning& b) { return a.line < b.line; });
    for (const PortWarning& warning : sorted) {
        out << location(file, warning.line) << ": warning: " << warning.text << '\n';
    }
}

std::string describeError(const std::string& file, const PortError& error) {
    return location(file, error.line) + ": error: " + error.text;
}
