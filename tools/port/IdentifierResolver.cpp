// Name tables, carry-over and message numbering of the Windows dialect.
#include "IdentifierResolver.h"

#include <map>
#include <set>

#include "Caseless.h"
#include "HexText.h"
#include "MessageTable.h"

namespace {

// The names of one kind the file may use, and the ones its messages use.
class NameTable {
public:
    NameTable(const char* kind, unsigned long maximum) : kind_(kind), maximum_(maximum) {}

    void declare(const UsedName& name, int line) {
        if (name.value > maximum_) {
            throw PortError{line, std::string(kind_) + " " + name.name + "=" + hex(name.value) +
                                      " is out of range (0 to " + hex(maximum_) + ")"};
        }
        declared_[lowerCase(name.name)] = name;
        lastName_.clear();
    }
    // Changes the value of a declared name; false when there is none.
    bool move(const std::string& name, unsigned long value) {
        auto found = declared_.find(lowerCase(name));
        if (found == declared_.end()) return false;
        found->second.value = value;
        lastName_.clear();
        return true;
    }
    // The index in `used` of the declared `name`; throws when undeclared.
    size_t use(const std::string& name, int line, std::vector<UsedName>& used) {
        // Messages name the same few severities, facilities and languages.
        if (!name.empty() && name == lastName_) return lastIndex_;
        auto found = declared_.find(lowerCase(name));
        if (found == declared_.end()) {
            throw PortError{line, std::string(kind_) + " name not declared: " + name};
        }
        const UsedName& declared = found->second;
        auto key = std::make_pair(lowerCase(declared.name), declared.value);
        auto index = usedIndex_.find(key);
        if (index == usedIndex_.end()) {
            used.push_back(declared);
            index = usedIndex_.emplace(key, used.size() - 1).first;
        }
        lastName_ = name;
        lastIndex_ = index->second;
        return lastIndex_;
    }

private:
    const char* kind_;
    unsigned long maximum_;
    std::map<std::string, UsedName> declared_;
    std::map<std::pair<std::string, unsigned long>, size_t> usedIndex_;
    std::string lastName_;  // the name used last, as written, and its index;
    size_t lastIndex_ = 0;  // "" after a declaration changed the table
};

class Resolver {
public:
    Resolver(const ResolveOptions& options, PortReport& report)
        : options_(options), report_(report) {
        severities_.declare({MessageTable::SEV_SUCCESS, 0, ""}, 0);
        severities_.declare({MessageTable::SEV_INFORMATIONAL, 1, ""}, 0);
        severities_.declare({MessageTable::SEV_WARNING, 2, ""}, 0);
        severities_.declare({MessageTable::SEV_ERROR, 3, ""}, 0);
        facilities_.declare({"System", 0xFF, ""}, 0);
        facilities_.declare(
            {MessageTable::DEFAULT_FIRST_MESSAGE_FACILITY, options.applicationFacility, ""}, 0);
        languages_.declare({MessageTable::DEFAULT_FIRST_MESSAGE_LANGUAGE, 1, "MSG00001"}, 0);
        applyLanguageMoves();
        if (options.firstMessageNumber > 0xFFFF) {
            throw PortError{0, "the first message number " + hex(options.firstMessageNumber) +
                                   " is out of range (0 to 0xFFFF)"};
        }
    }

    PortedFile resolve(WindowsSource& source) {
        for (const SourceItem& item : source.order) {
            if (item.isEntry) {
                declare(source.entries[item.index]);
            } else {
                define(source.definitions[item.index]);
            }
        }
        checkUniquePairs();
        reportUnusedMoves();
        return std::move(file_);
    }

private:
    void declare(const SourceEntry& entry) {
        UsedName name{entry.name, entry.number, entry.symbol};
        if (entry.kind == ListKind::Severity) severities_.declare(name, entry.line);
        if (entry.kind == ListKind::Facility) facilities_.declare(name, entry.line);
        if (entry.kind == ListKind::Language) {
            languages_.declare(name, entry.line);
            applyLanguageMoves();
        }
    }

