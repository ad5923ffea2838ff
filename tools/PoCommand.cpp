// tqmsg po: the translators' round trip. `template` and `export` write PO
// files from a message file; `import` writes the translations of a PO file
// back into a message file.
#include <iostream>
#include <memory>

#include "Commands.h"
#include "FileEdits.h"
#include "MessageFileTexts.h"
#include "OutputFiles.h"
#include "PoExport.h"
#include "PoImport.h"

namespace {

struct PoOptions {
    std::string poFile, messageFile, output;
    std::string language, sourceLanguage, charset;
    bool forceLanguage = false;
};

// Where a command's summary line goes: standard error when its result goes to
// standard output.
std::ostream& summaryStream(const std::string& output) {
    return output == "-" ? std::cerr : std::cout;
}

int writeCatalogue(const PoOptions& options, bool isTemplate) {
    OutputFiles outputs;
    outputs.addInput(options.messageFile);
    std::ostream& out = outputs.add(options.output);
    MessageFileTexts file(options.messageFile);
    ExportRequest request{options.sourceLanguage, isTemplate ? "" : options.language,
                          options.charset};
    PoCatalogue catalogue = exportCatalogue(file, request);
    out << poFileText(catalogue);
    outputs.commitAll();
    std::size_t translated = 0;
    for (const PoEntry& entry : catalogue.entries) translated += !entry.translation.empty();
    std::ostream& summary = summaryStream(options.output);
    summary << options.output << ": " << catalogue.entries.size() << " entries";
    if (!isTemplate) summary << ", " << translated << " translated";
    summary << '\n';
    return 0;
}

void printSummary(const std::string& output, const ImportReport& report) {
    std::ostream& summary = summaryStream(output);
    summary << output << ": " << report.added << " added, " << report.changed << " changed, "
            << report.unchanged << " unchanged";
    if (report.languageDeclared) summary << ", language declared";
    summary << "; skipped: " << report.fuzzy << " fuzzy, " << report.untranslated
            << " untranslated, " << report.outdated << " outdated, " << report.unknown
            << " unknown\n";
}

int importTranslations(const PoOptions& options) {
    OutputFiles outputs;
    outputs.addInput(options.poFile);
    outputs.addInput(options.messageFile, OutputFiles::InPlace::ALLOWED);
    std::ostream& out = outputs.add(options.output);
    std::vector<std::string> warnings;
    PoCatalogue catalogue = readPoFile(options.poFile, warnings);
    MessageFileTexts file(options.messageFile);
    ImportRequest request{options.poFile, options.language, options.sourceLanguage, options.charset,
                          options.forceLanguage};
    ImportReport report;
    std::string content;
    try {
        content =
            importCatalogue(file, readFileContent(options.messageFile), catalogue, request, report);
    } catch (...) {
        for (const std::string& warning : warnings) std::cerr << warning << '\n';
        throw;
    }
    warnings.insert(warnings.end(), report.warnings.begin(), report.warnings.end());
    for (const std::string& warning : warnings) std::cerr << warning << '\n';
    out << content;
    outputs.commitAll();
    printSummary(options.output, report);
    return 0;
}

void addCommonOptions(CLI::App* command, PoOptions& options) {
    command->add_option("--source-language", options.sourceLanguage,
                        "Language of the texts to translate (default: the first declared)");
    command->add_option("--charset", options.charset,
                        "Encoding of the message file's texts (default: UTF-8)");
}

}  // namespace

CommandRun addPoCommand(CLI::App& app) {
    auto options = std::make_shared<PoOptions>();
    CLI::App* po = app.add_subcommand(
        "po", "Translate through PO files: write a template or a translation, import one back");
    po->require_subcommand(1);

    CLI::App* pot = po->add_subcommand(
        "template", "Write a PO template: one entry per text of the source language");
    pot->add_option("FILE", options->messageFile, "Message file")->required();
    pot->add_option("-o,--output", options->output, "PO template to write ('-': standard output)")
        ->required();
    addCommonOptions(pot, *options);

    CLI::App* exported = po->add_subcommand(
        "export", "Write a PO file holding the texts already present in a language");
    exported->add_option("FILE", options->messageFile, "Message file")->required();
    exported->add_option("--language", options->language, "NAME or NAME=ID of the translation")
        ->required();
    exported->add_option("-o,--output", options->output, "PO file to write ('-': standard output)")
        ->required();
    addCommonOptions(exported, *options);

    CLI::App* imported = po->add_subcommand(
        "import", "Write a message file with the translations of a PO file in a language");
    imported->add_option("PO", options->poFile, "Translated PO file")->required();
    imported->add_option("FILE", options->messageFile, "Message file")->required();
    imported
        ->add_option("--language", options->language,
                     "NAME, or NAME=ID for a language new to FILE (default ID: from the PO "
                     "file's Language)")
        ->required();
    imported->add_flag("--force-language", options->forceLanguage,
                       "Import even when the PO file's Language names another language");
    imported
        ->add_option("-o,--output", options->output,
                     "Message file to write ('-': standard output; may be FILE itself)")
        ->required();
    addCommonOptions(imported, *options);

    return [options, pot, exported] {
        if (pot->parsed()) return writeCatalogue(*options, true);
        if (exported->parsed()) return writeCatalogue(*options, false);
        return importTranslations(*options);
    };
}
