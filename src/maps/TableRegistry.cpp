// MessageTableMap: the registry of loaded files (file name -> table).
#include "MessageModuleMaps.h"
#include "MessageTable.h"
#include "maps/OwnedKey.h"

// The tables are not destroyed here: only `clear` does that.
MessageTableMap::~MessageTableMap() { releaseKeys(tables); }

MessageTable* MessageTableMap::get(std::string& fileName) {
    auto found = tables.find(fileName.c_str());
    return found == tables.end() ? nullptr : found->second;
}

bool MessageTableMap::put(std::string& fileName, MessageTable* table) {
    return emplaceOwnedKey(tables, fileName.c_str(), table).second;
}

void MessageTableMap::clear() {
    for (auto& entry : tables) {
        delete entry.second;
        entry.second = nullptr;
    }
    releaseKeys(tables);
}
