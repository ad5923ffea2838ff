// A Windows message file as written: its name lists and its message
// definitions in file order, names and numbers not yet resolved.
#ifndef TQMSG_PORT_WINDOWS_SOURCE_H
#define TQMSG_PORT_WINDOWS_SOURCE_H

#include <string>
#include <vector>

enum class ListKind { Language, Severity, Facility };

// name=number[:symbol] in a LanguageNames, SeverityNames or FacilityNames list.
struct SourceEntry {
    ListKind kind;
    std::string name;
    unsigned long number;
    std::string symbol;
    int line;
};

// A value given to a keyword, with its line; empty text when not given.
struct SourceValue {
    std::string text;
    int line = 0;
    bool given() const { return line > 0; }
};

// How a MessageId value sets the message number.
enum class IdRequest { Next, Absolute, Relative };

struct SourceText {
    SourceValue language;
    std::vector<std::string> lines;
    std::vector<int> lineNumbers;  // the file line of each text line
    bool endedByEndOfFile = false;
};

struct SourceDefinition {
    int line = 0;  // of the MessageId statement
    IdRequest request = IdRequest::Next;
    unsigned long number = 0;  // for Absolute and Relative
    SourceValue severity, facility, symbolicName;
    std::vector<SourceText> texts;
};

// A list entry or a definition, in file order.
struct SourceItem {
    bool isEntry;
    size_t index;  // into entries or definitions
};

struct WindowsSource {
    std::vector<SourceEntry> entries;
    std::vector<SourceDefinition> definitions;
    std::vector<SourceItem> order;
};

#endif  // TQMSG_PORT_WINDOWS_SOURCE_H
