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
    auto position = tables.lower_bound(fileName.c_str());
    if (position != tables.end() && std::strcmp(position->first, fileName.c_str()) == 0) {
        return false;
    }
    std::unique_ptr<char[]> key = copyKey(fileName.c_str());
    tables.emplace_hint(position, key.get(), table);
    key.release();  // the map owns it now
    return true;
}

void MessageTableMap::clear() {
    for (auto& entry : tables) {
        delete entry.second;
        entry.second = nullptr;
    }
    releaseKeys(tables);
}
