// PO files, read and written by GNU gettext's libgettextpo: the only place
// that knows the PO syntax.
#ifndef TQMSG_PO_FILES_H
#define TQMSG_PO_FILES_H

#include <string>
#include <vector>

// One entry of a PO file.
struct PoEntry {
    bool hasContext = true;
    std::string context;      // msgctxt: the symbolic name of the message
    std::string source;       // msgid: the text as the message file holds it
    std::string translation;  // msgstr; empty when untranslated
    bool fuzzy = false;
    bool plural = false;        // read only: the entry has plural forms
    std::string notes;          // extracted comments, each line ended by "\n"
    std::string referenceFile;  // written only, with referenceLine > 0
    int referenceLine = 0;
};

// A PO file: the header entry's text ("Field: value\n" lines) and the
// entries in file order, obsolete ones left out.
struct PoCatalogue {
    std::string header;
    std::vector<PoEntry> entries;
};

// The text of `catalogue` as a PO file, for the caller to write where it
// belongs. Throws PoFailure.
std::string poFileText(const PoCatalogue& catalogue);

// Reads `path`. Throws PoFailure listing every error found, one
// "FILE:LINE: text" line each; warnings are added to `warnings`.
PoCatalogue readPoFile(const std::string& path, std::vector<std::string>& warnings);

// The value of `field` in `header`, "" when absent.
std::string headerField(const std::string& header, const char* field);

// `header` with `field` set to `value`, added at the end when absent.
std::string withHeaderField(const std::string& header, const char* field, const std::string& value);

// The charset that a header's Content-Type names, "" when none.
std::string headerCharset(const std::string& header);

#endif  // TQMSG_PO_FILES_H
