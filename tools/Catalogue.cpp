// Loading and the shared look-ups of the tool, over the public API.
#include "Catalogue.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <set>

#include "Diagnostics.h"

const char* const OUTSIDE_32_BITS = "outside the 32-bit range -2147483648..4294967295";

NumberText parseNumber(const std::string& text, long& number) {
    size_t pos = 0;
    bool negative = false;
    if (pos < text.size() && (text[pos] == '+' || text[pos] == '-')) {
        negative = text[pos++] == '-';
    }
    int base = 10;
    if (text.compare(pos, 2, "0x") == 0 || text.compare(pos, 2, "0X") == 0) {
        base = 16;
        pos += 2;
    }
    const std::string digits = text.substr(pos);
    bool allDigits =
        !digits.empty() && digits.find_first_not_of(base == 16 ? "0123456789abcdefABCDEF"
                                                               : "0123456789") == std::string::npos;
    if (!allDigits) return NumberText::NOT_A_NUMBER;
    errno = 0;
    unsigned long long magnitude = std::strtoull(digits.c_str(), nullptr, base);
    if (errno == ERANGE) return NumberText::OUT_OF_RANGE;
    if (negative ? magnitude > 0x80000000ULL : magnitude > 0xFFFFFFFFULL) {
        return NumberText::OUT_OF_RANGE;
    }
    uint32_t bits = static_cast<uint32_t>(magnitude);
    if (negative) bits = 0u - bits;
    number = toInt32(static_cast<long>(bits));
    return NumberText::VALID;
}

bool Catalogue::loadOne(const std::string& file) {
    std::string failure;
    try {
        MessageModule::loadFile(&module_, file, false);
        return true;
    } catch (MessageTableParserException& e) {
        failure = e.msg;
    } catch (MessageModuleException& e) {
        failure = e.msg;
    }
    lastFailure_ = failure;
    printError(failure);
    for (const std::string& hint : loadFailureHints(file, failure)) printError("hint: " + hint);
    return false;
}

bool Catalogue::load(const std::vector<std::string>& files) {
    for (const std::string& file : files) {
        if (!loadOne(file)) return false;
    }
    return true;
}

std::vector<long> Catalogue::languageIds() const {
    std::set<long> ids;
    for (auto& entry : MessageModule::mtmap.tables) {
        for (auto& language : entry.second->languages.reverse.entries) ids.insert(language.first);
    }
    return std::vector<long>(ids.begin(), ids.end());
}

long Catalogue::language(const std::string& text) const {
    long id = 0;
    NumberText number = parseNumber(text, id);
    if (number == NumberText::VALID) return id;
    if (number == NumberText::OUT_OF_RANGE) {
        throw CommandFailure{"language " + text + " is " + OUTSIDE_32_BITS};
    }
    for (auto& entry : MessageModule::mtmap.tables) {
        std::string name = text;
        if (long* found = entry.second->languages.getIDX(name)) return *found;
    }
    throw CommandFailure{"unknown language: " + text + " (not a number nor a declared name)"};
}

long Catalogue::messageId(const std::string& text) const {
    std::string name = text;
    if (long* found = MessageModule::mlmap.idmap.get(name)) return *found;
    long id = 0;
    NumberText number = parseNumber(text, id);
    if (number == NumberText::VALID) return id;
    if (number == NumberText::OUT_OF_RANGE) {
        throw CommandFailure{"message identifier " + text + " is " + OUTSIDE_32_BITS};
    }
    throw CommandFailure{"unknown message: " + text + " (not a symbolic name nor a number)"};
}

// The first name (in name order) that `names` gives `id`, or "".
static std::string nameOf(IDMap& names, long id) {
    for (auto& entry : names.entries) {
        if (entry.second == id) return entry.first;
    }
    return "";
}

std::string Catalogue::severityName(long id) const {
    for (auto& entry : MessageModule::mtmap.tables) {
        std::string name = nameOf(entry.second->severities.forward, id);
        if (!name.empty()) return name;
    }
    return "";
}

std::string Catalogue::facilityName(long id) const {
    for (auto& entry : MessageModule::mtmap.tables) {
        std::string name = nameOf(entry.second->facilities.forward, id);
        if (!name.empty()) return name;
    }
    return "";
}

std::vector<StoredText> Catalogue::texts(const long* languageId) const {
    std::vector<StoredText> result;
    for (auto& entry : MessageModule::mlmap.msgmap) {
        for (auto& record : entry.second) {
            if (languageId && record.second.languageId != *languageId) continue;
            result.push_back({record.first, &record.second});
        }
    }
    std::sort(result.begin(), result.end(), [](const StoredText& a, const StoredText& b) {
        uint32_t idA = static_cast<uint32_t>(a.messageId), idB = static_cast<uint32_t>(b.messageId);
        if (idA != idB) return idA < idB;
        return a.message->languageId < b.message->languageId;
    });
    return result;
}
