// A table's life: construction, seeding, the read loop over the file, the
// dispatch of top-level lines and the wording of every parser error.
#include <sys/stat.h>

#include <cstring>

#include "MessageModule.h"
#include "MessageTable.h"
#include "maps/FailureText.h"
#include "parser/KeywordSearch.h"
#include "parser/LineReader.h"
#include "parser/ParseError.h"

MessageTable::MessageTable(MessageModule* module, std::string& fileName, bool trimTrailingOnly)
    : module(module) {
    try {
        loadFile(fileName, trimTrailingOnly);
    } catch (...) {
        // The destructor does not run for a constructor that throws.
        delete lastMessage;
        lastMessage = nullptr;
        throw;
    }
}

MessageTable::~MessageTable() { delete lastMessage; }

void MessageTable::init() {
    languages.allowDuplicates = true;
    severities.allowDuplicates = true;

    std::string application = DEFAULT_FIRST_MESSAGE_FACILITY;
    Facility seeded;
    seeded.id = DEFAULT_FIRST_MESSAGE_FACILITY_ID;
    facilities.put(application, DEFAULT_FIRST_MESSAGE_FACILITY_ID, seeded, false);

    const struct {
        const char* name;
        long id;
    } seededSeverities[] = {{SEV_SUCCESS, SEV_SUCCESS_ID},
                            {SEV_INFORMATIONAL, SEV_INFORMATIONAL_ID},
                            {SEV_WARNING, SEV_WARNING_ID},
                            {SEV_ERROR, SEV_ERROR_ID}};
    for (const auto& severity : seededSeverities) {
        std::string name = severity.name;
        severities.putX(name, severity.id, name, false);
    }

    declaredLanguages.clear();
    lineNumber = 0;
    defaultLanguage = DEFAULT_FIRST_MESSAGE_LANGUAGE;
    currentFacility = Facility();
    defaultSeverity = DEFAULT_FIRST_MESSAGE_SEVERITY;
    customerBit = DEFAULT_CUSTOMER_CODE;
    reservedBit = DEFAULT_RESERVED_BIT_CODE;
    delete lastMessage;
    lastMessage = nullptr;
    trimTrailingOnly = false;
    textPlaces.clear();
    listPlaces.clear();
}

void MessageTable::loadFile(std::string& fileName, bool trimTrailingOnly) {
    this->fileName = fileName;
    init();
    this->trimTrailingOnly = trimTrailingOnly;

    // A directory opens like a file on Linux and fails only at the first read:
    // it is a file that cannot be opened for reading.
    struct stat status;
    bool directory = ::stat(this->fileName.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    std::ifstream in;
    if (!directory) in.open(this->fileName.c_str(), std::ios::in);
    if (!in.is_open()) {
        throw parseError(*this, "Unable to open file: %s", this->fileName.c_str());
    }
    char buffer[LINE_BUFFER_SIZE];
    try {
        for (;;) {
            if (readLine(*this, in, buffer) == LineRead::EndOfFile) {
                processLine(in, buffer);
                break;
            }
            if (processLine(in, buffer)) break;
        }
    } catch (MessageTableParserException& error) {
        // lineNumber and fileName keep the place of the error.
        in.close();
        throw MessageTableParserException(error);
    }
    in.close();
    lineNumber = 0;
    this->fileName.clear();
}

bool MessageTable::processLine(std::ifstream& in, char* line) {
    if (commentLine(line) || blankLine(line)) return false;

    enum Action { List, Ignore, Continuation, Definition };
    static const char* const keywords[] = {LANGUAGE_NAMES,     FACILITY_NAMES, SEV_NAMES,
                                           MESSAGE_ID_TYPEDEF, LANGUAGE,       MESSAGE_ID};
    static const Action actions[] = {List, List, List, Ignore, Continuation, Definition};
    static const KeywordSet rules(keywords, 6);

    std::size_t position = 0;
    int rule = rules.firstFound(line, std::strlen(line), position);
    if (rule < 6) {
        std::string text = line;
        int at = static_cast<int>(position);
        switch (actions[rule]) {
            case List:
                return processHeaderNames(in, text, at, keywords[rule]);
            case Ignore:
                return false;
            case Continuation:
                return processMessageId(in, text, at, lastMessage);
            case Definition:
                return processMessageId(in, text, at, nullptr);
        }
    }
    throw parseError(*this, "Cannot understand input: \"%s\"", line);
}

MessageTableParserException MessageTable::wrapError(const char* text) {
    if (fileName.empty()) return MessageTableParserException(text);
    if (lineNumber >= 1) {
        return parserFailure("File: \"%s\", Line: %d - %s", fileName.c_str(), lineNumber, text);
    }
    return parserFailure("File: \"%s\" - %s", fileName.c_str(), text);
}