    void applyLanguageMoves() {
        for (auto& moved : options_.languageMoves) languages_.move(moved.first, moved.second);
    }

    // Moves the texts of `definition` into the resolved message.
    void define(SourceDefinition& definition) {
        if (definition.texts.empty()) {
            report_.warn(definition.line, WarningKind::Dropped,
                         "a message without any Language= text is dropped");
        }
        if (definition.severity.given()) severity_ = definition.severity.text;
        if (definition.facility.given()) facility_ = definition.facility.text;
        int severityLine = definition.severity.given() ? definition.severity.line : definition.line;
        int facilityLine = definition.facility.given() ? definition.facility.line : definition.line;
        PortedMessage message{0, definition.line, 0, 0, definition.symbolicName.text, {}};
        message.severity = severities_.use(severity_, severityLine, file_.severities);
        message.facility = facilities_.use(facility_, facilityLine, file_.facilities);
        const UsedName& facility = file_.facilities[message.facility];
        unsigned long code = number(definition, facility);
        message.id = file_.severities[message.severity].value << 30 | facility.value << 16 | code;
        for (SourceText& text : definition.texts) {
            size_t language =
                languages_.use(text.language.text, text.language.line, file_.languages);
            message.texts.push_back(
                {language, text.language.line, std::move(text.lines), std::move(text.lineNumbers)});
        }
        if (!message.texts.empty()) file_.messages.push_back(std::move(message));
    }

    unsigned long number(const SourceDefinition& definition, const UsedName& facility) {
        auto last = lastNumber_.find(facility.value);
        bool first = last == lastNumber_.end();
        unsigned long previous = first ? options_.firstMessageNumber - 1 : last->second;
        if (first && definition.request != IdRequest::Absolute) {
            report_.warn(definition.line, WarningKind::Undocumented,
                         "the first MessageId of facility " + facility.name +
                             " has no absolute value: its numbers start at " +
                             std::to_string(options_.firstMessageNumber));
        }
        unsigned long code = definition.request == IdRequest::Absolute ? definition.number
                             : definition.request == IdRequest::Relative
                                 ? previous + definition.number
                                 : previous + 1;
        if (code > 0xFFFF) {
            throw PortError{definition.line,
                            "message number " + hex(code) + " is out of range (0 to 0xFFFF)"};
        }
        lastNumber_[facility.value] = code;
        return code;
    }

    void reportUnusedMoves() {
        for (auto& moved : options_.languageMoves) {
            bool used = false;
            for (const UsedName& language : file_.languages) {
                used = used || lowerCase(language.name) == lowerCase(moved.first);
            }
            if (!used) {
                report_.warn(0, WarningKind::Dropped,
                             "--language " + moved.first + ": no text of the file is in it");
            }
        }
    }

    // Two texts for one identifier in one language: the library keeps one.
    void checkUniquePairs() {
        std::map<std::pair<unsigned long, unsigned long>, int> seen;
        for (const PortedMessage& message : file_.messages) {
            for (const PortedText& text : message.texts) {
                unsigned long language = file_.languages[text.language].value;
                auto inserted = seen.emplace(std::make_pair(language, message.id), text.line);
                if (!inserted.second) {
                    throw PortError{text.line, "a second text for identifier " + hex(message.id) +
                                                   " in language " + hex(language) +
                                                   " (the first is at line " +
                                                   std::to_string(inserted.first->second) + ")"};
                }
            }
        }
    }

    const ResolveOptions& options_;
    PortReport& report_;
    NameTable severities_{"severity", 3};
    NameTable facilities_{"facility", 0xFFF};
    NameTable languages_{"language", 0xFFFF};
    std::string severity_ = MessageTable::DEFAULT_FIRST_MESSAGE_SEVERITY;
    std::string facility_ = MessageTable::DEFAULT_FIRST_MESSAGE_FACILITY;
    std::map<unsigned long, unsigned long> lastNumber_;
    PortedFile file_;
};

}  // namespace

PortedFile resolveIdentifiers(WindowsSource source, const ResolveOptions& options,
                              PortReport& report) {
    return Resolver(options, report).resolve(source);
}
