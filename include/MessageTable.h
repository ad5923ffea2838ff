// tqmsg: the message file parser.
//
// A `MessageTable` reads one message file, in the Message Compiler source
// syntax, in a single pass from its constructor. It keeps the languages,
// facilities and severities the file declares and puts every message text into
// the process-wide store through its parent `MessageModule`. Every syntax error
// stops the load with a `MessageTableParserException` whose text starts with
// 'File: "<name>", Line: <n> - '; messages stored before the error stay stored.
//
// Lines are read into a 4096-byte buffer: a line of 4096 characters or more is
// an error, never split or truncated.
//
// Thread safety: a table is built by one thread; loading writes the
// process-wide store and must not overlap any other load or lookup.
#ifndef TQMSG_MESSAGE_TABLE_H
#define TQMSG_MESSAGE_TABLE_H

#include <fstream>
#include <ostream>
#include <string>
#include <vector>

#include "MessageModuleMaps.h"

class MessageModule;

class TQMSG_API MessageTable {
public:
    // A `name=value` pair, both sides trimmed.
    class TQMSG_API NameValue {
    public:
        std::string name;   // text before the first "=", trimmed
        std::string value;  // text after it, trimmed (may be empty)

        // <name="..."; value="...">, no line break.
        std::string toString();
    };

    // Where one stored text stands in the file (lines counted from 1), for
    // tools that rewrite single texts and leave the rest of the file alone.
    struct TextPlace {
        long languageId = 0;    // language the text was stored under
        long messageId = 0;     // identifier its definition composed (the store files the
                                // text under the one first bound to its symbolic name)
        int headerLine = 0;     // the MessageId line, or a continuation's Language line
        int firstTextLine = 0;  // first line taken into the text (endLine if none)
        int lastTextLine = 0;   // last line taken into the text (endLine - 1 if none)
        int endLine = 0;        // the "." line that stored the text
    };

    // Where one name list stands, with what it declared.
    struct ListPlace {
        const char* listName = nullptr;  // LANGUAGE_NAMES, FACILITY_NAMES or SEV_NAMES
        int firstLine = 0;               // the line holding the list's keyword
        int lastLine = 0;                // the line holding its ")"
        std::vector<long> numbers;       // the number of each entry, in file order
    };

    // Keywords are lower case: lines are matched after lower-casing.
    static const char* COMMENT_PREFIX;         // ";": first character of a comment line
    static const char* LANGUAGE_NAMES;         // "languagenames": opens the languages list
    static const char* FACILITY_NAMES;         // "facilitynames": opens the facilities list
    static const char* SEV_NAMES;              // "severitynames": opens the severities list
    static const char* MESSAGE_ID_TYPEDEF;     // "messageidtypedef": a top-level line ignored
    static const char* LANGUAGE;               // "language": a further language of the last message
    static const char* MESSAGE_ID;             // "messageid": opens a message definition
    static const char* HEADER_NAMES_BEGIN;     // "(": opens a name list
    static const char* HEADER_NAMES_END;       // ")": closes a name list
    static const char* MESSAGE_FACILITY;       // "facility": header naming the facility
    static const char* MESSAGE_SEVERITY;       // "severity": header naming the severity
    static const char* MESSAGE_LANGUAGE;       // "language": header naming the language
    static const char* MESSAGE_OUTPUT_BASE;    // "outputbase": header ignored
    static const char* MESSAGE_SYMBOLIC_NAME;  // "symbolicname": header naming the message
    static const char* MESSAGE_END_MARKER;     // ".": the line that ends a message text
    static const char* DEFAULT_FIRST_MESSAGE_LANGUAGE;    // "English": the initial default language
    static const char* DEFAULT_FIRST_MESSAGE_FACILITY;    // "Application": the seeded facility
    static const long DEFAULT_FIRST_MESSAGE_FACILITY_ID;  // 0: the seeded facility's id
    static const char* DEFAULT_FIRST_MESSAGE_SEVERITY;    // "Success": the initial default severity
    // The seeded severities, with their ids (bits 31-30 of an identifier).
    static const char* SEV_SUCCESS;               // "Success"
    static const long SEV_SUCCESS_ID;             // 0
    static const char* SEV_INFORMATIONAL;         // "Informational"
    static const long SEV_INFORMATIONAL_ID;       // 1
    static const char* SEV_WARNING;               // "Warning"
    static const long SEV_WARNING_ID;             // 2
    static const char* SEV_ERROR;                 // "Error"
    static const long SEV_ERROR_ID;               // 3
    static const char DEFAULT_CUSTOMER_CODE;      // 0: the customer flag (bit 29) of every id
    static const char DEFAULT_RESERVED_BIT_CODE;  // 0: the reserved flag (bit 28) of every id

