// A message file loaded through the library, seen as the translation round
// trip needs it: its languages in declaration order, its texts per language
// in file order with the places the parser recorded, and its names.
#ifndef TQMSG_PO_MESSAGE_FILE_TEXTS_H
#define TQMSG_PO_MESSAGE_FILE_TEXTS_H

#include <map>
#include <string>
#include <vector>

#include "MessageModule.h"

// One stored text of the file.
struct FileText {
    long messageId;                        // identifier the store files it under
    const FormattableMessage* record;      // in the store: text, symbolic name, ids
    const MessageTable::TextPlace* place;  // in the table: where the text stands
};

class MessageFileTexts {
public:
    // Loads `path` into the process-wide store (once per process). Throws
    // PoFailure with the library's error text.
    explicit MessageFileTexts(const std::string& path);

    const std::string& path() const { return path_; }
    MessageTable& table() const { return *table_; }

    // Every declared language id, once, in the order of the declarations.
    std::vector<long> declaredLanguages() const;
    // The id of the declared language `name` (any case); false when undeclared.
    bool languageId(const std::string& name, long& id) const;
    // The lower-case name a declaration gives `id`, "" when none does.
    std::string languageName(long id) const;
    std::string severityName(long id) const;
    std::string facilityName(long id) const;

    // The texts stored in `languageId`, in file order.
    std::vector<FileText> texts(long languageId) const;

    // The ")" line of the last LanguageNames list; 0 when there is none.
    int languageListEnd() const;
    // Message identifier -> the last "." line among its texts.
    std::map<long, int> messageEnds() const;

private:
    MessageModule module_;
    std::string path_;
    MessageTable* table_ = nullptr;
};

#endif  // TQMSG_PO_MESSAGE_FILE_TEXTS_H
