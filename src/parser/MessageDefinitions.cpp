// Message definitions: the MessageId line, the header block, the text up to
// its "." line, the composed identifier, and continuation blocks that add a
// further language to the message stored last.
#include <algorithm>
#include <cstdint>
#include <cstring>

#include "MessageModule.h"
#include "MessageTable.h"
#include "parser/KeywordSearch.h"
#include "parser/LineReader.h"
#include "parser/ParseError.h"
#include "parser/TextSpan.h"

namespace {

// What the value of a MessageId line asks of the facility's counter.
struct NumberRequest {
    enum Kind { None, Relative, Absolute } kind = None;
    long number = 0;
};

// The 32-bit identifier: severity in bits 31-30, customer and reserved flags in
// bits 29 and 28, facility code in bits 27-16, message code in bits 15-0.
// Composed in unsigned arithmetic, so higher bits of each part fall off.
long composeMessageId(long severity, char customerBit, char reservedBit, long facilityId,
                      long code) {
    uint32_t id = static_cast<uint32_t>(severity) << 30;
    id |= (static_cast<uint32_t>(customerBit) & 1u) << 29;
    id |= (static_cast<uint32_t>(reservedBit) & 1u) << 28;
    id |= (static_cast<uint32_t>(facilityId) & 0xFFFu) << 16;
    id |= static_cast<uint32_t>(code) & 0xFFFFu;
    return toInt32(static_cast<long>(static_cast<int32_t>(id)));
}

// `a` + `b` with 32-bit wrap-around, as an i386 counter would hold it.
long add32(long a, long b) {
    return toInt32(static_cast<long>(
        static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b))));
}

// Reads the request of a MessageId line from the keyword on. Only a pair named
// exactly "messageid" with a non-empty value asks for anything.
NumberRequest readNumberRequest(MessageTable& table, std::string& line, int position) {
    std::string rest = line.substr(position);
    MessageTable::NameValue pair = table.parseNameValuePair(rest);
    NumberRequest request;
    if (toLowerCase(pair.name) != MessageTable::MESSAGE_ID || pair.value.empty()) return request;
    if (!table.getNumber(pair.value, request.number, true)) {
        throw parseError(table, "Expected numeric value for message id, got: %s",
                         pair.value.c_str());
    }
    bool relative = pair.value[0] == '+' || pair.value[0] == '-';
    request.kind = relative ? NumberRequest::Relative : NumberRequest::Absolute;
    return request;
}

// The working values of one definition while it is read.
struct Definition {
    long* language = nullptr;      // into the table's languages, or at inheritedLanguage
    Facility* facility = nullptr;  // into the table's facilities, or at currentFacility
    long* severity = nullptr;      // into the table's severities, or at inheritedSeverity
    std::string symbolicName;
    std::string text;                                   // the text gathered so far
    long inheritedLanguage = 0, inheritedSeverity = 0;  // a continuation's copies
    long messageId = 0;
    MessageTable::TextPlace place;  // where the definition stands, filled as lines are read
};

// Header lines up to the first text line (left in `buffer`, `textPending` set)
// or to the end of the file. Returns whether the end of the file was met.
bool readHeaderBlock(MessageTable& table, std::ifstream& in, char* buffer, bool atEnd,
                     Definition& d, bool& textPending) {
    textPending = false;
    while (!atEnd) {
        if (!table.processMessageHeaderBlock(buffer, d.language, d.facility, d.severity,
                                             d.symbolicName)) {
            textPending = true;
            return false;
        }
        atEnd = readLine(table, in, buffer) == LineRead::EndOfFile;
    }
    // The read that met the end of the file may still hold a header line.
    if (!table.processMessageHeaderBlock(buffer, d.language, d.facility, d.severity,
                                         d.symbolicName)) {
        throw parseError(table, "Unexpected EOF. Expected message body");
    }
    return true;
}

