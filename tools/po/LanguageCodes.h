// PO language codes ("de", "pt_BR") and Windows language identifiers (0x407,
// 0x416), for the common languages: enough to name the language of a PO file
// in its header and to declare it in a message file. The table is the
// library's (tqmsg_language_from_locale, tqmsg_language_code).
#ifndef TQMSG_PO_LANGUAGE_CODES_H
#define TQMSG_PO_LANGUAGE_CODES_H

#include <string>

// The identifier of `code`: "ll", "ll_CC" or "ll-CC", an encoding suffix
// (".UTF-8") ignored. A code without region gives the identifier Windows
// itself chooses for the bare language, a region the table lacks the bare
// language's. -1 when the table lacks the language.
long windowsLanguageId(const std::string& code);

// The code for `languageId` (the bare language where that code maps to the
// identifier), or "" when the table lacks it.
std::string poLanguageCode(long languageId);

#endif  // TQMSG_PO_LANGUAGE_CODES_H
