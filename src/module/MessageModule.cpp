// The module's lifecycle: the process-wide stores and file loading.
#include "MessageModule.h"

#include "maps/FailureText.h"

// Defined in this order so that, at unload, the store is destroyed before the
// registry (static objects are destroyed in reverse order of construction).
MessageTableMap MessageModule::mtmap;
MultiLangMessageMap MessageModule::mlmap;
MessageModule* MessageModule::selfInstance = nullptr;

MessageModule::MessageModule() { selfInstance = this; }

MessageModule::MessageModule(std::vector<std::string>& fileNames) {
    loadFiles(this, fileNames, false);
    selfInstance = this;
}

MessageModule::MessageModule(std::string fileName, bool trimTrailingOnly) {
    loadFile(this, fileName, trimTrailingOnly);
    selfInstance = this;
}

MessageModule::~MessageModule() { mtmap.clear(); }

MessageModule* MessageModule::self() { return selfInstance; }

MultiLangMessageMap* MessageModule::getMessageMap() { return &mlmap; }

bool MessageModule::loadFile(MessageModule* module, std::string fileName, bool trimTrailingOnly) {
    if (mtmap.get(fileName) != nullptr) {
        throw moduleFailure("File: %s, already loaded", fileName.c_str());
    }
    // The constructor parses the whole file; if it throws, the table's memory is
    // released and the parser's exception goes on unchanged.
    MessageTable* table = new MessageTable(module, fileName, trimTrailingOnly);
    if (!mtmap.put(fileName, table)) {
        delete table;
        throw moduleFailure("Cannot store table mapping for file: %s", fileName.c_str());
    }
    return true;
}

void MessageModule::loadFiles(MessageModule* module, std::vector<std::string>& fileNames,
                              bool trimTrailingOnly) {
    for (std::string& fileName : fileNames) {
        loadFile(module, fileName, trimTrailingOnly);
    }
}
