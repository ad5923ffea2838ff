// Writing the findings and the coverage of `tqmsg check`.
#include "CheckReport.h"

#include <iostream>

#include "Diagnostics.h"
#include "TextEscape.h"

namespace {

const char* severityWord(Finding::Severity severity) {
    return severity == Finding::ERROR ? "error" : "warning";
}

std::string findingLine(const Finding& finding) {
    std::string place = finding.file;
    if (finding.line > 0) place += ":" + std::to_string(finding.line);
    std::string subject = finding.message.empty() ? "" : finding.message + ": ";
    return place + ": " + severityWord(finding.severity) + ": " + subject + finding.text;
}

std::string jsonStrings(const std::vector<std::string>& texts) {
    std::string list;
    for (const std::string& text : texts) list += (list.empty() ? "" : ", ") + jsonString(text);
    return "[" + list + "]";
}

void writeCoverageJson(const std::vector<LanguageCoverage>& coverage) {
    const char* separator = "";
    for (const LanguageCoverage& language : coverage) {
        std::cout << separator << "\n        {\"language\": " << jsonString(language.language)
                  << ", \"id\": " << language.languageId << ", \"texts\": " << language.texts
                  << ", \"messages\": " << language.messages
                  << ", \"missing\": " << jsonStrings(language.missing) << "}";
        separator = ",";
    }
}

void writeFileJson(const LoadedFile& file) {
    std::cout << "{\"file\": " << jsonString(file.file) << ", \"loaded\": true"
              << ", \"messages\": " << file.messages << ", \"languages\": " << file.languages
              << ", \"texts\": " << file.texts << ", \"coverage\": [";
    writeCoverageJson(file.coverage);
    std::cout << (file.coverage.empty() ? "]}" : "\n      ]}");
}

void writeFindingJson(const Finding& finding) {
    std::cout << "{\"severity\": \"" << severityWord(finding.severity)
              << "\", \"file\": " << jsonString(finding.file) << ", \"line\": " << finding.line
              << ", \"message\": " << jsonString(finding.message)
              << ", \"text\": " << jsonString(finding.text) << "}";
}

}  // namespace

void CheckReport::loaded(LoadedFile file) {
    if (!json_) writeLoadedText(file);
    for (const LanguageCoverage& language : file.coverage) {
        if (language.missing.empty()) continue;
        add({Finding::WARNING, file.file, 0, "",
             language.language + " has no text for " + std::to_string(language.missing.size()) +
                 " of " + std::to_string(language.messages) + " messages"});
    }
    if (json_) loaded_.push_back(std::move(file));
}

void CheckReport::writeLoadedText(const LoadedFile& file) const {
    std::cout << file.file << ": ok, " << file.messages << " messages, " << file.languages
              << " languages, " << file.texts << " texts\n";
    for (const LanguageCoverage& language : file.coverage) {
        std::cout << file.file << ": " << coverageLine(language) << '\n';
        if (!listMissing_) continue;
        for (const std::string& name : language.missing) {
            std::cout << file.file << ": " << language.language << ": missing " << name << '\n';
        }
    }
}

void CheckReport::loadFailed(const std::string& file, const std::string& failure) {
    ++errors_;
    failed_.push_back(file);
    if (json_) findings_.push_back({Finding::ERROR, file, 0, "", failure});
}

void CheckReport::add(Finding finding) {
    ++(finding.severity == Finding::ERROR ? errors_ : warnings_);
    if (json_) {
        findings_.push_back(std::move(finding));
    } else {
        printError(findingLine(finding));
    }
}

void CheckReport::finish() const {
    if (json_) writeJson();
}

void CheckReport::writeJson() const {
    std::cout << "{\n  \"files\": [";
    const char* separator = "\n    ";
    for (const LoadedFile& file : loaded_) {
        std::cout << separator;
        writeFileJson(file);
        separator = ",\n    ";
    }
    for (const std::string& file : failed_) {
        std::cout << separator << "{\"file\": " << jsonString(file) << ", \"loaded\": false}";
        separator = ",\n    ";
    }
    std::cout << "\n  ],\n  \"findings\": [";
    separator = "\n    ";
    for (const Finding& finding : findings_) {
        std::cout << separator;
        writeFindingJson(finding);
        separator = ",\n    ";
    }
    std::cout << "\n  ],\n  \"errors\": " << errors_ << ",\n  \"warnings\": " << warnings_
              << "\n}\n";
}
