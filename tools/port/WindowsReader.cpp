// The statement reader of the Windows dialect.
#include "WindowsReader.h"

#include <strings.h>

#include <cstring>

#include "SourceScanner.h"
#include "WindowsNumber.h"

namespace {

enum class Keyword {
    None,
    LanguageNames,
    SeverityNames,
    FacilityNames,
    MessageIdTypedef,
    OutputBase,
    MessageId,
    Severity,
    Facility,
    SymbolicName,
    Language
};

Keyword keywordOf(const std::string& word) {
    static const std::pair<const char*, Keyword> keywords[] = {
        {"languagenames", Keyword::LanguageNames}, {"severitynames", Keyword::SeverityNames},
        {"facilitynames", Keyword::FacilityNames}, {"messageidtypedef", Keyword::MessageIdTypedef},
        {"outputbase", Keyword::OutputBase},       {"messageid", Keyword::MessageId},
        {"severity", Keyword::Severity},           {"facility", Keyword::Facility},
        {"symbolicname", Keyword::SymbolicName},   {"language", Keyword::Language}};
    for (auto& keyword : keywords) {
        if (word.size() == std::strlen(keyword.first) &&
            strcasecmp(word.c_str(), keyword.first) == 0) {
            return keyword.second;
        }
    }
    return Keyword::None;
}

class Reader {
public:
    Reader(std::vector<std::string>& lines, PortReport& report) : scan_(lines), report_(report) {}

    WindowsSource read();

private:
    void statement(Keyword keyword, const std::string& word, int line);
    void list(ListKind kind, const std::string& word);
    SourceEntry entry(ListKind kind, const std::string& listName);
    void messageId(int line);
    void text(const std::string& word, int line);
    SourceValue value(const std::string& word);
    unsigned long number(const std::string& text, int line, const std::string& what);
    SourceDefinition& current(const std::string& word, int line);

