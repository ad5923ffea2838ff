// tqmsg: check, list, format, dump and turn message files into C headers.
// main declares the subcommands, parses the command line and dispatches.
#include <unistd.h>

#include <cstring>
#include <iostream>
#include <map>

#include "Catalogue.h"
#include "CheckedOutput.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "OutputFiles.h"

namespace {

// A usage error: the reason and a one-line hint on standard error, status 2.
int usageError(const std::string& reason) {
    printError(reason);
    std::cerr << "Try '" << commandName() << " --help' for more information.\n";
    return 2;
}

std::string chosenCommand(CLI::App& app) {
    auto chosen = app.get_subcommands();
    return chosen.empty() ? "tqmsg" : "tqmsg " + chosen.front()->get_name();
}

// Parses the command line and runs the chosen subcommand. Returns the exit
// status.
int runCommand(int argc, char** argv) {
    CLI::App app{"Check, list and format message files; generate C and C++ headers.", "tqmsg"};
    app.set_version_flag("--version", std::string("tqmsg ") + TQMSG_VERSION);
    app.require_subcommand(1);
    std::map<CLI::App*, CommandRun> commands;
    const std::pair<const char*, CommandRun (*)(CLI::App&)> subcommands[] = {
        {"check", addCheckCommand}, {"list", addListCommand},     {"format", addFormatCommand},
        {"dump", addDumpCommand},   {"header", addHeaderCommand}, {"port", addPortCommand}};
    for (auto& subcommand : subcommands) {
        CommandRun run = subcommand.second(app);
        commands[app.get_subcommand(subcommand.first)] = run;
    }
#ifdef TQMSG_WITH_PO  // built where libgettextpo exists for the target architecture
    CommandRun po = addPoCommand(app);
    commands[app.get_subcommand("po")] = po;
#endif
#ifdef TQMSG_WITH_JOURNAL  // built where libsystemd exists for the target architecture
    CommandRun catalog = addCatalogCommand(app);
    commands[app.get_subcommand("catalog")] = catalog;
#endif
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        setCommandName(chosenCommand(app));
        if (e.get_exit_code() == 0) return app.exit(e);
        return usageError(e.what());
    }
    setCommandName(chosenCommand(app));
    try {
        return commands.at(app.get_subcommands().front())();
    } catch (const UsageError& e) {
        return usageError(e.text);
    } catch (const CommandFailure& e) {
        printError(e.text);
        return 1;
    } catch (const std::exception& e) {
        printError(e.what());
        return 1;
    }
}

}  // namespace

int main(int argc, char** argv) {
    reserveStandardDescriptors();
    // Everything the tool prints on standard output goes through one checked
    // buffer, so that a result that could not be written completely fails.
    CheckedOutput standardOutput(STDOUT_FILENO);
    std::streambuf* original = std::cout.rdbuf(&standardOutput);
    int status = runCommand(argc, argv);
    int error = standardOutput.finish();
    std::cout.rdbuf(original);
    if (error == 0) return status;
    printError(std::string("cannot write standard output: ") + std::strerror(error));
    return status == 0 ? 1 : status;
}
