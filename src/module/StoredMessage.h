// Internal: the formatter's access to a stored message.
#ifndef TQMSG_MODULE_STORED_MESSAGE_H
#define TQMSG_MODULE_STORED_MESSAGE_H

#include "MessageModuleMaps.h"

// The stored record of message `messageId` in language `languageId` (both
// 32-bit values), or null when the store has none.
const FormattableMessage* findStoredMessage(long languageId, long messageId);

// The stored record of message `messageId` in language `languageId` (both
// 32-bit values), read in place: nothing changes the store while messages
// are formatted. Throws MessageModuleException naming both identifiers when
// the store has no such record.
const FormattableMessage& storedMessage(long languageId, long messageId);

#endif  // TQMSG_MODULE_STORED_MESSAGE_H