    int lineNumber = 0;               // line being read (1-based); 0 before and after a load
    std::string fileName;             // file being loaded; emptied after a successful load
    std::string defaultLanguage;      // language of a definition without Language header
    Facility currentFacility;         // facility of a definition without Facility header
    std::string defaultSeverity;      // severity of a definition without Severity header
    DualIDMap languages;              // declared languages
    FacilityMap facilities;           // seeded and declared facilities
    DualIDMap severities;             // seeded and declared severities
    MessageModule* module = nullptr;  // parent handle; not owned
    FormattableMessage* lastMessage = nullptr;  // owned copy of the message stored last
    char customerBit = 0;                       // bit 29 of composed identifiers (always 0)
    char reservedBit = 0;                       // bit 28 of composed identifiers (always 0)
    bool trimTrailingOnly = false;              // trim message text lines at the end only
    std::vector<TextPlace> textPlaces;          // one per stored text, in file order
    std::vector<ListPlace> listPlaces;          // one per name list, in file order

    // Ids of the declared languages, in the order the file declares them, each once.
    std::vector<long> declaredLanguages;

    // Builds the table and loads `fileName`; throws MessageTableParserException.
    MessageTable(MessageModule* module, std::string& fileName, bool trimTrailingOnly);
    MessageTable(const MessageTable&) = delete;
    MessageTable& operator=(const MessageTable&) = delete;
    // Releases `lastMessage`; the store is not touched.
    ~MessageTable();

    // Seeds the severities and the facility Application and resets the
    // defaults; the languages stay empty.
    void init();
    // Reads and processes the whole file; throws MessageTableParserException
    // naming the file and line. On success `lineNumber` is 0 and `fileName` empty.
    void loadFile(std::string& fileName, bool trimTrailingOnly);
    // Handles one top-level line; true when a reader it called met the end of the file.
    bool processLine(std::ifstream& in, char* line);

    // True when `line` starts with ";" (no white space before it).
    bool commentLine(char* line);
    // True when `line` is empty or holds only tab, line feed, carriage return and space.
    bool blankLine(char* line);
    // `out` = `text` without white space at either end.
    void trim(char* text, std::string& out);
    // `out` = `text` without white space at its end; the first character always stays.
    void trimAfter(char* text, std::string& out);
    // Splits `text` at its first "="; throws when there is none or it comes first.
    NameValue parseNameValuePair(std::string& text);
    // Decimal or 0x/0X hexadecimal, with an optional sign when `allowSign`.
    // False (number unchanged) for any other character, for a text without
    // digits, and for a magnitude beyond 32 bits.
    bool getNumber(std::string& text, long& number, bool allowSign);

    // Reads a name list from its header line `line` (`listName` found at
    // `position`) to its ")", entering each entry into its map. Returns false:
    // the end of the file inside a list is an error.
    bool processHeaderNames(std::ifstream& in, std::string& line, int position,
                            const char* listName);
    // Reads one message definition, or with `previous` a further language of
    // that message, through its "." line; true when the file ended.
    bool processMessageId(std::ifstream& in, std::string& line, int position,
                          FormattableMessage* previous);
    // Takes one line of a header block; false when it is the first text line.
    bool processMessageHeaderBlock(char* line, long*& language, Facility*& facility,
                                   long*& severity, std::string& symbolicName);
    // Takes one text line; true when it was the "." line and the message is stored.
    bool processMessageBody(char* line, std::string& text, long*& language, Facility& facility,
                            long*& severity, std::string& symbolicName, long messageId);

    // The exception for `text`, prefixed with the file name and line number.
    MessageTableParserException wrapError(const char* text);

    // The rendering of the table's three maps, as operator<< writes it.
    std::string toString();
};

TQMSG_API std::ostream& operator<<(std::ostream& out, MessageTable& table);

#endif  // TQMSG_MESSAGE_TABLE_H
