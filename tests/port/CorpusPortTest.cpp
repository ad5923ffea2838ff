// Real message files from public projects, converted: each converts with the
// outcome recorded in corpus.tsv (texts stored once the converted file is
// loaded, warnings by kind, or the error), and every identifier that the
// public headers give for a symbolic name is the one the converted file
// stores under the name written for it and the one its C header gives.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include "PortConverter.h"
#include "PortTestSupport.h"

namespace {

const std::string CORPUS = TQMSG_CORPUS_DIR;

bool corpusPresent() { return !CORPUS.empty() && std::ifstream(CORPUS + "/MANIFEST.tsv").good(); }

// The tab-separated fields of every line of `path` after its header line.
std::vector<std::vector<std::string>> readTable(const std::string& path) {
    std::vector<std::vector<std::string>> rows;
    std::ifstream in(path);
    std::string line, field;
    std::getline(in, line);
    while (std::getline(in, line)) {
        std::vector<std::string> fields;
        std::istringstream split(line);
        while (std::getline(split, field, '\t')) fields.push_back(field);
        rows.push_back(fields);
    }
    return rows;
}

// One row of corpus.tsv: the file, the texts stored after loading the
// converted file (-1 when the conversion fails), the warnings by kind, and
// the error ("LINE: TEXT") of a file that cannot be converted.
struct Outcome {
    std::string file;
    std::string row;  // as recorded, tabs included
};

std::vector<Outcome> readOutcomes() {
    std::vector<Outcome> outcomes;
    for (auto& fields : readTable(TQMSG_SOURCE_DIR "/tests/port/corpus.tsv")) {
        fields.resize(8);  // the error is empty for a converted file
        std::string row;
        for (const std::string& field : fields) row += (&field == &fields[0] ? "" : "\t") + field;
        outcomes.push_back({fields.at(0), row});
    }
    return outcomes;
}

std::map<std::string, uint32_t> oracleFor(const std::string& file) {
    std::map<std::string, uint32_t> oracle;
    for (auto& row : readTable(CORPUS + "/oracle_ids.tsv")) {
        if (row.at(0) == file)
            oracle[row.at(1)] = static_cast<uint32_t>(std::stoul(row.at(2), 0, 16));
    }
    return oracle;
}

std::string warningCounts(const PortReport& report) {
    std::string counts;
    for (WarningKind kind : {WarningKind::Renamed, WarningKind::MadeUpName, WarningKind::Dropped,
                             WarningKind::Undocumented, WarningKind::Unportable}) {
        counts += "\t" + std::to_string(report.count(kind));
    }
    return counts;
}

std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The texts the store holds once `path` is loaded, in a fresh process, and
// whether every oracle identifier is bound to its written name there.
void expectLoaded(const std::string& path, size_t texts,
                  const std::map<std::string, std::string>& writtenNames,
                  const std::map<std::string, uint32_t>& oracle) {
    inFreshProcess([&] {
        ASSERT_EQ(loadConverted(path), "");
        EXPECT_EQ(MessageModule::mlmap.msgmap.size(), texts);
        for (const auto& entry : oracle) {
            auto written = writtenNames.find(entry.first);
            ASSERT_NE(written, writtenNames.end()) << entry.first << " is not in the C header";
            std::string name = written->second;
            long* id = MessageModule::mlmap.idmap.get(name);
            ASSERT_NE(id, nullptr) << name << " is not stored";
            EXPECT_EQ(static_cast<uint32_t>(*id), entry.second) << entry.first << " as " << name;
        }
    });
}

class CorpusPort : public testing::TestWithParam<Outcome> {};

TEST_P(CorpusPort, ConvertsAsRecordedWithTheOracleIdentifiers) {
    if (!corpusPresent()) GTEST_SKIP() << "no corpus of message files at '" << CORPUS << "'";
    const Outcome& expected = GetParam();
    PortReport report;
    PortResult result;
    std::string error;
    try {
        result = portMessageFile(readBytes(CORPUS + "/" + expected.file), expected.file,
                                 PortOptions(), report);
    } catch (const PortError& failure) {
        error = std::to_string(failure.line) + ": " + failure.text;
    }
    size_t texts = 0;
    for (const MessageDefinition& definition : result.content.definitions) {
        texts += definition.texts.size();
    }
    std::string actual = expected.file + "\t" + (error.empty() ? std::to_string(texts) : "-1") +
                         warningCounts(report) + "\t" + error;
    ASSERT_EQ(actual, expected.row);
    if (!error.empty()) return;

    const auto oracle = oracleFor(expected.file);
    std::map<std::string, std::string> writtenNames;
    for (const HeaderName& name : result.headerNames) {
        writtenNames[name.name] = result.content.definitions[name.definition].symbolicName;
        auto known = oracle.find(name.name);
        if (known != oracle.end()) {
            EXPECT_EQ(uint32_t(name.id), known->second) << name.name;
        }
    }
    std::ostringstream converted;
    writeMessageFile(converted, result.content);
    TempFile file("corpus.mc", converted.str());
    expectLoaded(file.path(), texts, writtenNames, oracle);
}

std::string testName(const testing::TestParamInfo<Outcome>& info) {
    std::string name = info.param.file.substr(0, info.param.file.rfind('.'));
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

void PrintTo(const Outcome& outcome, std::ostream* out) { *out << outcome.file; }

INSTANTIATE_TEST_SUITE_P(RealFiles, CorpusPort, testing::ValuesIn(readOutcomes()), testName);

TEST(CorpusPortManifest, EveryFileAndOracleRowIsCovered) {
    if (!corpusPresent()) GTEST_SKIP() << "no corpus of message files at '" << CORPUS << "'";
    std::set<std::string> recorded;
    for (const Outcome& outcome : readOutcomes()) recorded.insert(outcome.file);
    size_t files = 0;
    for (auto& row : readTable(CORPUS + "/MANIFEST.tsv")) {
        EXPECT_EQ(recorded.count(row.at(0)), 1u) << row.at(0) << " has no recorded outcome";
        ++files;
    }
    EXPECT_EQ(recorded.size(), files);
    for (auto& row : readTable(CORPUS + "/oracle_ids.tsv")) {
        EXPECT_EQ(recorded.count(row.at(0)), 1u) << row.at(0) << " of the oracle is not converted";
    }
}

}  // namespace
