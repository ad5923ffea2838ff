// PO language codes over the library's table of languages.
#include "LanguageCodes.h"

#include "tqmsg.h"

long windowsLanguageId(const std::string& code) { return tqmsg_language_from_locale(code.c_str()); }

std::string poLanguageCode(long languageId) {
    const char* code = tqmsg_language_code(languageId);
    return code != nullptr ? code : "";
}
