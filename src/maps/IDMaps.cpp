// The name/identifier maps: IDMap, IDReverseMap and DualIDMap.
#include "MessageModuleMaps.h"
#include "maps/OwnedKey.h"

IDMap::~IDMap() { releaseKeys(entries); }

long* IDMap::get(std::string& name) {
    auto found = entries.find(name.c_str());
    return found == entries.end() ? nullptr : &found->second;
}

bool IDMap::put(std::string& name, long id) {
    return emplaceOwnedKey(entries, name.c_str(), toInt32(id)).second;
}

std::string* IDReverseMap::get(long id) {
    auto found = entries.find(toInt32(id));
    return found == entries.end() ? nullptr : &found->second;
}

bool IDReverseMap::put(long id, std::string& text) {
    return entries.emplace(toInt32(id), text).second;
}

DualIDMap::~DualIDMap() = default;

std::string* DualIDMap::get(long id) { return reverse.get(id); }

std::string* DualIDMap::get(std::string& name) {
    long* id = forward.get(name);
    return id == nullptr ? nullptr : reverse.get(*id);
}

long* DualIDMap::getID(std::string& name) { return forward.get(name); }

long* DualIDMap::getIDX(std::string& name) {
    std::string lowered = toLowerCase(name);
    return forward.get(lowered);
}

// Adds name -> id and id -> text. A repeated or conflicting definition is
// judged by `allowDuplicates` and `ignoreConflicts`; no step is undone, so a
// refusal after the name was added leaves the name entry in place.
bool DualIDMap::put(std::string& name, long id, std::string& text, bool ignoreConflicts) {
    if (!forward.put(name, id)) {
        if (!allowDuplicates) {
            return false;
        }
        if (*forward.get(name) != toInt32(id) && !ignoreConflicts) {
            return false;
        }
    }
    if (reverse.put(id, text)) {
        return true;
    }
    if (!allowDuplicates) {
        return false;
    }
    return *reverse.get(id) == text || ignoreConflicts;
}

bool DualIDMap::putX(std::string& name, long id, std::string& text, bool ignoreConflicts) {
    std::string lowered = toLowerCase(name);
    return put(lowered, id, text, ignoreConflicts);
}
