// POSIX locale names and language identifiers, over the language table.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "capi/Boundary.h"
#include "capi/LanguageTable.h"
#include "maps/FailureText.h"
#include "tqmsg.h"

namespace {

const long ENGLISH = 0x409;  // the language of the C and POSIX locales

// The locale of the process's messages, named by the first of the variables
// POSIX consults that is set and not empty; "C" when none is.
const char* processLocale() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && value[0] != '\0') return value;
    }
    return "C";
}

// "pt_BR.UTF-8@euro" -> "pt_BR": the language and region of a locale name,
// the region also accepted after a "-" as in "pt-BR".
std::string languageAndRegion(const char* locale) {
    std::string code(locale, std::strcspn(locale, ".@"));
    for (char& c : code) {
        if (c == '-') c = '_';
    }
    return code;
}

// The identifier of a locale name; a region the table lacks gives the bare
// language ("de_LU" is German), the user's language mattering more than the
// country's conventions.
long languageOfLocale(const char* locale) {
    std::string code = languageAndRegion(locale);
    if (code == "C" || code == "POSIX") return ENGLISH;
    long id = languageOfCode(code.data(), code.size());
    std::size_t separator = code.find('_');
    if (id == -1 && separator != std::string::npos && separator != 0) {
        id = languageOfCode(code.data(), separator);
    }
    if (id == -1) throw moduleFailure("No language is known for the locale \"%s\"", locale);
    return id;
}

}  // namespace

extern "C" {

long tqmsg_language_from_locale(const char* locale) {
    return atCBoundary(
        -1L, [&] { return languageOfLocale(locale != nullptr ? locale : processLocale()); });
}

const char* tqmsg_language_code(long language_id) {
    return atCBoundary<const char*>(nullptr, [&] {
        const char* code = codeOfLanguage(toInt32(language_id));
        if (code == nullptr) {
            throw moduleFailure("No code is known for the language 0x%lx",
                                asUnsigned32(language_id));
        }
        return code;
    });
}

}  // extern "C"
