// The C interface against the C++ one: every text of a file of insert formats
// and escapes (data/formats.mc) and of every loadable file of the corpus,
// formatted through both interfaces and both argument paths, gives the same
// bytes, or the same failure text (printed by the C++ interface, returned by
// the C one).
#include <dirent.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "FreshProcess.h"
#include "MessageModule.h"
#include "tqmsg.h"

namespace {

const std::string CORPUS = TQMSG_CORPUS_DIR;
const int INSERTS = 199;
const int LIST_INSERTS = 9;  // the values the list path passes

// Insert values: texts "v1" to "v199", which also serve every integer and
// pointer conversion (their addresses, the same for both interfaces).
char** insertValues() {
    static std::vector<std::string> texts;
    static std::vector<char*> values;
    if (values.empty()) {
        for (int i = 1; i <= INSERTS; ++i) texts.push_back("v" + std::to_string(i));
        for (std::string& text : texts) values.push_back(&text[0]);
    }
    return values.data();
}

// What one call gave: its text, or its failure text.
struct Outcome {
    bool failed = false;
    std::string text;

    bool operator==(const Outcome& other) const {
        return failed == other.failed && text == other.text;
    }
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    return out << (outcome.failed ? "failure: " : "text: ") << outcome.text;
}

// Runs a C++ call that allocates its result into `*result`, with std::cout
// captured for its failure line.
template <typename Call>
Outcome viaCxx(Call call) {
    std::ostringstream printed;
    std::streambuf* saved = std::cout.rdbuf(printed.rdbuf());
    char* result = nullptr;
    long size = call(&result);
    std::cout.rdbuf(saved);
    Outcome outcome;
    outcome.failed = size < 0;
    outcome.text = outcome.failed ? printed.str() : std::string(result);
    if (!outcome.text.empty() && outcome.failed) outcome.text.pop_back();  // the line end
    delete[] result;
    return outcome;
}

// Runs a C call twice, as a caller sizing its buffer does.
template <typename Call>
Outcome viaC(Call call) {
    Outcome outcome;
    long length = call(nullptr, 0);
    outcome.failed = length < 0;
    if (outcome.failed) {
        outcome.text = tqmsg_last_error();
        return outcome;
    }
    std::vector<char> buffer(static_cast<std::size_t>(length) + 1);
    EXPECT_EQ(call(buffer.data(), buffer.size()), length);
    outcome.text = buffer.data();
    return outcome;
}

// The list path passes LIST_INSERTS texts: texts whose inserts need more, or
// read a floating value (which would come from registers the two calls leave
// differently), are formatted through the array only.
bool listPathFits(const std::string& text) {
    try {
        for (const InsertUse& use : MessageModule::findInserts(text)) {
            if (use.number > LIST_INSERTS || use.info.kind == InsertFormatInfo::FLOATING) {
                return false;
            }
        }
        return true;
    } catch (MessageModuleException&) {
        return true;  // both fail on the scan
    }
}

void compareStoredText(long languageId, long messageId, const std::string& text) {
    char** v = insertValues();
    const uintptr_t* array = reinterpret_cast<const uintptr_t*>(v);
    long flags = _FORMAT_MESSAGE_ALLOCATE_BUFFER | _FORMAT_MESSAGE_ARGUMENT_ARRAY;
    EXPECT_EQ(viaC([&](char* buf, size_t size) {
                  return tqmsg_format_array(buf, size, messageId, languageId, array, INSERTS);
              }),
              viaCxx([&](char** result) {
                  return MessageModule::formatMessage(flags, nullptr, messageId, languageId, result,
                                                      0, v);
              }))
        << "array path, " << languageId << "." << messageId;
    if (!listPathFits(text)) return;
    EXPECT_EQ(viaC([&](char* buf, size_t size) {
                  return tqmsg_format(buf, size, messageId, languageId, v[0], v[1], v[2], v[3],
                                      v[4], v[5], v[6], v[7], v[8]);
              }),
              viaCxx([&](char** result) {
                  return MessageModule::formatMessage(_FORMAT_MESSAGE_ALLOCATE_BUFFER, nullptr,
                                                      messageId, languageId, result, 0L, v[0], v[1],
                                                      v[2], v[3], v[4], v[5], v[6], v[7], v[8]);
              }))
        << "list path, " << languageId << "." << messageId;
}

std::vector<std::string> filesToCompare() {
    std::vector<std::string> files{TQMSG_SOURCE_DIR "/tests/capi/data/formats.mc"};
    DIR* dir = opendir(CORPUS.c_str());
    if (dir == nullptr) return files;
    while (dirent* entry = readdir(dir)) {
        std::string name = entry->d_name;
        if (name.size() > 3 && name.compare(name.size() - 3, 3, ".mc") == 0) {
            files.push_back(CORPUS + "/" + name);
        }
    }
    closedir(dir);
    return files;
}

}  // namespace

TEST(SameTexts, EveryTextThroughBothInterfacesAndPaths) {
    std::vector<std::string> files = filesToCompare();
    if (files.size() == 1) std::printf("no corpus of message files at '%s'\n", CORPUS.c_str());
    for (const std::string& file : files) {
        SCOPED_TRACE(file);
        inFreshProcess([&] {
            alarm(600);
            // Files the parser refuses are its tests' concern; ours must load.
            if (tqmsg_load(file.c_str()) != 0) {
                EXPECT_NE(file, files.front()) << tqmsg_last_error();
                return;
            }
            for (auto& entry : MessageModule::mlmap.msgmap) {
                long languageId = 0, messageId = 0;
                ASSERT_EQ(std::sscanf(entry.first, "%ld.%ld", &languageId, &messageId), 2);
                for (auto& record : entry.second) {
                    compareStoredText(languageId, messageId, record.second.text);
                }
            }
        });
    }
}
