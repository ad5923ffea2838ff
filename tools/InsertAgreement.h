// Whether the texts of one message, in its several languages, read their
// inserts the same way. A program passes one set of arguments whatever the
// language, so an insert that one language reads as a text and another as an
// integer crashes the program in one of them. The inserts are found and
// classified by the module (MessageModule::findInserts), exactly as the
// formatter reads them.
#ifndef TQMSG_TOOL_INSERT_AGREEMENT_H
#define TQMSG_TOOL_INSERT_AGREEMENT_H

#include <map>
#include <string>
#include <vector>

#include "MessageModule.h"

// One language's text of a message.
struct TranslatedText {
    std::string language;  // its name, as messages show it
    std::string text;
    int line = 0;  // where the text stands in its file, 0 when unknown
};

struct InsertProblem {
    enum Kind {
        READ_DIFFERENTLY,  // another kind of value, or another size on i386 or x86-64
        MISSING,           // used in one language, absent in another
        REFUSED,           // a format the formatter refuses
        UNSCANNABLE        // a text the formatter cannot scan at all
    };
    Kind kind;
    int number;               // the insert; 0 for UNSCANNABLE
    std::string description;  // in words, without the message's name
    int line;                 // the line of the text at fault (the one that differs or lacks)
};

struct InsertComparison {
    std::vector<InsertProblem> problems;  // by insert number, then language
    std::map<int, InsertUse> inserts;     // each insert number's first use in any language
};

// Compares the inserts of `texts` (the first text is the reference for the
// order of the description only). Every insert number is compared across all
// texts, and against its other uses in the same text.
InsertComparison compareInserts(const std::vector<TranslatedText>& texts);

// "%2!lu!", or "%2" for an insert without a format.
std::string writtenInsert(const InsertUse& use);

#endif  // TQMSG_TOOL_INSERT_AGREEMENT_H
