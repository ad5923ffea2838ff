// Real message files from public projects: each loads, or is refused at the
// line and with the text recorded in corpus-outcomes.tsv, and every identifier
// that the public headers give for a stored symbolic name matches the one the
// parser composed. A change of outcome fails the test; update the table only
// after checking the new outcome by hand against the format's rules.
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <fstream>
#include <map>
#include <set>
#include <vector>

#include "ParserTestSupport.h"

namespace {

// The rows of a tab-separated table after its column names (and the comment
// lines before them), each padded to `columns` fields; "\r", "\t" and
// "\\" in a field stand for a carriage return, a tab and a backslash.
using Rows = std::vector<std::vector<std::string>>;
Rows readTable(const std::string& path, std::size_t columns) {
    Rows rows;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line) && line.rfind("#", 0) == 0) continue;
    while (std::getline(in, line)) {
        if (line.empty()) continue;
        std::vector<std::string> fields(1);
        for (std::size_t i = 0; i < line.size(); ++i) {
            char c = line[i];
            if (c == '\\' && i + 1 < line.size()) {
                c = line[++i];
                fields.back() += c == 'r' ? '\r' : c == 't' ? '\t' : c;
            } else if (c == '\t') {
                fields.emplace_back();
            } else {
                fields.back() += c;
            }
        }
        fields.resize(std::max(columns, fields.size()));
        rows.push_back(fields);
    }
    return rows;
}

// How each corpus file loads: the texts stored, or the line and the text (after
// its 'File: "...", Line: n - ' prefix) of the error that refuses it.
struct Expectation {
    std::string file;
    int storedTexts;  // -1: refused
    int refusedLine;
    std::string error;
};
void PrintTo(const Expectation& expected, std::ostream* out) { *out << expected.file; }

std::vector<Expectation> recordedOutcomes() {
    std::vector<Expectation> outcomes;
    for (auto& row : readTable(TQMSG_SOURCE_DIR "/tests/parser/corpus-outcomes.tsv", 4)) {
        int stored = row[1].empty() ? -1 : std::stoi(row[1]);
        int line = row[2].empty() ? 0 : std::stoi(row[2]);
        outcomes.push_back({row[0], stored, line, row[3]});
    }
    return outcomes;
}

const std::vector<Expectation> EXPECTATIONS = recordedOutcomes();
const std::string CORPUS = TQMSG_CORPUS_DIR;

bool corpusPresent() { return !CORPUS.empty() && std::ifstream(CORPUS + "/MANIFEST.tsv").good(); }

// The oracle identifiers of `file`, without the names the public headers disagree on.
std::map<std::string, uint32_t> oracleFor(const std::string& file) {
    std::map<std::string, uint32_t> oracle;
    for (auto& row : readTable(CORPUS + "/oracle_ids.tsv", 3)) {
        if (row[0] == file) oracle[row[1]] = static_cast<uint32_t>(std::stoul(row[2], nullptr, 16));
    }
    for (auto& row : readTable(CORPUS + "/oracle_conflicts.tsv", 2)) {
        if (row[0] == file) oracle.erase(row[1]);
    }
    return oracle;
}

class Corpus : public ::testing::TestWithParam<Expectation> {};

TEST_P(Corpus, LoadsAsRecordedWithTheOracleIdentifiers) {
    if (!corpusPresent()) GTEST_SKIP() << "no corpus of message files at '" << CORPUS << "'";
    const Expectation& expected = GetParam();
    const auto oracle = oracleFor(expected.file);
    inFreshProcess([&] {
        alarm(600);  // a hang ends the child and fails the test
        const std::string path = CORPUS + "/" + expected.file;
        std::string error = thrownBy([&] {
            EXPECT_EQ(thrownBy<MessageModuleException>([&] { MessageModule module(path, false); }),
                      "<no exception>");
        });
        bool loaded = error == "<no exception>";
        if (expected.storedTexts >= 0) {
            EXPECT_TRUE(loaded) << error;
            EXPECT_EQ(MessageModule::mlmap.msgmap.size(), std::size_t(expected.storedTexts));
        } else {
            EXPECT_EQ(error, at(path, expected.refusedLine) + expected.error);
        }
        for (const auto& entry : oracle) {
            // A refused file stops before some of its names; a loaded one has them all.
            long stored = idOf(entry.first);
            if (stored == -1 && !loaded) continue;
            EXPECT_EQ(uint32_t(stored), entry.second) << entry.first;
        }
    });
}

std::string testName(const ::testing::TestParamInfo<Expectation>& info) {
    std::string name = info.param.file;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(RealFiles, Corpus, ::testing::ValuesIn(EXPECTATIONS), testName);

TEST(CorpusManifest, EveryFileHasARecordedOutcome) {
    if (!corpusPresent()) GTEST_SKIP() << "no corpus of message files at '" << CORPUS << "'";
    std::set<std::string> recorded;
    for (const auto& expected : EXPECTATIONS) recorded.insert(expected.file);
    for (auto& row : readTable(CORPUS + "/MANIFEST.tsv", 1)) {
        EXPECT_EQ(recorded.count(row[0]), 1u) << row[0] << " has no recorded outcome";
    }
}

}  // namespace
