// tqmsg dump: the library's own rendering of the loaded module.
#include <iostream>
#include <memory>

#include "Catalogue.h"
#include "Commands.h"

CommandRun addDumpCommand(CLI::App& app) {
    auto files = std::make_shared<std::vector<std::string>>();
    CLI::App* command =
        app.add_subcommand("dump", "Print the module rendering: tables and stored messages");
    command->add_option("FILE", *files, "Message files, loaded in order")->required();
    return [files] {
        Catalogue catalogue;
        if (!catalogue.load(*files)) return 1;
        std::cout << catalogue.module();
        return 0;
    };
}
