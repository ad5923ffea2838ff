// The header-line classifier skips through a line instead of searching a
// lower-cased copy; on lines built at random from keyword fragments in mixed
// case it must still pick the first keyword of the fixed order that the
// lower-cased line contains anywhere.
#include <random>

#include "ParserTestSupport.h"

namespace {

std::string expectedKind(std::string line) {
    for (const char* kind : {"facility", "severity", "language", "outputbase", "symbolicname"})
        if (toLowerCase(line).find(kind) != std::string::npos) return kind;
    return "text";
}

// The error names the map looked in; a symbolic name is taken, an output base
// changes nothing and a text line is refused.
std::string observedKind(MessageTable& table, std::string line) {
    long *language = nullptr, *severity = nullptr;
    Facility* facility = nullptr;
    std::string name, kind;
    std::string error = thrownBy([&] {
        bool header = table.processMessageHeaderBlock(&line[0], language, facility, severity, name);
        kind = !header ? "text" : name == "v" ? "symbolicname" : name.empty() ? "outputbase" : "?";
    });
    for (const char* map : {"facility", "severity", "language"})
        if (error.find(std::string("Unknown ") + map + ": v") != std::string::npos) return map;
    return error == "<no exception>" ? kind : "error: " + error;
}

}  // namespace

TEST(LoadingSpeed, HeaderKeywordsAreRankedAsTheLowerCasedSearchRanksThem) {
    inFreshProcess([] {
        MessageTable* table = loadText("");
        std::vector<std::string> fragments;
        std::istringstream list(
            "facility|FACILITY|Severity|seVERity|language|LanguageNames|"
            "OutputBase|outputbas|SymbolicName|symbolic|lang|uage|ity|Name| |x|\xc4|I|i");
        for (std::string piece; std::getline(list, piece, '|');) fragments.push_back(piece);
        std::mt19937 random(20261123);
        for (int round = 0; round < 20000; ++round) {
            std::string line = "x";
            for (int part = static_cast<int>(random() % 6); part > 0; --part)
                line += fragments[random() % fragments.size()];
            line += "=v";
            ASSERT_EQ(observedKind(*table, line), expectedKind(line)) << "line: " << line;
        }
    });
}
