// Line-by-line rewriting of Windows message texts.
#include "TextConversion.h"

#include <algorithm>
#include <set>

#include "MessageModule.h"
#include "TextUnits.h"

namespace {

// The escapes whose character the library's formatter would print as it is.
const char* windowsOnlyEscape(char c) {
    switch (c) {
        case 'b':
            return "% ";
        case 't':
            return "%\t";
        case 'r':
            return "%\r";
        default:
            return nullptr;
    }
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// "%100" for insert 100 with the format "%s", "%1!*s!" otherwise.
std::string spelled(const InsertUse& use) {
    std::string number = "%" + std::to_string(use.number);
    return use.format == "%s" ? number : number + "!" + use.format.substr(1) + "!";
}

// "!d!" for the insert "%2!d!": how a format stands in a line.
std::string formatKey(const InsertUse& use) { return "!" + use.format.substr(1) + "!"; }

// False when `line` certainly holds no insert the check below would report:
// that needs a number of three digits, an unclosed format or a format the
// library's formatter has not been seen to accept.
bool needsInsertCheck(const std::string& line, const std::set<std::string>& accepted) {
    for (size_t at = line.find('%'); at != std::string::npos;) {
        size_t end = unitEnd(line, at);
        if (end > at + 1 && line[at + 1] >= '1' && line[at + 1] <= '9') {
            size_t digits = at + 1;
            while (digits < end && isDigit(line[digits])) ++digits;
            if (digits - at - 1 >= 3) return true;
            if (digits < end && accepted.count(line.substr(digits, end - digits)) == 0) return true;
        }
        at = line.find('%', end);
    }
    return false;
}

// Warns about the inserts of `line` that the two formatters read differently:
// the Windows formatter has inserts 1 to 99 and gives a "*" width or precision
// the next insert, while this library's formatter refuses "*" (and some other
// formats) and fails on the whole text.
void checkInserts(const std::string& line, int number, TextConversionState& state,
                  PortReport& report) {
    if (!needsInsertCheck(line, state.acceptedFormats)) return;
    std::vector<InsertUse> inserts;
    try {
        inserts = MessageModule::findInserts(line);
    } catch (const MessageModuleException& failure) {
        report.warn(number, WarningKind::Unportable,
                    "this library's formatter fails on the line: " + failure.msg);
        return;
    }
    for (const InsertUse& use : inserts) {
        if (use.info.kind != InsertFormatInfo::REFUSED && use.format != "%s") {
            state.acceptedFormats.insert(formatKey(use));
        }
        std::string insert = spelled(use);
        if (use.number > 99) {
            std::string tens = std::to_string(use.number);
            report.warn(number, WarningKind::Unportable,
                        "insert " + insert +
                            ": the Windows formatter has inserts 1 to 99 and reads %" +
                            tens.substr(0, 2) + " followed by " + tens.substr(2));
        }
        if (use.info.kind == InsertFormatInfo::REFUSED) {
            bool star = use.format.find('*') != std::string::npos;
            report.warn(
                number, WarningKind::Unportable,
                "insert " + insert + ": this library's formatter refuses it (" + use.info.refusal +
                    ")" + (star ? "; the Windows formatter gives the \"*\" the next insert" : ""));
        }
    }
}

// The length of `line` without its trailing blanks, but with one that a "%"
// escapes.
size_t keptLength(const std::string& line, int number, PortReport& report) {
    size_t kept = line.find_last_not_of(" \t\f\v") + 1;  // 0 for a blank line
    if (kept > 0 && kept < line.size() && line[kept - 1] == '%' &&
        endsWithLonePercent(line.substr(0, kept))) {
        ++kept;
    }
    if (kept < line.size()) {
        report.warn(number, WarningKind::Undocumented, "trailing blanks of a text line dropped");
    }
    return kept;
}

// The position of the "!" after the insert number at `pos` when no second
// "!" closes the format on the line ("in %2!" meant as an exclamation), else
// npos.
size_t unclosedFormat(const std::string& text, size_t pos) {
    size_t digits = pos + 2;
    while (digits < text.size() && digits < pos + 4 && isDigit(text[digits])) ++digits;
    bool opens = digits < text.size() && text[digits] == '!';
    return opens && text.find('!', digits + 1) == std::string::npos ? digits : std::string::npos;
}

// `text` (trailing blanks already dropped) with the escapes rewritten.
std::string convertKept(const std::string& text, int number, TextConversionState& state,
                        PortReport& report) {
    bool textAfterZero = false;
    std::string out;
    out.reserve(text.size() + 8);
    for (size_t pos = 0; pos < text.size();) {
        if (text[pos] != '%') {  // plain text up to the next escape, copied as it is
            size_t next = std::min(text.find('%', pos), text.size());
            out.append(text, pos, next - pos);
            pos = next;
            continue;
        }
        size_t end = unitEnd(text, pos);
        if (end == pos + 1) {
            out += '%';
        } else if (isDigit(text[pos + 1])) {
            textAfterZero = textAfterZero || (text[pos + 1] == '0' && end < text.size());
            size_t bang = text[pos + 1] == '0' ? std::string::npos : unclosedFormat(text, pos);
            if (bang != std::string::npos) {
                // Read as a format, the rest of the text would be one: this
                // library's formatter fails on it. "%!" prints the "!" in both.
                report.warn(number, WarningKind::Undocumented,
                            "insert " + text.substr(pos, bang - pos) +
                                " followed by a \"!\" that no second \"!\" closes: written " +
                                text.substr(pos, bang - pos) + "%! (the \"!\" printed)");
                out.append(text, pos, bang - pos).append("%!");
                end = bang + 1;
            } else {
                out.append(text, pos, end - pos);
            }
        } else if (const char* replacement = windowsOnlyEscape(text[pos + 1])) {
            out += replacement;
        } else {
            out.append(text, pos, end - pos);
        }
        pos = end;
    }
    if (textAfterZero) {
        report.warn(number, WarningKind::Undocumented,
                    "text after %0 on its line: kept after it, with no line break");
    }
    if (endsWithLonePercent(out)) {
        report.warn(number, WarningKind::Undocumented,
                    "a \"%\" alone at the end of a line dropped");
        out.pop_back();
    }
    checkInserts(out, number, state, report);
    return out;
}

std::string convertLine(const std::string& line, int number, TextConversionState& state,
                        PortReport& report) {
    size_t kept = keptLength(line, number, report);
    return kept < line.size() ? convertKept(line.substr(0, kept), number, state, report)
                              : convertKept(line, number, state, report);
}

}  // namespace

std::vector<std::string> convertTextLines(const std::vector<std::string>& lines,
                                          const std::vector<int>& lineNumbers,
                                          TextConversionState& state, PortReport& report) {
    std::vector<std::string> out;
    out.reserve(lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        int number = i < lineNumbers.size() ? lineNumbers[i] : 0;
        out.push_back(convertLine(lines[i], number, state, report));
    }
    return out;
}
