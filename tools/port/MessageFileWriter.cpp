// Whole message files and the names in them (see MessageFileWriter.h).
#include "MessageFileWriter.h"

#include <strings.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "Caseless.h"
#include "HexText.h"
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
const std::vector<const char*>& keywordsBefore(NameRole role) {
    static const std::vector<const char*> facility;
    static const std::vector<const char*> severity{MessageTable::MESSAGE_FACILITY};
    static const std::vector<const char*> language{
        MessageTable::MESSAGE_FACILITY, MessageTable::MESSAGE_SEVERITY,
        MessageTable::LANGUAGE_NAMES,   MessageTable::FACILITY_NAMES,
        MessageTable::SEV_NAMES,        MessageTable::MESSAGE_ID_TYPEDEF};
    // A symbolic name must hold none of the header keywords, its own included.
    static const std::vector<const char*> symbolicName{
        MessageTable::MESSAGE_FACILITY, MessageTable::MESSAGE_SEVERITY,
        MessageTable::MESSAGE_LANGUAGE, MessageTable::MESSAGE_OUTPUT_BASE,
        MessageTable::MESSAGE_SYMBOLIC_NAME};
    switch (role) {
        case NameRole::Facility:
            return facility;
        case NameRole::Severity:
            return severity;
        case NameRole::Language:
            return language;
        case NameRole::SymbolicName:
            break;
    }
    return symbolicName;
}

// True for the first letters of the reader's keywords.
bool startsKeyword(char lowerCaseLetter) {
    static const std::array<bool, 256> starts = [] {
        std::array<bool, 256> table{};
        for (NameRole role : {NameRole::SymbolicName, NameRole::Language, NameRole::Severity}) {
            for (const char* keyword : keywordsBefore(role)) {
                table[static_cast<unsigned char>(keyword[0])] = true;
            }
        }
        return table;
    }();
    return starts[static_cast<unsigned char>(lowerCaseLetter)];
}

// True for the characters that end a name on its line, or the line itself.
bool splitsName(char c) {
    switch (c) {
        case ' ':
        case '\t':
        case '\r':
        case '\n':
        case '\0':
        case '=':
        case '(':
        case ')':
        case ';':
            return true;
        default:
            return false;
    }
}

// The index in `keywords` of the first one, in the reader's order, that
// stands in `name` at or after `from`; keywords.size() when none does.
size_t firstKeywordFrom(const std::string& name, const std::vector<const char*>& keywords,
                        size_t from) {
    size_t found = keywords.size();  // the first in the reader's order found so far
    for (size_t at = from; at < name.size() && found > 0; ++at) {
        const char c = asciiLower(name[at]);
        if (!startsKeyword(c)) continue;
        for (size_t k = 0; k < found; ++k) {
            if (keywords[k][0] == c && startsCaseless(name, at, keywords[k])) {
                found = k;
                break;
            }
        }
    }
    return found;
}

// The length of the longest keyword a name is searched for.
size_t longestKeyword() {
    static const size_t longest = [] {
        size_t length = 0;
        for (NameRole role : {NameRole::SymbolicName, NameRole::Language, NameRole::Severity}) {
            for (const char* keyword : keywordsBefore(role)) {
                length = std::max(length, std::strlen(keyword));
            }
        }
        return length;
    }();
    return longest;
}

// The longest name written: a list entry holds two, with its indent, "=",
// number and ":", on one line the reader can read.
const size_t MAX_NAME = MAX_FILE_LINE / 2 - 16;

// True when `name` can be written in `role`, given that its first `clean`
// characters hold nothing that splits a name and that no keyword starts
// before `from`.
bool writableFrom(const std::string& name, NameRole role, size_t clean, size_t from) {
    if (name.size() > MAX_NAME) return false;
    for (size_t at = clean; at < name.size(); ++at) {
        if (splitsName(name[at])) return false;
    }
    const std::vector<const char*>& keywords = keywordsBefore(role);
    return firstKeywordFrom(name, keywords, from) == keywords.size();
}

[[noreturn]] void rejectName(const std::string& name) {
    if (name.size() > MAX_NAME) {
        throw UnwritableText("name longer than " + std::to_string(MAX_NAME) +
                             " characters: " + name.substr(0, 64) + "...");
    }
    throw UnwritableText("name not readable back: " + name);
}

void checkName(const std::string& name, NameRole role) {
    if (!writableName(name, role)) rejectName(name);
}

