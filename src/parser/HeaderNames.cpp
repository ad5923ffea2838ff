// The name lists LanguageNames, FacilityNames and SeverityNames: one entry
// per line between "(" and ")", each entered into the table's map.
#include <algorithm>
#include <cstring>

#include "MessageTable.h"
#include "parser/LineReader.h"
#include "parser/ParseError.h"

namespace {

// The value of an entry split at its first ":" when that ":" follows the
// first character: number text before it, symbol after it.
void splitValue(const std::string& value, std::string& numberText, std::string& symbol) {
    std::size_t colon = value.find(':');
    if (colon == std::string::npos || colon == 0) {
        numberText = value;
        symbol.clear();
        return;
    }
    numberText = value.substr(0, colon);
    symbol = value.substr(colon + 1);
}

// The list's own number error: languages and severities quote the whole
// value, facilities only the number text.
MessageTableParserException numberError(MessageTable& table, const char* listName,
                                        const std::string& value, const std::string& numberText) {
    if (std::strcmp(listName, MessageTable::LANGUAGE_NAMES) == 0) {
        return parseError(table, "Expected langID, got: %s", value.c_str());
    }
    if (std::strcmp(listName, MessageTable::FACILITY_NAMES) == 0) {
        return parseError(table, "Expected facility ID, got: %s", numberText.c_str());
    }
    return parseError(table, "Expected severity ID, got: %s", value.c_str());
}

// Records an accepted language in declaration order; a repeat keeps its place.
bool noteLanguage(MessageTable& table, long id) {
    std::vector<long>& order = table.declaredLanguages;
    if (std::find(order.begin(), order.end(), id) == order.end()) order.push_back(id);
    return true;
}

bool putEntry(MessageTable& table, const char* listName, MessageTable::NameValue& entry,
              long number, std::string& symbol) {
    if (std::strcmp(listName, MessageTable::LANGUAGE_NAMES) == 0) {
        return table.languages.putX(entry.name, number, entry.value, false) &&
               noteLanguage(table, number);
    }
    if (std::strcmp(listName, MessageTable::FACILITY_NAMES) == 0) {
        Facility facility;
        facility.id = number;
        facility.msgId = 1;
        facility.name = symbol;
        return table.facilities.put(entry.name, number, facility, true);
    }
    return table.severities.putX(entry.name, number, entry.value, true);
}

// Splits one list entry, checks its number and enters it into the list's map;
// the number is added to `numbers`.
void storeEntry(MessageTable& table, std::string& line, const char* listName,
                std::vector<long>& numbers) {
    MessageTable::NameValue entry = table.parseNameValuePair(line);
    std::string numberText, symbol;
    splitValue(entry.value, numberText, symbol);
    long number = 0;
    if (!table.getNumber(numberText, number, false)) {
        throw numberError(table, listName, entry.value, numberText);
    }
    if (!putEntry(table, listName, entry, number, symbol)) {
        throw parseError(table, "Cannot insert: %ld, %s tuple into %sMap", number,
                         entry.toString().c_str(), listName);
    }
    numbers.push_back(number);
}

// The next line that is neither a comment nor blank; the end of the file
// before one is the error "Unexpected EOF. Expected <expected>".
void readSignificantLine(MessageTable& table, std::ifstream& in, char* buffer,
                         const char* expected) {
    for (;;) {
        if (readLine(table, in, buffer) == LineRead::EndOfFile) {
            throw parseError(table, "Unexpected EOF. Expected \"%s\"", expected);
        }
        if (!table.commentLine(buffer) && !table.blankLine(buffer)) return;
    }
}

// Reads on to the line holding "(" when the header line had none; what
// follows the "(" on that line is ignored.
void skipToListStart(MessageTable& table, std::ifstream& in, char* buffer) {
    do {
        readSignificantLine(table, in, buffer, MessageTable::HEADER_NAMES_BEGIN);
    } while (std::strstr(buffer, MessageTable::HEADER_NAMES_BEGIN) == nullptr);
}

// The next line of the list that is neither a comment nor blank.
void readListLine(MessageTable& table, std::ifstream& in, char* buffer, std::string& line) {
    readSignificantLine(table, in, buffer, MessageTable::HEADER_NAMES_END);
    line = buffer;
}

}  // namespace

bool MessageTable::processHeaderNames(std::ifstream& in, std::string& line, int position,
                                      const char* listName) {
    char buffer[LINE_BUFFER_SIZE];
    listPlaces.emplace_back();
    ListPlace& place = listPlaces.back();
    place.listName = listName;
    place.firstLine = lineNumber;
    std::size_t open = line.find(HEADER_NAMES_BEGIN, position + std::strlen(listName));
    bool entryPending = false;  // the header line holds the first entry
    if (open != std::string::npos) {
        line = line.substr(open + 1);
        entryPending = !commentLine(&line[0]) && !blankLine(&line[0]);
    } else {
        skipToListStart(*this, in, buffer);
    }
    for (;;) {
        if (!entryPending) readListLine(*this, in, buffer, line);
        entryPending = false;
        // One entry per line; the line holding ")" ends the list, and the text
        // before the ")" is its last entry unless it is empty.
        std::size_t close = line.find(HEADER_NAMES_END);
        bool lastLine = close != std::string::npos;
        if (lastLine) {
            place.lastLine = lineNumber;
            std::string before = line.substr(0, close);
            trim(&before[0], line);
            if (line.empty()) return false;
        }
        storeEntry(*this, line, listName, place.numbers);
        if (lastLine) return false;
    }
}
