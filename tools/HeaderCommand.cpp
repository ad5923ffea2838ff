// tqmsg header: a C/C++ header with one #define per symbolic name, its value
// an int usable directly as the messageId of the TQ_ functions.
#include <cstdint>
#include <fstream>
#include <memory>
#include <utility>

#include "CHeaderWriter.h"
#include "Catalogue.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "OutputFiles.h"
#include "TextEscape.h"

namespace {

struct HeaderOptions {
    std::vector<std::string> files;
    std::string output = "-";
    std::string language;
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
    out << writeCHeader("header", languageId, guardPath, std::move(entries));
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
    return [options] { return generate(*options); };
}
