// The header-line classifier skips through a line instead of searching a
// lower-cased copy; this checks, on lines built at random from keyword
// fragments in mixed case, that it still picks the first keyword of the fixed
// order that the lower-cased line contains anywhere.
#include <random>

#include "ParserTestSupport.h"

namespace {

// What the header block should do with `line`, from the plain search.
std::string expectedKind(const std::string& line) {
    std::string lowered = line;
    lowered = toLowerCase(lowered);
    const char* kinds[] = {"facility", "severity", "language", "outputbase", "symbolicname"};
    for (const char* kind : kinds) {
        if (lowered.find(kind) != std::string::npos) return kind;
    }
    return "text";
}

// What it did: the error names the map it looked in; a symbolic name is taken,
// an output base changes nothing and a text line is refused.
std::string observedKind(MessageTable& table, std::string line) {
    long* language = nullptr;
    Facility* facility = nullptr;
    long* severity = nullptr;
    std::string symbolicName;
    try {
        if (!table.processMessageHeaderBlock(&line[0], language, facility, severity,
                                             symbolicName)) {
            return "text";
        }
    } catch (MessageTableParserException& error) {
        for (const char* kind : {"facility", "severity", "language"}) {
            if (error.msg.find(std::string("Unknown ") + kind + ": v") != std::string::npos) {
                return kind;
            }
        }
        return "error: " + error.msg;
    }
    return symbolicName == "v" ? "symbolicname" : symbolicName.empty() ? "outputbase" : "?";
}

}  // namespace

TEST(LoadingSpeed, HeaderKeywordsAreRankedAsTheLowerCasedSearchRanksThem) {
    inFreshProcess([] {
        MessageTable* table = loadText("");
        ASSERT_NE(table, nullptr);
        const char* fragments[] = {"facility",   "FACILITY",  "Severity",
                                   "seVERity",   "language",  "LanguageNames",
                                   "OutputBase", "outputbas", "SymbolicName",
                                   "symbolic",   "lang",      "uage",
                                   "ity",        "Name",      " ",
                                   "x",          "\xc4",      "I",
                                   "i"};
        std::mt19937 random(20261123);
        for (int round = 0; round < 20000; ++round) {
            std::string line = "x";
            for (int part = static_cast<int>(random() % 6); part > 0; --part) {
                line += fragments[random() % (sizeof fragments / sizeof *fragments)];
            }
            line += "=v";
            ASSERT_EQ(observedKind(*table, line), expectedKind(line)) << "line: " << line;
        }
    });
}
