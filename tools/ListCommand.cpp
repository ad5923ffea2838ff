// tqmsg list: every stored text, one per line, as a table, TSV or JSON.
#include <cstdio>
#include <iostream>
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

// One listed text, every field already rendered.
struct Row {
    std::string id, language, severity, facility, name, text;
    long languageId, severityId, facilityId;
};

std::string hex8(long id) {
    char buffer[16];  // 8 hex digits
    std::snprintf(buffer, sizeof(buffer), "%08X", static_cast<unsigned>(id & 0xFFFFFFFFL));
    return buffer;
}

std::string nameOrNumber(const std::string& name, long id) {
    return name.empty() ? std::to_string(id) : name;
}

Row makeRow(const Catalogue& catalogue, const StoredText& stored) {
    FormattableMessage& m = *stored.message;
    return {hex8(stored.messageId),
            std::to_string(m.languageId),
            nameOrNumber(catalogue.severityName(m.severityId), m.severityId),
            nameOrNumber(catalogue.facilityName(m.facilityId), m.facilityId),
            m.symbolicName,
            m.text,
            m.languageId,
            m.severityId,
            m.facilityId};
}

void printTable(const std::vector<Row>& rows, char separator, bool aligned) {
    std::vector<std::string> header = {"ID", "LANG", "SEVERITY", "FACILITY", "NAME", "TEXT"};
    std::vector<size_t> widths(header.size() - 1, 0);
    auto fields = [](const Row& r) {
        return std::vector<std::string>{r.id,       r.language, r.severity,
                                        r.facility, r.name,     escapeLine(r.text)};
    };
    std::vector<std::vector<std::string>> lines = {header};
    for (const Row& row : rows) lines.push_back(fields(row));
    for (auto& line : lines) {
        for (size_t i = 0; aligned && i < widths.size(); ++i) {
            widths[i] = std::max(widths[i], line[i].size());
        }
    }
    for (auto& line : lines) {
        for (size_t i = 0; i < widths.size(); ++i) {
            std::cout << line[i];
            if (aligned)
                std::cout << std::string(widths[i] - line[i].size() + 1, ' ');
            else
                std::cout << separator;
        }
        std::cout << line.back() << '\n';
    }
}

void printJson(const std::vector<Row>& rows) {
    std::cout << "[";
    for (size_t i = 0; i < rows.size(); ++i) {
        const Row& r = rows[i];
        std::cout << (i ? ",\n  " : "\n  ") << "{\"id\": " << jsonString(r.id)
                  << ", \"language\": " << r.languageId
                  << ", \"severity\": " << jsonString(r.severity)
                  << ", \"severityId\": " << r.severityId
                  << ", \"facility\": " << jsonString(r.facility)
                  << ", \"facilityId\": " << r.facilityId
                  << ", \"symbolicName\": " << jsonString(r.name)
                  << ", \"text\": " << jsonString(r.text) << "}";
    }
    std::cout << (rows.empty() ? "]\n" : "\n]\n");
}

int list(const ListOptions& options) {
    Catalogue catalogue;
    if (!catalogue.load(options.files)) return 1;
    long languageId = 0;
    if (!options.language.empty()) languageId = catalogue.language(options.language);
    std::vector<Row> rows;
    for (const StoredText& stored :
         catalogue.texts(options.language.empty() ? nullptr : &languageId)) {
        rows.push_back(makeRow(catalogue, stored));
    }
    if (options.format == "json") {
        printJson(rows);
    } else {
        printTable(rows, '\t', options.format == "table");
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
