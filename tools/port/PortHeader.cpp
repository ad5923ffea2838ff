// Header generation for converted files.
#include "PortHeader.h"

#include <utility>

#include "CHeaderWriter.h"
#include "TextUnits.h"

namespace {

long languageNumber(const MessageFileContent& content, const std::string& name) {
    for (const NameEntry& entry : content.languages) {
        if (entry.name == name) return entry.number;
    }
    return 0;
}

// The text in `languageId`, else in the lowest language that has one.
const LanguageText* commentText(const MessageFileContent& content,
                                const MessageDefinition& definition, long languageId) {
    const LanguageText* best = nullptr;
    for (const LanguageText& text : definition.texts) {
        long number = languageNumber(content, text.language);
        if (number == languageId) return &text;
        if (!best || number < languageNumber(content, best->language)) best = &text;
    }
    return best;
}

}  // namespace

std::string storedText(const std::vector<std::string>& fileLines) {
    std::string text;
    for (const std::string& line : fileLines) {
        size_t first = 0, last = line.size();
        while (first < last && isBlankChar(line[first])) ++first;
        while (last > first && isBlankChar(line[last - 1])) --last;
        if (&line != &fileLines.front()) text += '\n';
        text.append(line, first, last - first);
    }
    return text;
}

std::string portHeader(const PortResult& result, const std::string& headerPath,
                       std::string (*escape)(const std::string&)) {
    const MessageFileContent& content = result.content;
    long languageId = content.languages.empty() ? 0 : content.languages.front().number;
    std::vector<CHeaderEntry> entries;
    for (const HeaderName& name : result.headerNames) {
        const MessageDefinition& definition = content.definitions[name.definition];
        const LanguageText* text = commentText(content, definition, languageId);
        std::string stored =
            text ? storedText(writeTextLines(text->lines, text->finalLineBreak)) : "";
        entries.push_back({name.name, static_cast<uint32_t>(name.id), escape(stored)});
    }
    return writeCHeader("port", languageId, headerPath, std::move(entries));
}
