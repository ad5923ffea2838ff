// tqmsg port: convert a message file written for the Windows message compiler
// into one this library loads with the same identifiers, languages and texts.
// The outputs are committed only when the whole conversion succeeded, so a
// failure leaves no output behind.
#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "CHeaderWriter.h"
#include "Catalogue.h"
#include "Commands.h"
#include "InputDecoder.h"
#include "OutputFiles.h"
#include "PortConverter.h"
#include "PortHeader.h"
#include "TextEscape.h"
#include "WindowsNumber.h"

namespace {

struct PortCommandOptions {
    std::string input, output, header, codePage, namePrefix;
    std::vector<std::string> languageMoves;
    bool noFinalNewline = false, applicationFFF = false, customerBit = false;
    std::string firstNumber = "1";
};

unsigned long optionNumber(const std::string& option, const std::string& text,
                           unsigned long maximum) {
    WindowsNumber number;
    if (!parseWindowsNumber(text, number) || number.value > maximum) {
        throw UsageError{option + ": not a number from 0 to " + std::to_string(maximum) + ": " +
                         text};
    }
    return number.value;
}

PortOptions portOptions(const PortCommandOptions& command) {
    PortOptions options;
    if (!command.codePage.empty() && !knownCodePage(command.codePage)) {
        throw UsageError{"--code-page: iconv knows no code page " + command.codePage};
    }
    options.codePage = command.codePage;
    options.finalLineBreak = !command.noFinalNewline;
    if (!command.namePrefix.empty() && !isCIdentifier(command.namePrefix)) {
        throw UsageError{"--name-prefix: not the start of a C identifier: " + command.namePrefix};
    }
    options.namePrefix = command.namePrefix;
    options.customerBit = command.customerBit;
    options.resolve.applicationFacility = command.applicationFFF ? 0xFFF : 0;
    options.resolve.firstMessageNumber =
        optionNumber("--first-message-number", command.firstNumber, 0xFFFF);
    for (const std::string& move : command.languageMoves) {
        size_t equals = move.find('=');
        if (equals == 0 || equals == std::string::npos) {
            throw UsageError{"--language: expected NAME=ID, got: " + move};
        }
        options.resolve.languageMoves.emplace_back(
            move.substr(0, equals), optionNumber("--language", move.substr(equals + 1), 0xFFFF));
    }
    return options;
}

bool readFile(const std::string& path, std::string& bytes) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::ostringstream content;
    content << in.rdbuf();  // in one block, not character by character
    bytes = content.str();
    return !in.bad();
}

// Reports what was found before `error`, then the error itself.
int failed(const PortReport& report, const std::string& input, const PortError& error) {
    report.print(std::cerr, input, escapeForTerminal);
    std::cerr << escapeForTerminal(describeError(input, error)) << '\n';
    return 1;
}

int port(const PortCommandOptions& command) {
    PortOptions options = portOptions(command);
    OutputFiles outputs;
    outputs.addInput(command.input);
    // Declared before the conversion, so a mistyped output fails at once.
    std::ostream& output = outputs.add(command.output);
    std::ostream* header = command.header.empty() ? nullptr : &outputs.add(command.header);
    std::string bytes;
    if (!readFile(command.input, bytes)) {
        std::cerr << escapeForTerminal(command.input +
                                       ": error: cannot read: " + std::strerror(errno))
                  << '\n';
        return 1;
    }
    PortReport report;
    try {
        PortResult result = portMessageFile(bytes, command.input, options, report);
        // Streamed: a converted file is larger than its input, and a copy in
        // memory costs its pages twice.
        writeMessageFile(output, result.content);
        if (header) {
            const std::string& guardPath = command.header == "-" ? command.input : command.header;
            *header << portHeader(result, guardPath, escapeLine);
        }
        outputs.commitAll();
    } catch (const PortError& error) {
        return failed(report, command.input, error);
    } catch (const UnwritableText& error) {
        return failed(report, command.input, PortError{0, error.what()});
    }
    report.print(std::cerr, command.input, escapeForTerminal);
    return 0;
}

}  // namespace

CommandRun addPortCommand(CLI::App& app) {
    auto options = std::make_shared<PortCommandOptions>();
    CLI::App* command = app.add_subcommand(
        "port",
        "Convert a message file written for the Windows message compiler into one this library "
        "loads with the same identifiers, languages and texts");
    command->add_option("IN", options->input, "The Windows message file")->required();
    command
        ->add_option("-o,--output", options->output,
                     "Converted message file to write ('-': standard output)")
        ->required();
    command->add_option("--header", options->header,
                        "C header to write too, with the original symbolic names ('-': "
                        "standard output)");
    command->add_option("--code-page", options->codePage,
                        "Transcode 8-bit input from this code page (iconv name, e.g. CP1252)");
    command->add_option("--language", options->languageMoves,
                        "Give language NAME the identifier ID (NAME=ID; repeatable)");
    command->add_flag("--no-final-newline", options->noFinalNewline,
                      "No line feed after the last line of each text");
    command->add_flag("--application-fff", options->applicationFFF,
                      "Facility Application is 0xFFF, as documented (default 0, as built)");
    command->add_option("--first-message-number", options->firstNumber,
                        "Number of a facility's first message without a value (default 1)");
    command->add_option("--name-prefix", options->namePrefix,
                        "Put this before every symbolic name of the converted file");
    command->add_flag("--customer-bit", options->customerBit,
                      "Refused: identifiers cannot carry the customer bit");
    return [options] { return port(*options); };
}
