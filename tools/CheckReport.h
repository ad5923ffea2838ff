// What `tqmsg check` found, written as it is found (text) or as one JSON
// document at the end (--format json).
#ifndef TQMSG_TOOL_CHECK_REPORT_H
#define TQMSG_TOOL_CHECK_REPORT_H

#include <string>
#include <vector>

#include "TranslationCoverage.h"

struct Finding {
    enum Severity { WARNING, ERROR };
    Severity severity;
    std::string file;
    int line;             // 0 when the finding has no line of its own
    std::string message;  // the message's name, "" for a finding about the whole file
    std::string text;
};

// A file that loaded, with the counts of what it added to the store.
struct LoadedFile {
    std::string file;
    size_t messages;
    size_t languages;
    size_t texts;
    std::vector<LanguageCoverage> coverage;  // empty for a file with one language
};

class CheckReport {
public:
    CheckReport(bool json, bool listMissing) : json_(json), listMissing_(listMissing) {}

    // Text: "FILE: ok, ..." and the coverage lines on standard output.
    void loaded(LoadedFile file);
    // A file the library did not load; the failure is already on standard error.
    void loadFailed(const std::string& file, const std::string& failure);
    // Text: one line on standard error.
    void add(Finding finding);
    // JSON: writes the document on standard output.
    void finish() const;

    size_t errors() const { return errors_; }
    size_t warnings() const { return warnings_; }

private:
    void writeLoadedText(const LoadedFile& file) const;
    void writeJson() const;

    bool json_;
    bool listMissing_;
    size_t errors_ = 0;
    size_t warnings_ = 0;
    std::vector<LoadedFile> loaded_;
    std::vector<std::string> failed_;
    std::vector<Finding> findings_;
};

#endif  // TQMSG_TOOL_CHECK_REPORT_H