// Fills in what the header block left open, takes the code from the
// facility's counter and composes the identifier.
void completeDefinition(MessageTable& table, Definition& d, FormattableMessage* previous,
                        const NumberRequest& request) {
    if (d.symbolicName.empty()) {
        throw parseError(table, "No symbolic name specified for message. Expected tag: \"%s\"",
                         MessageTable::MESSAGE_SYMBOLIC_NAME);
    }
    if (d.language == nullptr) {
        if (previous != nullptr) {
            d.inheritedLanguage = previous->languageId;
            d.language = &d.inheritedLanguage;
        } else if ((d.language = table.languages.getIDX(table.defaultLanguage)) == nullptr) {
            throw parseError(table, "Unknown default language: %s", table.defaultLanguage.c_str());
        }
    }
    if (d.facility == nullptr) d.facility = &table.currentFacility;
    if (d.severity == nullptr) {
        if (previous != nullptr) {
            d.inheritedSeverity = previous->severityId;
            d.severity = &d.inheritedSeverity;
        } else if ((d.severity = table.severities.getIDX(table.defaultSeverity)) == nullptr) {
            throw parseError(table, "Unknown default severity: %s", table.defaultSeverity.c_str());
        }
    }
    Facility& facility = *d.facility;
    if (request.kind == NumberRequest::Relative) {
        facility.msgId = add32(facility.msgId, request.number);
    }
    if (request.kind == NumberRequest::Absolute) facility.msgId = request.number;
    long code = facility.msgId;
    if (previous == nullptr) {
        facility.msgId = add32(code, 1);
    } else {
        code = add32(code, -1);  // a further language of the message numbered last
    }
    d.messageId =
        composeMessageId(*d.severity, table.customerBit, table.reservedBit, facility.id, code);
}

// Gives one line to processMessageBody and notes where the text stands: a
// line that made the text grow is a text line, a line that stored it the end.
bool takeTextLine(MessageTable& table, char* line, Definition& d) {
    std::size_t before = d.text.size();
    MessageTable::TextPlace& place = d.place;
    if (!table.processMessageBody(line, d.text, d.language, *d.facility, d.severity, d.symbolicName,
                                  d.messageId)) {
        if (d.text.size() != before) {
            if (place.firstTextLine == 0) place.firstTextLine = table.lineNumber;
            place.lastTextLine = table.lineNumber;
        }
        return false;
    }
    place.endLine = table.lineNumber;
    if (place.firstTextLine == 0) {
        place.firstTextLine = place.endLine;
        place.lastTextLine = place.endLine - 1;
    }
    place.languageId = *d.language;
    place.messageId = d.messageId;
    table.textPlaces.push_back(place);
    return true;
}

// Text lines up to the "." line, which stores the message. Returns whether
// the end of the file was met; a text cut off by it is an error.
bool readText(MessageTable& table, std::ifstream& in, char* buffer, bool textPending,
              Definition& d) {
    if (textPending && takeTextLine(table, buffer, d)) return false;
    for (;;) {
        if (readLine(table, in, buffer) == LineRead::EndOfFile) {
            if (takeTextLine(table, buffer, d) || d.text.empty()) return true;
            throw parseError(table, "Unexpected EOF, before message end marker \"%s\", is found",
                             MessageTable::MESSAGE_END_MARKER);
        }
        if (takeTextLine(table, buffer, d)) return false;
    }
}

}  // namespace

bool MessageTable::processMessageId(std::ifstream& in, std::string& line, int position,
                                    FormattableMessage* previous) {
    Definition definition;
    definition.place.headerLine = lineNumber;
    NumberRequest request;
    char buffer[LINE_BUFFER_SIZE];
    bool atEnd = false;
    if (previous == nullptr) {
        request = readNumberRequest(*this, line, position);
        atEnd = readLine(*this, in, buffer) == LineRead::EndOfFile;
    } else {
        // A continuation: its opening line is the first header line.
        // The line came from a buffer of this size; copying only its length
        // (not strncpy's padding of the whole buffer) gives the same text.
        std::size_t length = std::min<std::size_t>(line.size(), LINE_BUFFER_SIZE - 1);
        std::memcpy(buffer, line.data(), length);
        buffer[length] = '\0';
        definition.symbolicName = previous->symbolicName;
    }
    bool textPending = false;
    atEnd = readHeaderBlock(*this, in, buffer, atEnd, definition, textPending);
    completeDefinition(*this, definition, previous, request);
    // Storing the text releases `previous` (the table's lastMessage).
    if (!atEnd) atEnd = readText(*this, in, buffer, textPending, definition);
    currentFacility = *definition.facility;
    return atEnd;
}

