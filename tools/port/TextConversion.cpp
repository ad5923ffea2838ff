// Line-by-line rewriting of Windows message texts.
#include "TextConversion.h"

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

// Warns about an insert the two formatters read differently.
void checkInsert(const std::string& unit, int line, PortReport& report) {
    size_t digits = 1;
    while (digits < unit.size() - 1 && digits < 4 && isDigit(unit[digits + 1])) ++digits;
    if (digits > 2) {
        report.warn(line, WarningKind::Unportable,
                    "insert " + unit.substr(0, digits + 1) +
                        ": the Windows formatter has inserts 1 to 99 and reads " +
                        unit.substr(0, 3) + " followed by " + unit.substr(3, digits - 2));
    }
    size_t format = unit.find('!');
    if (format != std::string::npos && unit.find('*', format) != std::string::npos) {
        report.warn(line, WarningKind::Unportable,
                    "insert " + unit +
                        ": a \"*\" width or precision takes the next insert on Windows, not here");
    }
}

// Drops trailing blanks, but not one that a "%" escapes.
std::string withoutTrailingBlanks(const std::string& line, int number, PortReport& report) {
    size_t end = line.find_last_not_of(" \t\f\v");
    std::string kept = end == std::string::npos ? "" : line.substr(0, end + 1);
    if (endsWithLonePercent(kept)) kept += line[kept.size()];
    if (kept.size() < line.size()) {
        report.warn(number, WarningKind::Undocumented, "trailing blanks of a text line dropped");
    }
    return kept;
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
            if (text[pos + 1] != '0') checkInsert(text.substr(pos, end - pos), number, report);
            out.append(text, pos, end - pos);
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
