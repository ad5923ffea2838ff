// The converter's rules, one case each from rules.txt: a Windows message file
// is converted, the converted file loaded in a fresh process, and every
// message must format as the Windows formatter formats the original.
#include <iconv.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <sstream>

#include "PortConverter.h"
#include "PortTestSupport.h"

namespace {

struct Formatted {
    long language, id;
    std::string text;
};

struct RuleCase {
    std::string id, description;
    std::vector<std::string> input, forms;
    PortOptions options;
    std::vector<Formatted> formatted;
    std::vector<std::pair<std::string, unsigned long>> header;  // original name -> id
    std::vector<std::pair<uint32_t, std::string>> stored;       // id -> written name
    std::vector<std::pair<int, std::string>> warnings;          // line, kind
    bool fails = false;
    int errorLine = 0;
    std::string errorText;
};

void PrintTo(const RuleCase& rule, std::ostream* out) {
    *out << rule.id << ' ' << rule.description;
}

// The escapes of rules.txt: \n \r \t \\ \xHH and \{N c}.
std::string unescape(const std::string& text) {
    std::string out;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            out += text[i];
            continue;
        }
        char c = text[++i];
        if (c == 'x') {
            out += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else if (c == '{') {
            size_t blank = text.find(' ', i), close = text.find('}', i);
            out.append(std::stoul(text.substr(i + 1, blank - i - 1)), text[blank + 1]);
            i = close;
        } else {
            out += c == 'n' ? '\n' : c == 'r' ? '\r' : c == 't' ? '\t' : c;
        }
    }
    return out;
}

void applyOption(RuleCase& rule, const std::string& name, const std::string& value) {
    PortOptions& options = rule.options;
    if (name == "application-fff") options.resolve.applicationFacility = 0xFFF;
    if (name == "first-message-number") options.resolve.firstMessageNumber = std::stoul(value);
    if (name == "no-final-newline") options.finalLineBreak = false;
    if (name == "code-page") options.codePage = value;
    if (name == "name-prefix") options.namePrefix = value;
    if (name == "customer-bit") options.customerBit = true;
    if (name == "language") {
        size_t equals = value.find('=');
        options.resolve.languageMoves.emplace_back(
            value.substr(0, equals), std::stoul(value.substr(equals + 1), nullptr, 0));
    }
}

void applyDirective(RuleCase& rule, const std::string& directive) {
    std::istringstream words(directive);
    std::string verb, first, second;
    words >> verb >> first;
    words.get();  // the blank before the rest
    std::string rest((std::istreambuf_iterator<char>(words)), std::istreambuf_iterator<char>());
    std::istringstream(rest) >> second;
    if (verb == "input") {
        std::istringstream forms(directive.substr(verb.size()));
        for (std::string form; forms >> form;) rule.forms.push_back(form);
    } else if (verb == "option") {
        applyOption(rule, first, second);
    } else if (verb == "expect") {
        size_t blank = rest.find(' ');
        std::string text = blank == std::string::npos ? "" : rest.substr(blank + 1);
        rule.formatted.push_back({static_cast<long>(std::stoul(first, nullptr, 0)),
                                  static_cast<long>(std::stoul(rest.substr(0, blank), nullptr, 0)),
                                  unescape(text)});
    } else if (verb == "header") {
        rule.header.emplace_back(first, std::stoul(second, nullptr, 0));
    } else if (verb == "name") {
        rule.stored.emplace_back(std::stoul(first, nullptr, 0), second);
    } else if (verb == "warning") {
        rule.warnings.emplace_back(std::stoi(first), second);
    } else if (verb == "error") {
        rule.fails = true;
        rule.errorLine = std::stoi(first);
        rule.errorText = rest;
    } else {
        ADD_FAILURE() << rule.id << ": unknown directive " << verb;
    }
}

std::vector<RuleCase> readRules() {
    std::vector<RuleCase> rules;
    std::ifstream in(TQMSG_SOURCE_DIR "/tests/port/rules.txt");
    bool inInput = false;
    for (std::string line; std::getline(in, line);) {
        if (line.compare(0, 8, "@@ case ") == 0) {
            rules.emplace_back();
            size_t blank = line.find(' ', 8);
            rules.back().id = line.substr(8, blank - 8);
            rules.back().description = line.substr(blank + 1);
            inInput = true;
        } else if (line.compare(0, 3, "@@ ") == 0) {
            inInput = false;
            applyDirective(rules.back(), line.substr(3));
        } else if (inInput) {
            rules.back().input.push_back(unescape(line));
        }
    }
    return rules;
}

