// Writes message files that this library reads back exactly as meant.
//
// The library's reader trims text lines, drops blank and ";" lines inside a
// text, ends a text at any line whose trimmed form is ".", classifies the first
// text line by the header keywords it contains and reads at most 4,095
// characters a line. The writer turns logical text lines into file lines that
// survive all of this: once loaded, they format to the logical lines, each
// followed by a line feed (the last one only when asked for), with no line feed
// after a line that ends in the "%0" escape.
//
// This is the one writer of message-file text in the project: every tool that
// produces message files goes through it.
#ifndef TQMSG_PORT_MESSAGE_FILE_WRITER_H
#define TQMSG_PORT_MESSAGE_FILE_WRITER_H

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

// A text that cannot be written: a name that would be misread, or an insert
// longer than a file line.
struct UnwritableText : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The longest line the library reads.
const size_t MAX_FILE_LINE = 4095;

// The file lines for one message text. `lines` are the logical lines, in the
// formatter's escape syntax; a "%" alone at the end of a line is dropped (the
// formatter gives nothing for it before a line break). With `finalLineBreak`
// the last line is followed by a line feed unless it ends in "%0". The result
// is never empty for a non-empty `lines`. Throws UnwritableText for an insert
// too long for one file line and for a line holding a NUL or a line feed.
std::vector<std::string> writeTextLines(const std::vector<std::string>& lines, bool finalLineBreak);

// What a name is used as: each role is read from a line that the reader
// classifies by keywords, so a name holding one of them is misread.
enum class NameRole { SymbolicName, Language, Severity, Facility };

// The keyword that makes `name` misread in its role ("" when it reads back as
// written).
std::string misreadKeyword(const std::string& name, NameRole role);

// `name` with "_" after the first letter of every keyword in it that makes it
// misread in `role` (ERROR_LANGUAGE becomes ERROR_L_ANGUAGE), overlapping ones
// included: one pass, in time linear in the name's length.
std::string unspoiledName(const std::string& name, NameRole role);

// True when `name` can be written in `role`: not empty, no white space, no
// "=", "(", ")" or ";", no misreading keyword, and short enough for its line.
bool writableName(const std::string& name, NameRole role);

// One entry of a name list: name=number[:symbol].
struct NameEntry {
    std::string name;
    long number = 0;
    std::string symbol;  // may be empty
};

// One text of a message in one language.
struct LanguageText {
    std::string language;  // a declared language name
    std::vector<std::string> lines;
    bool finalLineBreak = true;
};

// One message, written with an absolute number and every header named.
struct MessageDefinition {
    long code = 0;  // message number, 0 to 0xFFFF
    std::string severity;
    std::string facility;
    std::string symbolicName;
    std::vector<LanguageText> texts;  // the first opens the definition
};

// A whole file. Severity and facility names the reader seeds need no entry.
struct MessageFileContent {
    std::vector<std::string> comments;  // written first, one comment line each
    std::vector<NameEntry> languages;
    std::vector<NameEntry> severities;
    std::vector<NameEntry> facilities;
    std::vector<MessageDefinition> definitions;
};

// Writes `content` as a message file. Throws UnwritableText for a name that
// would be misread or a text that cannot be written.
void writeMessageFile(std::ostream& out, const MessageFileContent& content);

#endif  // TQMSG_PORT_MESSAGE_FILE_WRITER_H
