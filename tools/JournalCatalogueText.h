// The text of a message as a journal catalogue shows it: escapes resolved as
// the formatter resolves them, each insert written as the journal field
// @TQMSG_INSERT_N@ that libtqmsg-journal gives each event.
#ifndef TQMSG_TOOL_JOURNAL_CATALOGUE_TEXT_H
#define TQMSG_TOOL_JOURNAL_CATALOGUE_TEXT_H

#include <string>

// The stored text of `messageId` in `languageId` so rendered. Throws
// CommandFailure with the library's text when the formatter refuses it.
std::string journalCatalogueText(long messageId, long languageId);

#endif  // TQMSG_TOOL_JOURNAL_CATALOGUE_TEXT_H