bool MessageTable::processMessageHeaderBlock(char* line, long*& language, Facility*& facility,
                                             long*& severity, std::string& symbolicName) {
    if (commentLine(line)) return true;
    if (blankLine(line)) throw parseError(*this, "Unexpected end of MessageId block");

    enum Header { FacilityHeader, SeverityHeader, LanguageHeader, OutputBase, SymbolicName, Text };
    static const char* const keywords[] = {MESSAGE_FACILITY, MESSAGE_SEVERITY, MESSAGE_LANGUAGE,
                                           MESSAGE_OUTPUT_BASE, MESSAGE_SYMBOLIC_NAME};
    static const KeywordSet headers(keywords, Text);
    std::size_t position = 0;
    int header = headers.firstFound(line, std::strlen(line), position);
    if (header == Text) return false;
    if (header == OutputBase) return true;

    // The value of the line's name=value pair, taken from the buffer; a line
    // that is no such pair goes through parseNameValuePair for its error.
    std::string value;
    const char* equals = std::strchr(line, '=');
    if (equals == nullptr || equals == line) {
        std::string text = line;
        value = parseNameValuePair(text).value;
    } else {
        TextSpan kept = trimmedSpan(equals + 1, equals + 1 + std::strlen(equals + 1));
        value.assign(kept.begin, kept.end);
    }
    switch (header) {
        case FacilityHeader:
            if ((facility = facilities.get(value)) == nullptr) {
                throw parseError(*this, "Unknown facility: %s", value.c_str());
            }
            break;
        case SeverityHeader:
            if ((severity = severities.getIDX(value)) == nullptr) {
                throw parseError(*this, "Unknown severity: %s", value.c_str());
            }
            defaultSeverity = value;
            break;
        case LanguageHeader:
            if ((language = languages.getIDX(value)) == nullptr) {
                throw parseError(*this, "Unknown language: %s", value.c_str());
            }
            defaultLanguage = value;
            break;
        default:
            symbolicName = value;
            break;
    }
    return true;
}

bool MessageTable::processMessageBody(char* line, std::string& text, long*& language,
                                      Facility& facility, long*& severity,
                                      std::string& symbolicName, long messageId) {
    if (commentLine(line) || blankLine(line)) return false;
    // The line is trimmed in place and appended from the buffer: a text line
    // needs no string of its own.
    std::size_t length = std::strlen(line);
    TextSpan kept = trimmedSpan(line, line + length);
    if (!kept.equals(MESSAGE_END_MARKER)) {
        if (!text.empty()) text += "\n";
        if (trimTrailingOnly) kept = trailingTrimmedSpan(line, length);
        text.append(kept.begin, kept.size());
        return false;
    }

    if (module == nullptr) {
        throw parseError(*this, "Cannot access message map, parent module handle is NULL");
    }
    // The gathered text moves into the record (the store keeps its own copy,
    // lastMessage takes the record); a refused record gives it back, so the
    // caller's text is emptied only by a successful store, as before.
    FormattableMessage record;
    record.text = std::move(text);
    record.symbolicName = symbolicName;
    record.languageId = *language;
    record.facilityId = facility.id;
    record.severityId = *severity;
    if (!MessageModule::getMessageMap()->put(*language, symbolicName, messageId, record)) {
        text = std::move(record.text);
        throw parseError(*this, "Cannot insert <0x%lx, %s, %s> tuple into MultiLangMessageMap",
                         static_cast<unsigned long>(static_cast<uint32_t>(*language)),
                         symbolicName.c_str(), text.c_str());
    }
    text.clear();
    delete lastMessage;
    lastMessage = new FormattableMessage(std::move(record));
    return true;
}
