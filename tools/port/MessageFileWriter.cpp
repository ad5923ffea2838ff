// Whole message files and the names in them (see MessageFileWriter.h).
#include "MessageFileWriter.h"

#include <strings.h>

#include <cstdio>

#include "MessageTable.h"

namespace {

// A keyword of the reader in the spelling the file uses; the reader matches
// keywords without regard to case, and its constant stays the reference.
std::string spelled(const char* keyword, const char* spelling) {
    if (strcasecmp(keyword, spelling) != 0) throw std::logic_error("keyword spelling");
    return spelling;
}

const std::string& messageIdKeyword() {
    static const std::string keyword = spelled(MessageTable::MESSAGE_ID, "MessageId");
    return keyword;
}
const std::string& severityKeyword() {
    static const std::string keyword = spelled(MessageTable::MESSAGE_SEVERITY, "Severity");
    return keyword;
}
const std::string& facilityKeyword() {
    static const std::string keyword = spelled(MessageTable::MESSAGE_FACILITY, "Facility");
    return keyword;
}
const std::string& symbolicNameKeyword() {
    static const std::string keyword = spelled(MessageTable::MESSAGE_SYMBOLIC_NAME, "SymbolicName");
    return keyword;
}
const std::string& languageKeyword() {
    static const std::string keyword = spelled(MessageTable::MESSAGE_LANGUAGE, "Language");
    return keyword;
}

// The keywords that classify the line a name of `role` stands on, in the
// reader's order, up to the one the line is meant to match. The top-level
// keywords count for a language: its line also opens continuation blocks.
std::vector<const char*> keywordsBefore(NameRole role) {
    switch (role) {
        case NameRole::Facility:
            return {};
        case NameRole::Severity:
            return {MessageTable::MESSAGE_FACILITY};
        case NameRole::Language:
            return {MessageTable::MESSAGE_FACILITY, MessageTable::MESSAGE_SEVERITY,
                    MessageTable::LANGUAGE_NAMES,   MessageTable::FACILITY_NAMES,
                    MessageTable::SEV_NAMES,        MessageTable::MESSAGE_ID_TYPEDEF};
        case NameRole::SymbolicName:
            break;
    }
    // A symbolic name must hold none of the header keywords, its own included.
    return {MessageTable::MESSAGE_FACILITY, MessageTable::MESSAGE_SEVERITY,
            MessageTable::MESSAGE_LANGUAGE, MessageTable::MESSAGE_OUTPUT_BASE,
            MessageTable::MESSAGE_SYMBOLIC_NAME};
}

std::string lowerCase(const std::string& text) {
    std::string lower = text;
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return lower;
}

std::string hex(long number) {
    char buffer[16];  // "0x" + 8 digits
    std::snprintf(buffer, sizeof(buffer), "0x%lX", number & 0xFFFFFFFFL);
    return buffer;
}

void checkName(const std::string& name, NameRole role) {
    if (!writableName(name, role)) throw UnwritableText("name not readable back: " + name);
}

void writeList(std::ostream& out, const std::string& keyword, const std::vector<NameEntry>& entries,
               NameRole role) {
    if (entries.empty()) return;
    out << keyword << '=' << MessageTable::HEADER_NAMES_BEGIN << '\n';
    for (const NameEntry& entry : entries) {
        checkName(entry.name, role);
        out << "    " << entry.name << '=' << hex(entry.number);
        if (!entry.symbol.empty()) {
            checkName(entry.symbol, NameRole::Facility);
            out << ':' << entry.symbol;
        }
        out << '\n';
    }
    out << MessageTable::HEADER_NAMES_END << "\n\n";
}

void writeText(std::ostream& out, const LanguageText& text) {
    checkName(text.language, NameRole::Language);
    out << languageKeyword() << '=' << text.language << '\n';
    for (const std::string& line : writeTextLines(text.lines, text.finalLineBreak)) {
        out << line << '\n';
    }
    out << MessageTable::MESSAGE_END_MARKER << '\n';
}

void writeDefinition(std::ostream& out, const MessageDefinition& definition) {
    checkName(definition.severity, NameRole::Severity);
    checkName(definition.facility, NameRole::Facility);
    checkName(definition.symbolicName, NameRole::SymbolicName);
    if (definition.texts.empty()) throw UnwritableText("a message without text");
    out << messageIdKeyword() << '=' << hex(definition.code) << '\n'
        << severityKeyword() << '=' << definition.severity << '\n'
        << facilityKeyword() << '=' << definition.facility << '\n'
        << symbolicNameKeyword() << '=' << definition.symbolicName << '\n';
    for (const LanguageText& text : definition.texts) writeText(out, text);
    out << '\n';
}

}  // namespace

std::string misreadKeyword(const std::string& name, NameRole role) {
    std::string lower = lowerCase(name);
    for (const char* keyword : keywordsBefore(role)) {
        if (lower.find(keyword) != std::string::npos) return keyword;
    }
    return "";
}

bool writableName(const std::string& name, NameRole role) {
    if (name.empty() || name.find_first_of(" \t\r\n=();") != std::string::npos) return false;
    return misreadKeyword(name, role).empty();
}

void writeMessageFile(std::ostream& out, const MessageFileContent& content) {
    for (const std::string& comment : content.comments) {
        out << MessageTable::COMMENT_PREFIX << ' ' << comment << '\n';
    }
    if (!content.comments.empty()) out << '\n';
    writeList(out, spelled(MessageTable::LANGUAGE_NAMES, "LanguageNames"), content.languages,
              NameRole::Language);
    writeList(out, spelled(MessageTable::SEV_NAMES, "SeverityNames"), content.severities,
              NameRole::Severity);
    writeList(out, spelled(MessageTable::FACILITY_NAMES, "FacilityNames"), content.facilities,
              NameRole::Facility);
    for (const MessageDefinition& definition : content.definitions) {
        writeDefinition(out, definition);
    }
}
