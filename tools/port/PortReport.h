// What the converter tells its user: warnings about every rename, made-up
// name, dropped construct and undocumented case it met, each with its line;
// and the error that stops a conversion.
#ifndef TQMSG_PORT_PORT_REPORT_H
#define TQMSG_PORT_PORT_REPORT_H

#include <ostream>
#include <string>
#include <vector>

// The classes of warnings, for summaries and tests.
enum class WarningKind {
    Renamed,       // a name the library cannot keep, or a duplicate
    MadeUpName,    // a message without a symbolic name
    Dropped,       // a construct the library's dialect has no use for
    Undocumented,  // a case the Windows documentation does not settle
    Unportable,    // a text the library formats differently, not rewritten
};

struct PortWarning {
    int line;  // 1-based; 0 for the file as a whole
    WarningKind kind;
    std::string text;
};

// A file that cannot be converted: the line (0 for the whole file) and why.
struct PortError {
    int line;
    std::string text;
};

class PortReport {
public:
    void warn(int line, WarningKind kind, std::string text);
    const std::vector<PortWarning>& warnings() const { return warnings_; }
    // The number of warnings of `kind`.
    size_t count(WarningKind kind) const;
    // One "FILE:LINE: warning: TEXT" line per warning, by line; `escape`, if
    // given, makes each line safe to print (texts quote raw input bytes).
    void print(std::ostream& out, const std::string& file,
               std::string (*escape)(const std::string&) = nullptr) const;

private:
    std::vector<PortWarning> warnings_;
};

// "FILE:LINE: error: TEXT" ("FILE: error: TEXT" for line 0).
std::string describeError(const std::string& file, const PortError& error);

#endif  // TQMSG_PORT_PORT_REPORT_H
