// tqmsg check: load the files together, as a program would, and report each;
// then check every file's translations: that its languages read each
// message's inserts alike, and how many of its messages each language has.
// A file that fails because it was written for the Windows message compiler
// gets one more hint line: the `tqmsg port` command that converts it.
#include <iostream>
#include <memory>
#include <set>

#include "Catalogue.h"
#include "CheckReport.h"
#include "Commands.h"
#include "DefinitionClashes.h"
#include "Diagnostics.h"
#include "InsertAgreement.h"
#include "WindowsDialectHint.h"

namespace {

struct CheckOptions {
    std::vector<std::string> files;
    bool strict = false;
    bool missing = false;
    std::string format = "text";
};

std::set<std::string> storedKeys() {
    std::set<std::string> keys;
    for (auto& entry : MessageModule::mlmap.msgmap) keys.insert(entry.first);
    return keys;
}

// The counts of the texts the file added to the store.
LoadedFile loadedFile(const std::string& file, const std::set<std::string>& before) {
    std::set<long> messages;
    size_t texts = 0;
    for (auto& entry : MessageModule::mlmap.msgmap) {
        if (before.count(entry.first)) continue;
        ++texts;
        for (auto& record : entry.second) messages.insert(record.first);
    }
    std::string name = file;
    MessageTable* table = MessageModule::mtmap.get(name);
    size_t languages = table ? table->languages.reverse.entries.size() : 0;
    return {file, messages.size(), languages, texts, {}};
}

Finding::Severity severityOf(InsertProblem::Kind kind) {
    return kind == InsertProblem::MISSING ? Finding::WARNING : Finding::ERROR;
}

// Compares the inserts of every message of a file with more than one
// language, and adds its coverage to `file`.
void checkTranslations(MessageTable& table, LoadedFile& file, CheckReport& report) {
    if (table.declaredLanguages.size() < 2) return;
    std::vector<FileMessage> messages = fileMessages(table);
    for (const FileMessage& message : messages) {
        std::vector<TranslatedText> texts;
        for (const TextOfLanguage& text : message.texts) {
            texts.push_back({languageName(table, text.languageId), text.message->text, text.line});
        }
        for (const InsertProblem& problem : compareInserts(texts).problems) {
            report.add({severityOf(problem.kind), file.file, problem.line, message.name,
                        problem.description});
        }
    }
    file.coverage = coverageOf(table, messages);
}

// Reports what two of the files both define; true when nothing is.
bool checkClashes(const std::vector<std::string>& files, CheckReport& report) {
    if (files.size() < 2) return true;
    std::vector<DefinitionClash> clashes = findDefinitionClashes(files);
    for (const DefinitionClash& clash : clashes) {
        report.add({Finding::ERROR, clash.secondFile, clash.secondLine, "",
                    clash.description + " is also defined by " + clash.firstFile + ":" +
                        std::to_string(clash.firstLine)});
    }
    return clashes.empty();
}

void loadAndCheck(const std::vector<std::string>& files, CheckReport& report) {
    Catalogue catalogue;
    for (const std::string& file : files) {
        std::set<std::string> before = storedKeys();
        if (!catalogue.loadOne(file)) {
            report.loadFailed(file, catalogue.lastFailure());
            std::string hint = windowsDialectHint(file, catalogue.lastFailure());
            if (!hint.empty()) printError("hint: " + hint);
            continue;
        }
        LoadedFile loaded = loadedFile(file, before);
        std::string name = file;
        checkTranslations(*MessageModule::mtmap.get(name), loaded, report);
        report.loaded(std::move(loaded));
    }
}

int check(const CheckOptions& options) {
    CheckReport report(options.format == "json", options.missing);
    if (checkClashes(options.files, report)) loadAndCheck(options.files, report);
    report.finish();
    bool failed = report.errors() > 0 || (options.strict && report.warnings() > 0);
    return failed ? 1 : 0;
}

}  // namespace

CommandRun addCheckCommand(CLI::App& app) {
    auto options = std::make_shared<CheckOptions>();
    CLI::App* command = app.add_subcommand(
        "check",
        "Load the files in order, as one module, and report each: ok with its counts, or the "
        "library's error. Then check the translations of every file with several languages: "
        "an insert that two languages read as different kinds or sizes of value is an error, "
        "an insert one language leaves out a warning; each language's coverage is shown and a "
        "language without a text for every message is a warning. A symbolic name or a "
        "(language, identifier) pair that two of the files define is an error, found before "
        "loading. Exit status 1 on any error (with --strict, on any warning)");
    command->add_option("FILE", options->files, "Message files")->required();
    command->add_flag("--strict", options->strict, "Treat every warning as an error (for CI)");
    command->add_flag("--missing", options->missing,
                      "List the messages each language lacks, by symbolic name");
    command
        ->add_option("--format", options->format,
                     "text (default): findings on standard error; json: one document "
                     "with every finding and the coverage on standard output")
        ->check(CLI::IsMember({"text", "json"}));
    return [options] { return check(*options); };
}