size_t commonPrefixLength(const std::string& a, const std::string& b) {
    size_t length = 0;
    while (length < a.size() && length < b.size() && a[length] == b[length]) ++length;
    return length;
}

// Checks each name against the last one of its role that passed: a file
// repeats its few language, severity and facility names in every definition,
// and consecutive symbolic names (made-up ones above all) share a long prefix,
// so only what follows the shared part, and a keyword's length before its
// end, is searched.
class NameChecks {
public:
    void operator()(const std::string& name, NameRole role) {
        std::string& last = last_[static_cast<int>(role)];
        if (!name.empty() && name == last) return;
        size_t shared = commonPrefixLength(name, last);
        // A keyword starting before `from` would end inside the shared part.
        size_t from = shared >= longestKeyword() ? shared + 1 - longestKeyword() : 0;
        if (name.empty() || !writableFrom(name, role, shared, from)) rejectName(name);
        last = name;
    }

private:
    std::string last_[4];  // by role; "" until a name of the role passed
};

void writeList(std::ostream& out, const std::string& keyword, const std::vector<NameEntry>& entries,
               NameRole role) {
    if (entries.empty()) return;
    out << keyword << '=' << MessageTable::HEADER_NAMES_BEGIN << '\n';
    for (const NameEntry& entry : entries) {
        checkName(entry.name, role);
        out << "    " << entry.name << '='
            << hex(static_cast<unsigned long>(entry.number) & 0xFFFFFFFFUL);
        if (!entry.symbol.empty()) {
            checkName(entry.symbol, NameRole::Facility);
            out << ':' << entry.symbol;
        }
        out << '\n';
    }
    out << MessageTable::HEADER_NAMES_END << "\n\n";
}

// Appends "keyword=value" and a line feed.
void appendStatement(std::string& out, const std::string& keyword, const std::string& value) {
    out.append(keyword).append(1, '=').append(value).append(1, '\n');
}

void appendText(std::string& out, const LanguageText& text, NameChecks& check) {
    check(text.language, NameRole::Language);
    appendStatement(out, languageKeyword(), text.language);
    for (const std::string& line : writeTextLines(text.lines, text.finalLineBreak)) {
        out.append(line).append(1, '\n');
    }
    out.append(MessageTable::MESSAGE_END_MARKER).append(1, '\n');
}

// A definition is composed in memory and written at once: a stream pays for
// every insertion.
void appendDefinition(std::string& out, const MessageDefinition& definition, NameChecks& check) {
    check(definition.severity, NameRole::Severity);
    check(definition.facility, NameRole::Facility);
    check(definition.symbolicName, NameRole::SymbolicName);
    if (definition.texts.empty()) throw UnwritableText("a message without text");
    appendStatement(out, messageIdKeyword(),
                    hex(static_cast<unsigned long>(definition.code) & 0xFFFFFFFFUL));
    appendStatement(out, severityKeyword(), definition.severity);
    appendStatement(out, facilityKeyword(), definition.facility);
    appendStatement(out, symbolicNameKeyword(), definition.symbolicName);
    for (const LanguageText& text : definition.texts) appendText(out, text, check);
    out.append(1, '\n');
}

}  // namespace

std::string misreadKeyword(const std::string& name, NameRole role) {
    const std::vector<const char*>& keywords = keywordsBefore(role);
    size_t found = firstKeywordFrom(name, keywords, 0);
    return found < keywords.size() ? keywords[found] : "";
}

std::string unspoiledName(const std::string& name, NameRole role) {
    const std::vector<const char*>& keywords = keywordsBefore(role);
    std::string result;
    result.reserve(name.size() + 8);
    for (size_t at = 0; at < name.size(); ++at) {
        result += name[at];
        const char c = asciiLower(name[at]);
        if (!startsKeyword(c)) continue;
        for (const char* keyword : keywords) {
            if (keyword[0] == c && startsCaseless(name, at, keyword)) {
                result += '_';
                break;
            }
        }
    }
    return result;
}

bool writableName(const std::string& name, NameRole role) {
    return !name.empty() && writableFrom(name, role, 0, 0);
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
    NameChecks check;
    std::string block;
    for (const MessageDefinition& definition : content.definitions) {
        block.clear();
        appendDefinition(block, definition, check);
        out.write(block.data(), static_cast<std::streamsize>(block.size()));
    }
}
