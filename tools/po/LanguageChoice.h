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

// Throws PoFailure when `poLanguage` (a PO header's Language code) names
// another language than `choice`: a PO file imported under the wrong
// --language would replace that language's texts. Regional variants of one
// language agree (fr_CA and French=0x40C); a code missing from the table of
// common languages, or none, cannot disagree.
void checkPoLanguage(const LanguageChoice& choice, const std::string& poLanguage,
                     const std::string& poPath);

// The identifier of the source language: the declared `name`, or the first
// language the file declares when `name` is empty. Throws PoFailure.
long sourceLanguageId(const MessageFileTexts& file, const std::string& name);

// `id` as "0x40C".
std::string hexId(long id);

#endif  // TQMSG_PO_LANGUAGE_CHOICE_H
