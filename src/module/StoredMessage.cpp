#include "module/StoredMessage.h"

#include "MessageModule.h"
#include "maps/FailureText.h"

const FormattableMessage* findStoredMessage(long languageId, long messageId) {
    FormattableMessage* message = nullptr;
    MessageModule::mlmap.get(languageId, messageId, message);
    return message;
}

const FormattableMessage& storedMessage(long languageId, long messageId) {
    const FormattableMessage* message = findStoredMessage(languageId, messageId);
    if (message == nullptr) {
        throw moduleFailure("Message with langId=0x%lx, msgId=0x%lx not found",
                            asUnsigned32(languageId), asUnsigned32(messageId));
    }
    return *message;
}
