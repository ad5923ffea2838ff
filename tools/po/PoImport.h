// Translations from a PO file into a message file: each translated entry
// becomes the text of its message in the chosen language, replacing the text
// that is there or adding a Language block after the message; a new language
// is declared. Everything else of the file stays byte for byte.
#ifndef TQMSG_PO_IMPORT_H
#define TQMSG_PO_IMPORT_H

#include <string>
#include <vector>

#include "MessageFileTexts.h"
#include "PoFiles.h"

struct ImportRequest {
    std::string poPath;          // where `catalogue` was read, for messages
    std::string language;        // NAME[=ID]
    std::string sourceLanguage;  // declared name; "" for the first declared language
    std::string charset;         // encoding of the file's texts; "" for UTF-8
    bool forceLanguage = false;  // import even when the PO header names another language
};

struct ImportReport {
    int added = 0, changed = 0, unchanged = 0;                   // texts
    int fuzzy = 0, untranslated = 0, outdated = 0, unknown = 0;  // entries skipped
    bool languageDeclared = false;                               // a LanguageNames entry was added
    std::vector<std::string> warnings;                           // "PO:LINE: warning: ..."
};

// The bytes of the message file (`content`, as loaded into `file`) with the
// translations of `catalogue`. Fuzzy and untranslated entries are skipped and
// counted; an entry whose name is not in the file, or whose source text has
// changed since, is a warning. A translation that loses, adds or changes an
// insert of its source text (unless it keeps those of the text it replaces),
// or holds a character the file's encoding lacks, is an error: every such
// entry is listed in the PoFailure thrown, and nothing is returned. A PO
// header Language naming another language than request.language is an error
// unless request.forceLanguage.
std::string importCatalogue(const MessageFileTexts& file, const std::string& content,
                            const PoCatalogue& catalogue, const ImportRequest& request,
                            ImportReport& report);

#endif  // TQMSG_PO_IMPORT_H
