// FacilityMap: case-insensitive facility names, records by facility id.
#include "MessageModuleMaps.h"

FacilityMap::~FacilityMap() = default;

Facility* FacilityMap::get(long id) {
    auto found = byId.find(toInt32(id));
    return found == byId.end() ? nullptr : &found->second;
}

Facility* FacilityMap::get(std::string& name) {
    std::string key = toLowerCase(name);
    long* id = forward.get(key);
    return id == nullptr ? nullptr : get(*id);
}

// A name present in any case is refused outright. A new name whose id is
// already present becomes another name of the stored record; the passed
// record is then dropped and only the result tells the two cases apart.
bool FacilityMap::put(std::string& name, long id, Facility& facility, bool ignoreConflicts) {
    std::string key = toLowerCase(name);
    if (!forward.put(key, id)) {
        return false;
    }
    Facility copy = facility;
    copy.id = toInt32(copy.id);
    copy.msgId = toInt32(copy.msgId);
    bool added = byId.emplace(toInt32(id), copy).second;
    return ignoreConflicts || added;
}
