// Renaming, made-up names and the name lists of a converted file.
#include "NameRules.h"

#include <map>
#include <set>
#include <unordered_map>

#include "CHeaderWriter.h"
#include "Caseless.h"
#include "HexText.h"
#include "MessageTable.h"

namespace {

// "EVTMSGSTR" for "some/dir/evtmsgstr.mc".
std::string filePrefix(const std::string& fileName) {
    std::string base = fileName.substr(fileName.find_last_of('/') + 1);
    base = base.substr(0, base.find('.'));
    std::string prefix;
    for (char c : base) {
        bool alnum = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        prefix += alnum ? static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c) : '_';
    }
    if (prefix.empty() || (prefix[0] >= '0' && prefix[0] <= '9')) prefix.insert(0, "MSG_");
    return prefix;
}

class SymbolicNamer {
public:
    SymbolicNamer(const std::string& fileName, const std::string& prefix,
                  const std::vector<PortedMessage>& messages, PortReport& report)
        : madeUpPrefix_(unspoiledName(prefix + filePrefix(fileName), NameRole::SymbolicName) + "_"),
          prefix_(prefix),
          report_(report) {
        takenBy_.reserve(messages.size());  // one name a message, most often
        // A name made a C identifier must not take one the file defines.
        for (const PortedMessage& message : messages) {
            if (isCIdentifier(message.symbolicName)) headerNames_.insert(message.symbolicName);
        }
    }

    // The written and the header name of one message.
    std::pair<std::string, std::string> name(const PortedMessage& message) {
        const std::string& original = message.symbolicName;
        if (original.empty()) return {madeUpName(message), ""};
        auto first = firstId_.emplace(original, message.id);
        if (first.first->second == message.id && written_.count(original)) {
            return {written_[original], ""};
        }
        std::string header = first.first->second == message.id ? headerName(original) : "";
        std::string base = header.empty() ? original + "_" + upperHex(message.id, 8) : header;
        if (!isCIdentifier(base)) base = cIdentifierFrom(base);
        std::string written =
            unique(unspoiledName(prefix_ + base, NameRole::SymbolicName), message.id);
        reportChange(message, original, written);
        if (!header.empty()) written_[original] = written;
        return {written, header};
    }

private:
    // The name of `original` in the C header: itself, or, where C cannot use
    // it as a macro name, the C identifier made of it that no other
    // definition of the file uses.
    std::string headerName(const std::string& original) {
        if (isCIdentifier(original)) return original;
        const std::string base = cIdentifierFrom(original);
        std::string name = base;
        for (int& n = nextSuffix_.emplace(base, 2).first->second; !headerNames_.insert(name).second;
             ++n) {
            name = base + "_" + std::to_string(n);
        }
        return name;
    }

    // `name`, or the first of name_2, name_3... that no other message took.
    // Many names can meet on one (every "My-Name" and "My.Name" is "My_Name"):
    // the search for a free suffix goes on where the last one for `name` ended.
    std::string unique(std::string name, unsigned long id) {
        auto taken = takenBy_.emplace(name, id);
        if (taken.second || taken.first->second == id) return name;
        for (int& n = nextSuffix_.emplace(name, 2).first->second;; ++n) {
            std::string candidate = name + "_" + std::to_string(n);
            taken = takenBy_.emplace(candidate, id);
            if (taken.second || taken.first->second == id) return candidate;
        }
    }

    // The file prefix and the identifier: "_" and hexadecimal digits after the
    // checked prefix make no keyword. A file without names has one per
    // message, so the name and its warning are composed without temporaries.
    std::string madeUpName(const PortedMessage& message) {
        const std::string digits = upperHex(message.id, 8);
        std::string candidate;
        candidate.reserve(madeUpPrefix_.size() + digits.size());
        candidate.append(madeUpPrefix_).append(digits);
        std::string written = unique(std::move(candidate), message.id);
        static const char opening[] = "message 0x", middle[] = " has no SymbolicName: named ";
        std::string warning;
        warning.reserve(sizeof(opening) + digits.size() + sizeof(middle) + written.size());
        warning.append(opening).append(digits).append(middle).append(written);
        report_.warn(message.line, WarningKind::MadeUpName, std::move(warning));
        return written;
    }

    void reportChange(const PortedMessage& message, const std::string& original,
                      const std::string& written) {
        if (written != prefix_ + original) {
            report_.warn(
                message.line, WarningKind::Renamed,
                "SymbolicName " + original + " renamed " + written +
                    (firstId_[original] != message.id
                         ? " (it already names message 0x" + upperHex(firstId_[original], 8) + ")"
                     : !isCIdentifier(original) ? " (not a C identifier)"
                                                : " (the library would misread it)"));
        }
    }

