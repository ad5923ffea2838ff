// The language a PO file is exported from or imported into, given on the
// command line as NAME or NAME=ID.
#ifndef TQMSG_PO_LANGUAGE_CHOICE_H
#define TQMSG_PO_LANGUAGE_CHOICE_H

#include <string>

#include "MessageFileTexts.h"

struct LanguageChoice {
    std::string name;       // as given; written into Language lines and declarations
    long id = 0;            // its identifier
    bool declared = false;  // the message file declares it already
};

// Resolves `option` ("NAME" or "NAME=ID") against the languages of `file`. A
// declared name keeps its identifier (a different ID is an error); a new one
// takes ID, or else the identifier of `poLanguage` (a PO header's Language
// code, may be empty) from the table of common languages. Throws PoFailure
// when no identifier can be settled or the name cannot be written.
LanguageChoice chooseLanguage(const MessageFileTexts& file, const std::string& option,
                              const std::string& poLanguage);

// The identifier of the source language: the declared `name`, or the first
// language the file declares when `name` is empty. Throws PoFailure.
long sourceLanguageId(const MessageFileTexts& file, const std::string& name);

// `id` as "0x40C".
std::string hexId(long id);

#endif  // TQMSG_PO_LANGUAGE_CHOICE_H
