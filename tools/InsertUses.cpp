// The insert scan of the format subcommand.
#include "InsertUses.h"

#include <cctype>
#include <cstring>

namespace {

bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

bool isIntegerConversion(const std::string& format) {
    return !format.empty() && std::strchr("diuxXoc", format.back()) != nullptr;
}

}  // namespace

InsertUses scanInserts(const std::string& text) {
    InsertUses uses;
    for (size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '%') continue;
        size_t start = ++i;  // the character after '%' is consumed by the escape
        if (text[start] < '1' || text[start] > '9') continue;
        while (i + 1 < text.size() && isDigit(text[i + 1]) && i + 1 - start < 3) ++i;
        int insert = std::stoi(text.substr(start, i + 1 - start));
        std::string format = "s";
        if (i + 1 < text.size() && text[i + 1] == '!') {
            size_t close = text.find('!', i + 2);
            if (close == std::string::npos) break;  // the formatter refuses the text
            format = text.substr(i + 2, close - i - 2);
            i = close;
        }
        uses.used.insert(insert);
        if (!isIntegerConversion(format)) uses.textual.insert(insert);
    }
    return uses;
}