    std::string madeUpPrefix_, prefix_;
    PortReport& report_;
    std::unordered_map<std::string, unsigned long> firstId_;  // original name -> first identifier
    std::unordered_map<std::string, std::string> written_;    // original name -> written name
    std::unordered_map<std::string, unsigned long> takenBy_;  // written name -> identifier
    std::set<std::string> headerNames_;                       // C identifiers the header uses
    std::unordered_map<std::string, int> nextSuffix_;         // name -> next "_N" to try
};

// The reader seeds these severities: with the same number they need no entry.
bool seededSeverity(const UsedName& severity) {
    const std::pair<const char*, unsigned long> seeded[] = {{MessageTable::SEV_SUCCESS, 0},
                                                            {MessageTable::SEV_INFORMATIONAL, 1},
                                                            {MessageTable::SEV_WARNING, 2},
                                                            {MessageTable::SEV_ERROR, 3}};
    for (auto& s : seeded) {
        if (lowerCase(severity.name) == lowerCase(s.first)) return severity.value == s.second;
    }
    return false;
}

bool isSeededName(const std::string& name, ListKind kind) {
    std::string lower = lowerCase(name);
    if (kind == ListKind::Facility) {
        return lower == lowerCase(MessageTable::DEFAULT_FIRST_MESSAGE_FACILITY);
    }
    if (kind != ListKind::Severity) return false;
    for (const char* s : {MessageTable::SEV_SUCCESS, MessageTable::SEV_INFORMATIONAL,
                          MessageTable::SEV_WARNING, MessageTable::SEV_ERROR}) {
        if (lower == lowerCase(s)) return true;
    }
    return false;
}

const char* kindName(ListKind kind) {
    return kind == ListKind::Language   ? "language"
           : kind == ListKind::Severity ? "severity"
                                        : "facility";
}

// Written names and list entries of one kind: a name the reader seeds with
// another number, a name it would misread and a second name differing only in
// case are renamed; seeded names with their own number get no entry.
void nameList(const std::vector<UsedName>& used, ListKind kind, NameRole role,
              std::vector<std::string>& names, std::vector<NameEntry>& entries,
              PortReport& report) {
    std::set<std::string> taken;
    std::map<unsigned long, std::string> symbolOf;  // one value text per language number
    for (const UsedName& name : used) {
        bool seeded = kind == ListKind::Severity
                          ? seededSeverity(name)
                          : kind == ListKind::Facility && isSeededName(name.name, kind) &&
                                static_cast<long>(name.value) ==
                                    MessageTable::DEFAULT_FIRST_MESSAGE_FACILITY_ID;
        std::string written = unspoiledName(name.name, role);
        if ((!seeded && isSeededName(written, kind)) || taken.count(lowerCase(written))) {
            written += "_" + upperHex(name.value);
        }
        while (taken.count(lowerCase(written))) written += "_";
        taken.insert(lowerCase(written));
        if (written != name.name) {
            report.warn(0, WarningKind::Renamed,
                        std::string(kindName(kind)) + " " + name.name + "=" + hex(name.value) +
                            " written as " + written);
        }
        names.push_back(written);
        if (seeded) continue;
        std::string symbol = name.symbol;
        if (kind == ListKind::Language) symbol = symbolOf.emplace(name.value, symbol).first->second;
        entries.push_back({written, static_cast<long>(name.value), symbol});
    }
}

}  // namespace

FileNames nameEverything(const PortedFile& file, const std::string& fileName,
                         const std::string& prefix, PortReport& report) {
    FileNames names;
    SymbolicNamer namer(fileName, prefix, file.messages, report);
    names.symbolicNames.reserve(file.messages.size());
    names.headerNames.reserve(file.messages.size());
    for (const PortedMessage& message : file.messages) {
        auto name = namer.name(message);
        names.symbolicNames.push_back(std::move(name.first));
        names.headerNames.push_back(std::move(name.second));
    }
    nameList(file.languages, ListKind::Language, NameRole::Language, names.languages,
             names.languageEntries, report);
    nameList(file.severities, ListKind::Severity, NameRole::Severity, names.severities,
             names.severityEntries, report);
    nameList(file.facilities, ListKind::Facility, NameRole::Facility, names.facilities,
             names.facilityEntries, report);
    return names;
}