std::string transcode(const std::string& text, const char* to) {
    iconv_t handle = iconv_open(to, "UTF-8");
    std::string out(text.size() * 4 + 4, '\0');
    char* in = const_cast<char*>(text.data());
    char* target = &out[0];
    size_t inLeft = text.size(), outLeft = out.size();
    iconv(handle, &in, &inLeft, &target, &outLeft);
    iconv_close(handle);
    out.resize(out.size() - outLeft);
    return out;
}

// The input file's bytes in the forms the case asks for.
std::string inputBytes(const RuleCase& rule) {
    auto has = [&](const char* form) {
        return std::find(rule.forms.begin(), rule.forms.end(), form) != rule.forms.end();
    };
    std::string text;
    for (const std::string& line : rule.input) text += line + (has("crlf") ? "\r\n" : "\n");
    if (has("bom")) text.insert(0, "\xEF\xBB\xBF");
    if (has("utf-16le")) return transcode(text, "UTF-16LE");
    if (has("utf-16be")) return transcode(text, "UTF-16BE");
    return text;
}

const char* kindName(WarningKind kind) {
    switch (kind) {
        case WarningKind::Renamed:
            return "Renamed";
        case WarningKind::MadeUpName:
            return "MadeUpName";
        case WarningKind::Dropped:
            return "Dropped";
        case WarningKind::Undocumented:
            return "Undocumented";
        case WarningKind::Unportable:
            return "Unportable";
    }
    return "?";
}

void expectWarnings(const RuleCase& rule, const PortReport& report) {
    std::vector<std::pair<int, std::string>> met;
    for (const PortWarning& warning : report.warnings()) {
        met.emplace_back(warning.line, kindName(warning.kind));
    }
    std::vector<std::pair<int, std::string>> expected = rule.warnings;
    std::sort(met.begin(), met.end());
    std::sort(expected.begin(), expected.end());
    std::ostringstream printed;
    report.print(printed, "rule.mc");
    EXPECT_EQ(met, expected) << printed.str();
}

class Rule : public testing::TestWithParam<RuleCase> {};

TEST_P(Rule, ConvertedTextFormatsAsOnWindows) {
    const RuleCase& rule = GetParam();
    PortReport report;
    PortResult result;
    try {
        result = portMessageFile(inputBytes(rule), "rule.mc", rule.options, report);
    } catch (const PortError& error) {
        EXPECT_TRUE(rule.fails) << describeError("rule.mc", error);
        EXPECT_EQ(error.line, rule.errorLine);
        EXPECT_NE(error.text.find(rule.errorText), std::string::npos) << error.text;
        return;
    }
    ASSERT_FALSE(rule.fails) << "converted, expected: " << rule.errorText;
    expectWarnings(rule, report);
    for (const auto& name : rule.header) {
        auto defines = [&](const HeaderName& h) { return h.name == name.first; };
        auto found = std::find_if(result.headerNames.begin(), result.headerNames.end(), defines);
        ASSERT_NE(found, result.headerNames.end()) << name.first;
        EXPECT_EQ(found->id, name.second) << name.first;
    }
    std::ostringstream file;
    writeMessageFile(file, result.content);
    TempFile converted("rule.mc", file.str());
    inFreshProcess([&] {
        ASSERT_EQ(loadConverted(converted.path()), "") << file.str();
        for (const Formatted& expected : rule.formatted) {
            EXPECT_EQ(formatStored(expected.language, expected.id), expected.text)
                << std::hex << expected.id;
        }
        for (const auto& stored : rule.stored) {
            std::string name = stored.second;
            long* id = MessageModule::mlmap.idmap.get(name);
            ASSERT_NE(id, nullptr) << stored.second << " not stored:\n" << file.str();
            EXPECT_EQ(static_cast<uint32_t>(*id), stored.first) << stored.second;
        }
    });
}

std::string ruleName(const testing::TestParamInfo<RuleCase>& info) { return info.param.id; }

INSTANTIATE_TEST_SUITE_P(Rules, Rule, testing::ValuesIn(readRules()), ruleName);

}  // namespace
