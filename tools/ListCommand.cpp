// tqmsg list: every stored text, one per line, as a table, TSV or JSON.
//
// Rows are written as they are rendered, never collected: a catalogue can
// hold millions of texts, and the listing must not need more memory than
// loading them did. The table's column widths come from a first pass over
// the same texts.
#include <array>
#include <cstdio>
#include <iostream>
#include <map>
#include <memory>

#include "Catalogue.h"
#include "Commands.h"
#include "TextEscape.h"

namespace {

struct ListOptions {
    std::vector<std::string> files;
    std::string language;
    std::string format = "table";
};

// The lower-case names of severity and facility ids, looked up once per id.
class NameCache {
public:
    explicit NameCache(const Catalogue& catalogue) : catalogue_(catalogue) {}
    const std::string& severity(long id) { return nameOf(severities_, id, true); }
    const std::string& facility(long id) { return nameOf(facilities_, id, false); }

private:
    // The declared name of `id`, or its number when no file names it.
    const std::string& nameOf(std::map<long, std::string>& cache, long id, bool severity) {
        auto found = cache.find(id);
        if (found != cache.end()) return found->second;
        std::string name = severity ? catalogue_.severityName(id) : catalogue_.facilityName(id);
        return cache[id] = name.empty() ? std::to_string(id) : name;
    }

    const Catalogue& catalogue_;
    std::map<long, std::string> severities_, facilities_;
};

std::string hex8(long id) {
    char buffer[16];  // 8 hex digits
    std::snprintf(buffer, sizeof(buffer), "%08X", static_cast<unsigned>(id & 0xFFFFFFFFL));
    return buffer;
}

// The columns before the text, which the table aligns.
const size_t ALIGNED_COLUMNS = 5;
using LeadingFields = std::array<std::string, ALIGNED_COLUMNS>;

LeadingFields leadingFields(const StoredText& stored, NameCache& names) {
    const FormattableMessage& m = *stored.message;
    return {hex8(stored.messageId), std::to_string(m.languageId),
            escapeLine(names.severity(m.severityId)), escapeLine(names.facility(m.facilityId)),
            escapeLine(m.symbolicName)};
}

const LeadingFields HEADER = {"ID", "LANG", "SEVERITY", "FACILITY", "NAME"};

// One line: the leading fields padded to `widths` (tab-separated when
// `widths` is null), then `text`.
void writeLine(const LeadingFields& fields, const std::string& text,
               const std::array<size_t, ALIGNED_COLUMNS>* widths) {
    for (size_t i = 0; i < ALIGNED_COLUMNS; ++i) {
        std::cout << fields[i];
        if (widths == nullptr) {
            std::cout << '\t';
        } else {
            std::cout << std::string((*widths)[i] - fields[i].size() + 1, ' ');
        }
    }
    std::cout << text << '\n';
}

void writeTable(const std::vector<StoredText>& texts, NameCache& names, bool aligned) {
    std::array<size_t, ALIGNED_COLUMNS> widths{};
    for (size_t i = 0; i < ALIGNED_COLUMNS; ++i) widths[i] = HEADER[i].size();
    for (const StoredText& stored : texts) {
        if (!aligned) break;
        LeadingFields fields = leadingFields(stored, names);
        for (size_t i = 0; i < ALIGNED_COLUMNS; ++i) {
            widths[i] = std::max(widths[i], fields[i].size());
        }
    }
    const std::array<size_t, ALIGNED_COLUMNS>* padding = aligned ? &widths : nullptr;
    writeLine(HEADER, "TEXT", padding);
    for (const StoredText& stored : texts) {
        if (!std::cout) return;  // the failure is reported once the command ends
        writeLine(leadingFields(stored, names), escapeLine(stored.message->text), padding);
    }
}

void writeJson(const std::vector<StoredText>& texts, NameCache& names) {
    std::cout << "[";
    const char* separator = "\n  ";
    for (const StoredText& stored : texts) {
        if (!std::cout) return;
        const FormattableMessage& m = *stored.message;
        std::cout << separator << "{\"id\": " << jsonString(hex8(stored.messageId))
                  << ", \"language\": " << m.languageId
                  << ", \"severity\": " << jsonString(names.severity(m.severityId))
                  << ", \"severityId\": " << m.severityId
                  << ", \"facility\": " << jsonString(names.facility(m.facilityId))
                  << ", \"facilityId\": " << m.facilityId
                  << ", \"symbolicName\": " << jsonString(m.symbolicName)
                  << ", \"text\": " << jsonString(m.text) << "}";
        separator = ",\n  ";
    }
    std::cout << (texts.empty() ? "]\n" : "\n]\n");
}

int list(const ListOptions& options) {
    Catalogue catalogue;
    if (!catalogue.load(options.files)) return 1;
    long languageId = 0;
    if (!options.language.empty()) languageId = catalogue.language(options.language);
    std::vector<StoredText> texts =
        catalogue.texts(options.language.empty() ? nullptr : &languageId);
    NameCache names(catalogue);
    if (options.format == "json") {
        writeJson(texts, names);
    } else {
        writeTable(texts, names, options.format == "table");
    }
    return 0;
}

}  // namespace

CommandRun addListCommand(CLI::App& app) {
    auto options = std::make_shared<ListOptions>();
    CLI::App* command = app.add_subcommand(
        "list",
        "List every stored text: identifier, language, severity, facility, symbolic "
        "name and text (escaped to one line)");
    command->add_option("FILE", options->files, "Message files, loaded in order")->required();
    command->add_option("--lang", options->language,
                        "Only this language: a numeric id or a declared language name");
    command->add_option("--format", options->format, "Output format")
        ->check(CLI::IsMember({"table", "tsv", "json"}))
        ->capture_default_str();
    return [options] { return list(*options); };
}
