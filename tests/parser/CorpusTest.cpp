// Real message files from public projects: each loads, or is refused at the
// line and with the text recorded in corpus-outcomes.tsv, and every identifier
// that the public headers give for a stored symbolic name matches the one the
// parser composed. A change of outcome fails the test; update the table only
// after checking the new outcome by hand against the format's rules.
#include <unistd.h>

#include <algorithm>
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

const std::string CORPUS = TQMSG_CORPUS_DIR;

// file -> symbolic name -> identifier that the public headers give, without
// the names whose headers disagree with each other.
std::map<std::string, std::map<std::string, uint32_t>> oracleIdentifiers() {
    std::map<std::string, std::map<std::string, uint32_t>> oracle;
    for (auto& row : readTable(CORPUS + "/oracle_ids.tsv", 3)) {
        oracle[row[0]][row[1]] = static_cast<uint32_t>(std::stoul(row[2], nullptr, 16));
    }
    for (auto& row : readTable(CORPUS + "/oracle_conflicts.tsv", 2)) oracle[row[0]].erase(row[1]);
    return oracle;
}

// Each row of corpus-outcomes.tsv: a file, the texts it stores or the line
// and text (after the 'File: "...", Line: n - ' prefix) of its error.
TEST(Corpus, EachFileLoadsAsRecordedWithTheOracleIdentifiers) {
    if (!std::ifstream(CORPUS + "/MANIFEST.tsv").good()) {
        GTEST_SKIP() << "no corpus of message files at '" << CORPUS << "'";
    }
    auto oracle = oracleIdentifiers();
    std::set<std::string> recorded;
    for (auto& row : readTable(TQMSG_SOURCE_DIR "/tests/parser/corpus-outcomes.tsv", 4)) {
        SCOPED_TRACE(row[0]);
        recorded.insert(row[0]);
        inFreshProcess([&] {
            alarm(600);  // a hang ends the child and fails the test
            const std::string path = CORPUS + "/" + row[0];
            std::string error = thrownBy([&] {
                EXPECT_EQ(
                    thrownBy<MessageModuleException>([&] { MessageModule module(path, false); }),
                    "<no exception>");
            });
            bool loaded = error == "<no exception>";
            if (!row[1].empty()) {
                EXPECT_TRUE(loaded) << error;
                EXPECT_EQ(std::to_string(MessageModule::mlmap.msgmap.size()), row[1]);
            } else {
                EXPECT_EQ(error, at(path, std::stoi(row[2])) + row[3]);
            }
            for (const auto& entry : oracle[row[0]]) {
                // A refused file stops before some of its names; a loaded one has them all.
                long stored = idOf(entry.first);
                if (stored == -1 && !loaded) continue;
                EXPECT_EQ(uint32_t(stored), entry.second) << entry.first;
            }
        });
    }
    for (auto& row : readTable(CORPUS + "/MANIFEST.tsv", 1)) {
        EXPECT_EQ(recorded.count(row[0]), 1u) << row[0] << " has no recorded outcome";
    }
}

}  // namespace
