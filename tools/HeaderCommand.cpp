// tqmsg header: a C/C++ header with one #define per symbolic name, its value
// an int usable directly as the messageId of the TQ_ functions; with
// --functions, also a typed function per message over the C interface.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <memory>
#include <utility>

#include "CHeaderWriter.h"
#include "Catalogue.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "FileMessages.h"
#include "OutputFiles.h"
#include "TextEscape.h"
#include "TypedFunctions.h"

namespace {

struct HeaderOptions {
    std::vector<std::string> files;
    std::string output = "-";
    std::string language;
    bool functions = false;
};

// The language of the comments: the one asked for, else the language that the
// first file declaring any declares first.
long commentLanguage(const Catalogue& catalogue, const HeaderOptions& options) {
    if (!options.language.empty()) return catalogue.language(options.language);
    for (std::string file : options.files) {
        MessageTable* table = MessageModule::mtmap.get(file);
        if (table != nullptr && !table->declaredLanguages.empty()) {
            return table->declaredLanguages.front();
        }
    }
    return 0;  // no file declares a language, so none stores a message either
}

// The text of `id` in `languageId`, else in the first language that has one.
std::string commentText(const Catalogue& catalogue, long id, long languageId) {
    FormattableMessage* message = nullptr;
    MessageModule::mlmap.get(languageId, id, message);
    for (long other : catalogue.languageIds()) {
        if (message) break;
        MessageModule::mlmap.get(other, id, message);
    }
    return message ? escapeLine(message->text) : "";
}

// "FILE:LINE: " of the first line of `file` that mentions `name`, or "FILE: ".
std::string placeOf(const std::string& file, const std::string& name) {
    std::ifstream in(file, std::ios::binary);
    int lineNumber = 1;
    for (std::string line; std::getline(in, line); ++lineNumber) {
        if (line.find(name) != std::string::npos) {
            return file + ":" + std::to_string(lineNumber) + ": ";
        }
    }
    return file + ": ";
}

// Loads the files in order; false, reported, after the first one that does
// not load or that defines a symbolic name C cannot use as a macro name. The
// earlier files' names were all checked, so a bad one belongs to this file.
bool loadWithIdentifierNames(Catalogue& catalogue, const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        if (!catalogue.loadOne(file)) return false;
        for (auto& entry : MessageModule::mlmap.idmap.entries) {
            if (isCIdentifier(entry.first)) continue;
            printError(placeOf(file, entry.first) + "symbolic name is not a C identifier: \"" +
                       entry.first + "\"");
            return false;
        }
    }
    return true;
}

// The name the first loaded file declaring language `id` gives it.
std::string declaredName(long id) {
    for (auto& entry : MessageModule::mtmap.tables) {
        if (entry.second->languages.reverse.get(id)) return languageName(*entry.second, id);
    }
    return std::to_string(id);
}

// Every named message with its texts in every language, by identifier.
std::vector<NamedMessage> namedMessages(const Catalogue& catalogue) {
    std::vector<std::pair<uint32_t, NamedMessage>> messages;
    for (auto& entry : MessageModule::mlmap.idmap.entries) {
        NamedMessage message{entry.first, {}};
        for (long languageId : catalogue.languageIds()) {
            FormattableMessage* text = nullptr;
            MessageModule::mlmap.get(languageId, entry.second, text);
            if (text) message.texts.push_back({declaredName(languageId), text->text, 0});
        }
        messages.emplace_back(static_cast<uint32_t>(entry.second), std::move(message));
    }
    std::stable_sort(messages.begin(), messages.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<NamedMessage> sorted;
    for (auto& message : messages) sorted.push_back(std::move(message.second));
    return sorted;
}

// The typed functions, their warnings reported; "" without --functions.
std::string functionsText(const Catalogue& catalogue, const HeaderOptions& options) {
    if (!options.functions) return "";
    TypedFunctions functions = typedFunctions(namedMessages(catalogue));
    for (const std::string& warning : functions.warnings) printError("warning: " + warning);
    return functions.text;
}

int generate(const HeaderOptions& options) {
    OutputFiles outputs;
    for (const std::string& file : options.files) outputs.addInput(file);
    std::ostream& out = outputs.add(options.output);
    Catalogue catalogue;
    if (!loadWithIdentifierNames(catalogue, options.files)) return 1;
    long languageId = commentLanguage(catalogue, options);
    std::vector<CHeaderEntry> entries;
    for (auto& entry : MessageModule::mlmap.idmap.entries) {
        entries.push_back({entry.first, static_cast<uint32_t>(entry.second),
                           commentText(catalogue, entry.second, languageId)});
    }
    std::string guardPath = options.output == "-" ? options.files.front() : options.output;
    out << writeCHeader("header", languageId, guardPath, std::move(entries),
                        functionsText(catalogue, options));
    outputs.commitAll();
    return 0;
}

}  // namespace

CommandRun addHeaderCommand(CLI::App& app) {
    auto options = std::make_shared<HeaderOptions>();
    CLI::App* command =
        app.add_subcommand("header", "Write a C/C++ header with one #define per symbolic name");
    command->add_option("FILE", options->files, "Message files, loaded in order")->required();
    command->add_option("-o,--output", options->output,
                        "Header to write ('-', the default: standard output)");
    command->add_option("--lang", options->language,
                        "Language of the comments (default: the one declared first)");
    command->add_flag("--functions", options->functions,
                      "Add a typed function format_<NAME>(buf, size, language_id, inserts...) "
                      "per message, calling tqmsg_format, with one parameter per insert of the "
                      "C type its texts read; a message whose languages disagree, whose insert "
                      "numbers have a gap, or whose inserts cannot be passed as variable "
                      "arguments gets none and a warning");
    return [options] { return generate(*options); };
}
