// tqmsg check: load the files together, as a program would, and report each.
// A file that fails because it was written for the Windows message compiler
// gets one more hint line: the `tqmsg port` command that converts it.
#include <iostream>
#include <memory>
#include <set>

#include "Catalogue.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "WindowsDialectHint.h"

namespace {

std::set<std::string> storedKeys() {
    std::set<std::string> keys;
    for (auto& entry : MessageModule::mlmap.msgmap) keys.insert(entry.first);
    return keys;
}

// "ok, 3 messages, 2 languages, 6 texts" for the texts the file added.
std::string summary(const std::string& file, const std::set<std::string>& before) {
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
    return "ok, " + std::to_string(messages.size()) + " messages, " + std::to_string(languages) +
           " languages, " + std::to_string(texts) + " texts";
}

int check(const std::vector<std::string>& files) {
    Catalogue catalogue;
    int status = 0;
    for (const std::string& file : files) {
        std::set<std::string> before = storedKeys();
        if (catalogue.loadOne(file)) {
            std::cout << file << ": " << summary(file, before) << '\n';
        } else {
            status = 1;
            std::string hint = windowsDialectHint(file, catalogue.lastFailure());
            if (!hint.empty()) printError("hint: " + hint);
        }
    }
    return status;
}

}  // namespace

CommandRun addCheckCommand(CLI::App& app) {
    auto files = std::make_shared<std::vector<std::string>>();
    CLI::App* command = app.add_subcommand(
        "check",
        "Load the files in order, as one module, and report each: ok with its counts, "
        "or the library's error (exit status 1)");
    command->add_option("FILE", *files, "Message files")->required();
    return [files] { return check(*files); };
}
