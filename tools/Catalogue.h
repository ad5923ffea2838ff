// The message files of one run of the tool, loaded into the process-wide
// store once, and the look-ups the subcommands share: languages by number or
// declared name, messages by symbolic name or identifier.
#ifndef TQMSG_TOOL_CATALOGUE_H
#define TQMSG_TOOL_CATALOGUE_H

#include <string>
#include <vector>

#include "MessageModule.h"

// A failure the user caused on the command line: reported with a one-line
// hint and exit status 2.
struct UsageError {
    std::string text;
};

// A failure that is not the command line's fault (a name that the loaded files
// do not define, a message the tool cannot format): reported on standard
// error, exit status 1.
struct CommandFailure {
    std::string text;
};

enum class NumberText { VALID, NOT_A_NUMBER, OUT_OF_RANGE };

// A number written in decimal (optionally signed) or 0x hexadecimal, from
// -2147483648 to 4294967295, stored as its 32-bit signed value; `number` is
// set only for VALID.
NumberText parseNumber(const std::string& text, long& number);

// How the tool states the range of its numbers in messages.
extern const char* const OUTSIDE_32_BITS;

// One stored text with its identifier, in listing order.
struct StoredText {
    long messageId;
    FormattableMessage* message;
};

class Catalogue {
public:
    // Loads `files` in order into one module. Returns false after the first
    // failure, which has been reported on standard error.
    bool load(const std::vector<std::string>& files);
    // Loads one more file; a failure is reported on standard error: the
    // library's text and the tool's hints.
    bool loadOne(const std::string& file);
    // The library's text for the last file that failed to load, or "".
    const std::string& lastFailure() const { return lastFailure_; }

    MessageModule& module() { return module_; }

    // Distinct language ids declared by the loaded files, ascending.
    std::vector<long> languageIds() const;
    // A numeric language id, or the id of a language name a loaded file declares
    // (any case). Throws CommandFailure for anything else.
    long language(const std::string& text) const;
    // The message id of a symbolic name, or a numeric identifier. Throws
    // CommandFailure when neither.
    long messageId(const std::string& text) const;
    // The lower-case name a loaded file gives a severity / facility id, or "".
    std::string severityName(long id) const;
    std::string facilityName(long id) const;
    // Every stored text, ordered by unsigned identifier then language id;
    // `languageId` null for all languages.
    std::vector<StoredText> texts(const long* languageId) const;

private:
    MessageModule module_;
    std::string lastFailure_;
};

#endif  // TQMSG_TOOL_CATALOGUE_H
