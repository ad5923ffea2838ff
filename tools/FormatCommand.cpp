// tqmsg format: one message through formatMessage, printed with a line feed.
#include <cstdint>
#include <iostream>
#include <memory>
#include <sstream>

#include "Catalogue.h"
#include "Commands.h"
#include "Diagnostics.h"
#include "InsertArguments.h"

namespace {

struct FormatOptions {
    std::string file;
    std::vector<std::string> also;
    std::string message;
    std::vector<std::string> args;
    std::string language;
    int width = 0;
    bool ignoreInserts = false;
};

// The formatter writes its failure line to std::cout; while it runs, that
// line is caught here so standard output carries only the result.
class CoutCapture {
public:
    CoutCapture() : saved_(std::cout.rdbuf(captured_.rdbuf())) {}
    ~CoutCapture() { std::cout.rdbuf(saved_); }
    std::string text() const { return captured_.str(); }

private:
    std::ostringstream captured_;
    std::streambuf* saved_;
};

long chooseLanguage(const Catalogue& catalogue, const std::string& requested) {
    if (!requested.empty()) return catalogue.language(requested);
    std::vector<long> declared = catalogue.languageIds();
    if (declared.size() == 1) return declared.front();
    throw UsageError{"the files declare " + std::to_string(declared.size()) +
                     " languages: choose one with --lang"};
}

int format(FormatOptions& options) {
    Catalogue catalogue;
    std::vector<std::string> files = {options.file};
    files.insert(files.end(), options.also.begin(), options.also.end());
    if (!catalogue.load(files)) return 1;
    long languageId = chooseLanguage(catalogue, options.language);
    long messageId = catalogue.messageId(options.message);

    FormattableMessage* stored = nullptr;
    MessageModule::mlmap.get(languageId, messageId, stored);
    // Without a text (the formatter reports it missing) or with its inserts
    // ignored, no argument is read.
    std::vector<char*> array(199, nullptr);
    if (stored != nullptr && !options.ignoreInserts) {
        array = insertArguments(stored->text, options.args, options.message);
    }

    long flags = _FORMAT_MESSAGE_ALLOCATE_BUFFER | _FORMAT_MESSAGE_ARGUMENT_ARRAY |
                 (options.width & _FORMAT_MESSAGE_MAX_WIDTH_MASK);
    if (options.ignoreInserts) flags |= _FORMAT_MESSAGE_IGNORE_INSERTS;
    char* buffer = nullptr;
    long result;
    std::string failure;
    {
        CoutCapture capture;
        result = MessageModule::formatMessage(flags, nullptr, messageId, languageId, &buffer, 0,
                                              array.data());
        failure = capture.text();
    }
    if (result == -1 || buffer == nullptr) {
        printError(failure);
        return 1;
    }
    std::cout << buffer << '\n';
    delete[] buffer;
    return 0;
}

}  // namespace

CommandRun addFormatCommand(CLI::App& app) {
    auto options = std::make_shared<FormatOptions>();
    CLI::App* command = app.add_subcommand(
        "format", "Format one message through formatMessage and print it with a line feed");
    command->add_option("FILE", options->file, "Message file")->required();
    command
        ->add_option("MESSAGE", options->message,
                     "Symbolic name, or identifier in decimal or 0x hexadecimal")
        ->required();
    command->add_option("ARG", options->args,
                        "Insert values: %N takes ARG number N (a 32-bit integer where the insert "
                        "converts a number)");
    command->add_option("--also", options->also, "Load a further file (repeatable)")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command->add_option("--lang", options->language,
                        "Language: a numeric id or a declared name (default: the only one)");
    command->add_option("--width", options->width, "Maximum line width, 0 for none")
        ->check(CLI::Range(0, 255));
    command->add_flag("--ignore-inserts", options->ignoreInserts,
                      "Print the text with its escapes and inserts unchanged");
    return [options] { return format(*options); };
}
