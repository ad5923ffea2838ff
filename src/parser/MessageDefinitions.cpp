// Message definitions: the MessageId line, the header block, the text up to
// its "." line, the composed identifier, and continuation blocks that add a
// further language to the message stored last.
#include <cstdint>
#include <cstring>

#include "MessageModule.h"
#include "MessageTable.h"
#include "maps/FailureText.h"
#include "parser/LineReader.h"

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
        throw table.wrapError(
            FailureText("Expected numeric value for message id, got: %s", pair.value.c_str()).text);
    }
    bool relative = pair.value[0] == '+' || pair.value[0] == '-';
    request.kind = relative ? NumberRequest::Relative : NumberRequest::Absolute;
    return request;
}

}  // namespace

bool MessageTable::processMessageId(std::ifstream& in, std::string& line, int position,
                                    FormattableMessage* previous) {
    long* language = nullptr;
    Facility* facility = nullptr;
    long* severity = nullptr;
    std::string symbolicName, text;
    NumberRequest request;
    char buffer[LINE_BUFFER_SIZE];
    bool atEnd = false;

    if (previous == nullptr) {
        request = readNumberRequest(*this, line, position);
        atEnd = readLine(*this, in, buffer) == LineRead::EndOfFile;
    } else {
        // The opening line itself is the first header line; it came from a
        // line buffer, so it fits.
        std::strncpy(buffer, line.c_str(), LINE_BUFFER_SIZE - 1);
        buffer[LINE_BUFFER_SIZE - 1] = '\0';
        symbolicName = previous->symbolicName;
    }

    // Header block.
    bool textPending = false;
    while (!atEnd) {
        if (!processMessageHeaderBlock(buffer, language, facility, severity, symbolicName)) {
            textPending = true;
            break;
        }
        atEnd = readLine(*this, in, buffer) == LineRead::EndOfFile;
    }
    if (atEnd && !processMessageHeaderBlock(buffer, language, facility, severity, symbolicName)) {
        throw wrapError("Unexpected EOF. Expected message body");
    }

    // Defaults, then the code from the facility's counter.
    if (symbolicName.empty()) {
        throw wrapError(FailureText("No symbolic name specified for message. Expected tag: \"%s\"",
                                    MESSAGE_SYMBOLIC_NAME)
                            .text);
    }
    long previousLanguage = 0, previousSeverity = 0;
    if (language == nullptr) {
        if (previous != nullptr) {
            previousLanguage = previous->languageId;
            language = &previousLanguage;
        } else if ((language = languages.getIDX(defaultLanguage)) == nullptr) {
            throw wrapError(
                FailureText("Unknown default language: %s", defaultLanguage.c_str()).text);
        }
    }
    if (facility == nullptr) facility = &currentFacility;
    if (severity == nullptr) {
        if (previous != nullptr) {
            previousSeverity = previous->severityId;
            severity = &previousSeverity;
        } else if ((severity = severities.getIDX(defaultSeverity)) == nullptr) {
            throw wrapError(
                FailureText("Unknown default severity: %s", defaultSeverity.c_str()).text);
        }
    }
    if (request.kind == NumberRequest::Relative)
        facility->msgId = add32(facility->msgId, request.number);
    if (request.kind == NumberRequest::Absolute) facility->msgId = request.number;
    long code;
    if (previous == nullptr) {
        code = facility->msgId;
        facility->msgId = add32(code, 1);
    } else {
        code = add32(facility->msgId, -1);
    }
    long messageId = composeMessageId(*severity, customerBit, reservedBit, facility->id, code);

    // Text, up to its "." line. `previous` may be released from here on.
    if (!atEnd && !(textPending && processMessageBody(buffer, text, language, *facility, severity,
                                                      symbolicName, messageId))) {
        for (;;) {
            if (readLine(*this, in, buffer) == LineRead::EndOfFile) {
                atEnd = true;
                if (processMessageBody(buffer, text, language, *facility, severity, symbolicName,
                                       messageId) ||
                    text.empty()) {
                    break;
                }
                throw wrapError(
                    FailureText("Unexpected EOF, before message end marker \"%s\", is found",
                                MESSAGE_END_MARKER)
                        .text);
            }
            if (processMessageBody(buffer, text, language, *facility, severity, symbolicName,
                                   messageId)) {
                break;
            }
        }
    }
    currentFacility = *facility;
    return atEnd;
}

bool MessageTable::processMessageHeaderBlock(char* line, long*& language, Facility*& facility,
                                             long*& severity, std::string& symbolicName) {
    if (commentLine(line)) return true;
    if (blankLine(line)) throw wrapError("Unexpected end of MessageId block");

    enum Header { FacilityHeader, SeverityHeader, LanguageHeader, OutputBase, SymbolicName, Text };
    const char* keywords[] = {MESSAGE_FACILITY, MESSAGE_SEVERITY, MESSAGE_LANGUAGE,
                              MESSAGE_OUTPUT_BASE, MESSAGE_SYMBOLIC_NAME};
    std::string text = line;
    std::string lowered = toLowerCase(text);
    int header = FacilityHeader;
    while (header < Text && lowered.find(keywords[header]) == std::string::npos) ++header;
    if (header == Text) return false;
    if (header == OutputBase) return true;

    std::string value = parseNameValuePair(text).value;
    switch (header) {
        case FacilityHeader:
            if ((facility = facilities.get(value)) == nullptr) {
                throw wrapError(FailureText("Unknown facility: %s", value.c_str()).text);
            }
            break;
        case SeverityHeader:
            if ((severity = severities.getIDX(value)) == nullptr) {
                throw wrapError(FailureText("Unknown severity: %s", value.c_str()).text);
            }
            defaultSeverity = value;
            break;
        case LanguageHeader:
            if ((language = languages.getIDX(value)) == nullptr) {
                throw wrapError(FailureText("Unknown language: %s", value.c_str()).text);
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
    std::string trimmedLine;
    trim(line, trimmedLine);
    if (trimmedLine != MESSAGE_END_MARKER) {
        if (!text.empty()) text += "\n";
        if (trimTrailingOnly) trimAfter(line, trimmedLine);
        text += trimmedLine;
        return false;
    }

    FormattableMessage record;
    record.text = text;
    record.symbolicName = symbolicName;
    record.languageId = *language;
    record.facilityId = facility.id;
    record.severityId = *severity;
    if (module == nullptr) {
        throw wrapError("Cannot access message map, parent module handle is NULL");
    }
    if (!MessageModule::getMessageMap()->put(*language, symbolicName, messageId, record)) {
        throw wrapError(FailureText("Cannot insert <0x%lx, %s, %s> tuple into MultiLangMessageMap",
                                    static_cast<unsigned long>(static_cast<uint32_t>(*language)),
                                    symbolicName.c_str(), text.c_str())
                            .text);
    }
    text.clear();
    delete lastMessage;
    lastMessage = new FormattableMessage(record);
    return true;
}
