// Coverage of a file's messages per declared language.
#include "TranslationCoverage.h"

#include "MessageTable.h"

namespace {

bool hasText(const FileMessage& message, long languageId) {
    for (const TextOfLanguage& text : message.texts) {
        if (text.languageId == languageId) return true;
    }
    return false;
}

}  // namespace

std::vector<LanguageCoverage> coverageOf(MessageTable& table,
                                         const std::vector<FileMessage>& messages) {
    std::vector<LanguageCoverage> coverage;
    for (long languageId : table.declaredLanguages) {
        LanguageCoverage language{
            languageId, languageName(table, languageId), 0, messages.size(), {}};
        for (const FileMessage& message : messages) {
            if (hasText(message, languageId)) {
                ++language.texts;
            } else {
                language.missing.push_back(message.name);
            }
        }
        coverage.push_back(std::move(language));
    }
    return coverage;
}

std::string coverageLine(const LanguageCoverage& coverage) {
    size_t percent = coverage.messages == 0 ? 100 : coverage.texts * 100 / coverage.messages;
    return coverage.language + ": " + std::to_string(coverage.texts) + " of " +
           std::to_string(coverage.messages) + " messages (" + std::to_string(percent) + "%)";
}
