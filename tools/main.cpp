// tqmsg: check, list, format, dump and turn message files into C headers.
// main declares the subcommands, parses the command line and dispatches.
#include <iostream>
#include <map>

#include "Catalogue.h"
#include "Commands.h"

namespace {

// A usage error: the reason and a one-line hint on standard error, status 2.
int usageError(const std::string& command, const std::string& reason) {
    std::cerr << command << ": " << reason << '\n'
              << "Try '" << command << " --help' for more information.\n";
    return 2;
}

std::string commandName(CLI::App& app) {
    auto chosen = app.get_subcommands();
    return chosen.empty() ? "tqmsg" : "tqmsg " + chosen.front()->get_name();
}

}  // namespace

int main(int argc, char** argv) {
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
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        if (e.get_exit_code() == 0) return app.exit(e);
        return usageError(commandName(app), e.what());
    }
    try {
        return commands.at(app.get_subcommands().front())();
    } catch (const UsageError& e) {
        return usageError(commandName(app), e.text);
    } catch (const LookupFailure& e) {
        std::cerr << commandName(app) << ": " << e.text << '\n';
        return 1;
    } catch (const std::exception& e) {
        std::cerr << commandName(app) << ": " << e.what() << '\n';
        return 1;
    }
}
