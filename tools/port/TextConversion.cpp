// Line-by-line rewriting of Windows message texts.
#include "TextConversion.h"

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

// Warns about the inserts of `line` that the two formatters read differently:
// the Windows formatter has inserts 1 to 99 and gives a "*" width or precision
// the next insert, while this library's formatter refuses "*" (and some other
// formats) and fails on the whole text.
void checkInserts(const std::string& line, int number, PortReport& report) {
    std::vector<InsertUse> inserts;
    try {
        inserts = MessageModule::findInserts(line);
    } catch (const MessageModuleException& failure) {
        report.warn(number, WarningKind::Unportable,
                    "this library's formatter fails on the line: " + failure.msg);
        return;
    }
    for (const InsertUse& use : inserts) {
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

// Drops trailing blanks, but not one that a "%" escapes.
std::string withoutTrailingBlanks(const std::string& line, int number, PortReport& report) {
    size_t end = line.find_last_not_of(" \t\f\v");
    std::string kept = end == std::string::npos ? "" : line.substr(0, end + 1);
    if (endsWithLonePercent(kept) && kept.size() < line.size()) kept += line[kept.size()];
    if (kept.size() < line.size()) {
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

std::string convertLine(const std::string& line, int number, PortReport& report) {
    std::string text = withoutTrailingBlanks(line, number, report);
    bool textAfterZero = false;
    std::string out;
    out.reserve(text.size() + 8);
    for (size_t pos = 0; pos < text.size();) {
        size_t end = unitEnd(text, pos);
        if (text[pos] != '%' || end == pos + 1) {
            out.append(text, pos, end - pos);
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
    checkInserts(out, number, report);
    return out;
}

}  // namespace

std::vector<std::string> convertTextLines(const std::vector<std::string>& lines,
                                          const std::vector<int>& lineNumbers, PortReport& report) {
    std::vector<std::string> out;
    out.reserve(lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        out.push_back(convertLine(lines[i], i < lineNumbers.size() ? lineNumbers[i] : 0, report));
    }
    return out;
}
