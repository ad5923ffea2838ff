// tqmsg catalog: a systemd journal message catalogue of message files, so
// that `journalctl -x` explains each event libtqmsg-journal logs, in the
// reader's language. One entry per message and language:
//   -- <MESSAGE_ID> [locale]
//   Subject: <the text's first line>
//   Defined-By: <program>
//
//   <the whole text>
// The default language (English, else the first file's first language) has
// no locale; the others their POSIX code from the C interface's table.
#include <memory>
#include <string>
#include <vector>

#include "Catalogue.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "JournalCatalogueText.h"
#include "OutputFiles.h"
#include "tqmsg-journal.h"

namespace {

constexpr long ENGLISH = 0x409;

struct CatalogOptions {
    std::vector<std::string> files;
    std::string base;
    std::string output = "-";
    std::string definedBy;
};

// The MESSAGE_ID libtqmsg-journal gives the events of `messageId`.
std::string journalMessageId(const std::string& base, long messageId) {
    char id[33];  // 32 digits and a NUL
    if (tqmsg_journal_message_id(id, sizeof id, base.c_str(), messageId) != 0) {
        throw UsageError{"--base must be 32 hexadecimal digits, not \"" + base + "\""};
    }
    return id;
}

// English when a file declares it, else the language the first file
// declaring any declares first.
long defaultLanguage(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        MessageTable* table = MessageModule::mtmap.get(const_cast<std::string&>(file));
        if (table == nullptr) continue;
        for (long language : table->declaredLanguages) {
            if (language == ENGLISH) return ENGLISH;
        }
    }
    for (const std::string& file : files) {
        MessageTable* table = MessageModule::mtmap.get(const_cast<std::string&>(file));
        if (table != nullptr && !table->declaredLanguages.empty()) {
            return table->declaredLanguages.front();
        }
    }
    return ENGLISH;
}

// The locale after the message ID: none for the default language.
std::string entryLocale(long languageId, long defaultId) {
    if (languageId == defaultId) return "";
    const char* code = tqmsg_language_code(languageId);
    if (code == nullptr) {
        throw CommandFailure{"language " + toHex(languageId) + " has no POSIX locale code"};
    }
    return std::string(" ") + code;
}

std::string catalogueEntry(const CatalogOptions& options, const StoredText& stored, long languageId,
                           long defaultId) {
    std::string text = journalCatalogueText(stored.messageId, languageId);
    return "-- " + journalMessageId(options.base, stored.messageId) +
           entryLocale(languageId, defaultId) + "\nSubject: " + text.substr(0, text.find('\n')) +
           "\nDefined-By: " + options.definedBy + "\n\n" + text + "\n\n";
}

int generate(CatalogOptions& options) {
    journalMessageId(options.base, 0);  // refuses a malformed base before any loading
    OutputFiles outputs;
    for (const std::string& file : options.files) outputs.addInput(file);
    std::ostream& out = outputs.add(options.output);
    Catalogue catalogue;
    if (!catalogue.load(options.files)) return 1;
    if (options.definedBy.empty()) {
        std::string file = options.files.front();
        file = file.substr(file.find_last_of('/') + 1);
        options.definedBy = file.substr(0, file.rfind(".mc"));
    }
    long defaultId = defaultLanguage(options.files);
    std::string text =
        "# Journal message catalogue of " + options.definedBy + ", written by tqmsg catalog.\n\n";
    for (const StoredText& stored : catalogue.texts(nullptr)) {
        text += catalogueEntry(options, stored, stored.message->languageId, defaultId);
    }
    out << text;
    outputs.commitAll();
    return 0;
}

}  // namespace

CommandRun addCatalogCommand(CLI::App& app) {
    auto options = std::make_shared<CatalogOptions>();
    CLI::App* command = app.add_subcommand(
        "catalog", "Write a systemd journal message catalogue for journalctl -x");
    command->add_option("FILE", options->files, "Message files, loaded in order")->required();
    command
        ->add_option("--base", options->base,
                     "The program's 128-bit message ID base, 32 hexadecimal digits")
        ->required();
    command->add_option("-o,--output", options->output,
                        "Catalogue to write ('-', the default: standard output)");
    command->add_option("--defined-by", options->definedBy,
                        "The Defined-By: field (default: the first file's name without .mc)");
    return [options] { return generate(*options); };
}
