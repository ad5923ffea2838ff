// Templates and translations of a message file as PO catalogues: one entry
// per text of the source language, keyed by the message's symbolic name, the
// text exactly as the file holds it (escapes and inserts as written).
#ifndef TQMSG_PO_EXPORT_H
#define TQMSG_PO_EXPORT_H

#include <string>

#include "MessageFileTexts.h"
#include "PoFiles.h"

struct ExportRequest {
    std::string sourceLanguage;  // declared name; "" for the first declared language
    std::string language;        // NAME[=ID] of the translation; "" for a template
    std::string charset;         // encoding of the file's texts; "" for UTF-8
};

// The catalogue, in UTF-8, entries in file order. A template leaves every
// translation empty; an export holds the texts already present in the
// language. Throws PoFailure (a text not valid in the charset, an unknown
// language).
PoCatalogue exportCatalogue(const MessageFileTexts& file, const ExportRequest& request);

#endif  // TQMSG_PO_EXPORT_H
