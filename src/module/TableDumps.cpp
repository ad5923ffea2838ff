// Text renderings of a parsed table, of the registry of loaded files and of
// the module (registry and store together). Rendering changes nothing.
#include <sstream>

#include "MessageModule.h"
#include "MessageTable.h"

std::ostream& operator<<(std::ostream& out, MessageTable& table) {
    out << "{" << std::endl;
    out << "Lang-Map: " << std::endl;
    out << table.languages << std::endl;
    out << "Facility-Map:" << std::endl;
    out << table.facilities << std::endl;
    out << "Severity-Map:" << std::endl;
    out << table.severities;
    out << "}" << std::endl;
    return out;
}

std::string MessageTable::toString() {
    std::ostringstream out;
    out << *this;
    return out.str();
}

std::ostream& operator<<(std::ostream& out, MessageTableMap& registry) {
    for (auto& entry : registry.tables) {
        out << "TABLE-ID: " << entry.first << std::endl;
        out << "TABLE-CONTENTS: " << std::endl;
        out << *entry.second;
    }
    return out;
}

std::string MessageTableMap::toString() {
    std::ostringstream out;
    out << *this;
    return out.str();
}

// The module has no data of its own: every instance renders the process-wide
// registry and store.
std::ostream& operator<<(std::ostream& out, MessageModule&) {
    out << "Message-Tables: " << std::endl;
    out << MessageModule::mtmap << std::endl;
    out << "Multi-Lang-Message-Map: (" << MessageModule::mlmap.msgmap.size() << " entries)"
        << std::endl;
    out << MessageModule::mlmap;
    return out;
}

std::string MessageModule::toString() {
    std::ostringstream out;
    out << *this;
    return out.str();
}