    SourceScanner scan_;
    PortReport& report_;
    WindowsSource source_;
};

WindowsSource Reader::read() {
    for (scan_.skipSpaceAndComments(); !scan_.atEnd(); scan_.skipSpaceAndComments()) {
        int line = scan_.lineNumber();
        std::string word = scan_.readWord();
        Keyword keyword = keywordOf(word);
        if (keyword == Keyword::None) {
            throw PortError{line, "unexpected text: \"" + scan_.rest().insert(0, word) + "\""};
        }
        scan_.skipBlanks();
        if (scan_.peek() != '=') throw PortError{line, "expected \"=\" after " + word};
        scan_.advance();
        statement(keyword, word, line);
    }
    if (scan_.commentsSkipped() > 0) {
        report_.warn(scan_.firstCommentLine(), WarningKind::Dropped,
                     std::to_string(scan_.commentsSkipped()) +
                         " comments dropped (the Windows message compiler copies them into "
                         "its C header)");
    }
    return std::move(source_);
}

void Reader::statement(Keyword keyword, const std::string& word, int line) {
    switch (keyword) {
        case Keyword::LanguageNames:
            return list(ListKind::Language, word);
        case Keyword::SeverityNames:
            return list(ListKind::Severity, word);
        case Keyword::FacilityNames:
            return list(ListKind::Facility, word);
        case Keyword::MessageIdTypedef:
        case Keyword::OutputBase:
            report_.warn(line, WarningKind::Dropped,
                         word + "=" + value(word).text + " dropped (it only shapes the C header)");
            return;
        case Keyword::MessageId:
            return messageId(line);
        case Keyword::Severity:
            current(word, line).severity = value(word);
            return;
        case Keyword::Facility:
            current(word, line).facility = value(word);
            return;
        case Keyword::SymbolicName:
            current(word, line).symbolicName = value(word);
            return;
        case Keyword::Language:
            return text(word, line);
        case Keyword::None:
            break;
    }
}

void Reader::list(ListKind kind, const std::string& word) {
    int opened = scan_.lineNumber();
    scan_.skipSpaceAndComments();
    if (scan_.peek() != '(') throw PortError{opened, "expected \"(\" after " + word + "="};
    scan_.advance();
    for (scan_.skipSpaceAndComments(); scan_.peek() != ')'; scan_.skipSpaceAndComments()) {
        if (scan_.atEnd()) throw PortError{opened, "the " + word + " list has no \")\""};
        source_.order.push_back({true, source_.entries.size()});
        source_.entries.push_back(entry(kind, word));
    }
    scan_.advance();
}

SourceEntry Reader::entry(ListKind kind, const std::string& listName) {
    SourceEntry entry{kind, scan_.readWord(), 0, "", scan_.lineNumber()};
    if (entry.name.empty()) {
        throw PortError{entry.line,
                        "a " + listName + " entry does not parse: \"" + scan_.rest() + "\""};
    }
    scan_.skipSpaceAndComments();
    if (scan_.peek() != '=') {
        throw PortError{entry.line, "expected \"=\" after " + entry.name + " in " + listName};
    }
    scan_.advance();
    scan_.skipSpaceAndComments();
    entry.number = number(scan_.readWord(), entry.line, listName + " entry " + entry.name);
    scan_.skipBlanks();
    if (scan_.peek() == ':') {
        scan_.advance();
        scan_.skipBlanks();
        entry.symbol = scan_.readWord();
    }
    return entry;
}

unsigned long Reader::number(const std::string& text, int line, const std::string& what) {
    WindowsNumber parsed;
    if (!parseWindowsNumber(text, parsed)) {
        throw PortError{line, what + ": not a number: \"" + text + "\""};
    }
    if (parsed.octal) {
        report_.warn(
            line, WarningKind::Undocumented,
            what + ": " + text + " read as octal (" + std::to_string(parsed.value) + "), as in C");
    }
    return parsed.value;
}

void Reader::messageId(int line) {
    SourceDefinition definition;
    definition.line = line;
    if (!scan_.atLineEnd()) {
        SourceScanner ahead = scan_;
        std::string word = ahead.readWord();
        ahead.skipBlanks();
        if (ahead.peek() != '=') {  // not the next statement: the value
            scan_ = ahead;
            bool relative = !word.empty() && word[0] == '+';
            definition.request = relative ? IdRequest::Relative : IdRequest::Absolute;
            definition.number = number(relative ? word.substr(1) : word, line, "MessageId");
        }
    }
    source_.order.push_back({false, source_.definitions.size()});
    source_.definitions.push_back(std::move(definition));
}

SourceDefinition& Reader::current(const std::string& word, int line) {
    if (source_.definitions.empty() || !source_.definitions.back().texts.empty()) {
        throw PortError{line, word +
                                  "= outside a message definition (it belongs between "
                                  "MessageId= and the first Language=)"};
    }
    return source_.definitions.back();
}

SourceValue Reader::value(const std::string& word) {
    SourceValue value{"", scan_.lineNumber()};
    if (!scan_.atLineEnd()) value.text = scan_.readWord();
    if (value.text.empty()) throw PortError{value.line, word + "= has no value"};
    return value;
}

void Reader::text(const std::string& word, int line) {
    if (source_.definitions.empty()) {
        throw PortError{line, word + "= before any MessageId="};
    }
    SourceText text;
    text.language = value(word);
    if (!scan_.atLineEnd()) {
        report_.warn(line, WarningKind::Dropped,
                     "text after " + word + "=" + text.language.text +
                         " on its line is ignored: \"" + scan_.rest() + "\"");
    }
    std::string* lineText = scan_.nextLine();
    for (; lineText && *lineText != "."; lineText = scan_.nextLine()) {
        text.lines.push_back(std::move(*lineText));
        text.lineNumbers.push_back(scan_.lineNumber());
    }
    if (!lineText) {
        while (!text.lines.empty() &&
               text.lines.back().find_first_not_of(" \t\r\f\v") == std::string::npos) {
            text.lines.pop_back();
            text.lineNumbers.pop_back();
        }
        text.endedByEndOfFile = true;
        report_.warn(line, WarningKind::Undocumented,
                     "the file ends inside this text, which has no \".\" line: it ends there");
    }
    source_.definitions.back().texts.push_back(std::move(text));
}

}  // namespace

WindowsSource readWindowsSource(std::vector<std::string>& lines, PortReport& report) {
    return Reader(lines, report).read();
}
