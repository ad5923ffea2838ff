// The subcommands of the tqmsg tool. Each `add...Command` declares its
// subcommand and options on `app` and returns the function that runs it once
// the command line has been parsed; that function returns the exit status
// (0 success, 1 failure), or throws CommandFailure (status 1) or UsageError
// (status 2).
#ifndef TQMSG_TOOL_COMMANDS_H
#define TQMSG_TOOL_COMMANDS_H

#include <CLI/CLI.hpp>
#include <functional>

using CommandRun = std::function<int()>;

CommandRun addCheckCommand(CLI::App& app);
CommandRun addListCommand(CLI::App& app);
CommandRun addFormatCommand(CLI::App& app);
CommandRun addDumpCommand(CLI::App& app);
CommandRun addHeaderCommand(CLI::App& app);
CommandRun addPortCommand(CLI::App& app);
CommandRun addPoCommand(CLI::App& app);
CommandRun addCatalogCommand(CLI::App& app);

#endif  // TQMSG_TOOL_COMMANDS_H
