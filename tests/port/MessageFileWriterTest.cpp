// The writer: logical text lines come back from the loaded file formatted as
// the Windows formatter gives them (a line feed for each line break), and
// names that the reader would misread are refused.
#include <sstream>

#include "MessageFileWriter.h"
#include "PortTestSupport.h"

namespace {

struct TextCase {
    const char* rule;
    std::vector<std::string> lines;
    bool finalLineBreak;
    std::string formatted;  // by the Windows rules, line breaks as line feeds
};

const std::string LONG(5000, 'x');
const std::string BLANKS(4100, ' ');

const TextCase TEXT_CASES[] = {
    {"lines and the final break", {"Disk full.", "Retry."}, true, "Disk full.\nRetry.\n"},
    {"no final break asked for", {"Disk full.", "Retry."}, false, "Disk full.\nRetry."},
    {"a last line ending in %0", {"Continue? %0"}, true, "Continue? "},
    {"%0 inside a text", {"Name: %0", "%1"}, true, "Name: A\n"},
    {"blank lines", {"a", "", "", "b"}, true, "a\n\n\nb\n"},
    {"a blank first line", {"", "a"}, true, "\na\n"},
    {"a blank last line", {"a", ""}, true, "a\n\n"},
    {"a blank last line, no final break", {"a", ""}, false, "a\n"},
    {"leading blanks", {"  two", "\ttab", "x"}, true, "  two\n\ttab\nx\n"},
    {"trailing blanks", {"a  ", "b\t"}, false, "a  \nb\t"},
    {"lines starting with ;", {";first", "; second"}, true, ";first\n; second\n"},
    {"end-marker look-alikes", {".", "a", ".", " .", ". "}, true, ".\na\n.\n .\n. \n"},
    {"header words in the first line",
     {"Language facility SEVERITY outputbase SymbolicName", "language"},
     true,
     "Language facility SEVERITY outputbase SymbolicName\nlanguage\n"},
    {"a header pair as the first line", {"Severity=Error"}, true, "Severity=Error\n"},
    {"keywords sharing letters in the first line",
     {"x=OutputBaseverity=y OUTPUTBASEVERITY"},
     true,
     "x=OutputBaseverity=y OUTPUTBASEVERITY\n"},
    {"a line longer than the reader's buffer", {LONG + "%1", "y"}, true, LONG + "A\ny\n"},
    {"a long line of blanks", {BLANKS + "z"}, false, BLANKS + "z"},
    {"a % alone at a line's end", {"50%", "60%"}, true, "50\n60\n"},
    {"escapes and inserts", {"%1 and %2!s! 100%% %.%!% b"}, true, "A and B 100% .! b\n"},
    {"an escaped blank at a line's end", {"a% "}, true, "a \n"},
    {"an empty text", {}, true, ""},
};

TEST(MessageFileWriter, TextsFormatAsTheirLogicalLines) {
    MessageFileContent content;
    content.languages.push_back({"English", 0x409, "MSG00409"});
    for (size_t i = 0; i < sizeof(TEXT_CASES) / sizeof(TEXT_CASES[0]); ++i) {
        const TextCase& c = TEXT_CASES[i];
        content.definitions.push_back({static_cast<long>(i + 1),
                                       "Success",
                                       "Application",
                                       "MSG_" + std::to_string(i),
                                       {{"English", c.lines, c.finalLineBreak}}});
    }
    std::ostringstream file;
    writeMessageFile(file, content);
    TempFile converted("writer.mc", file.str());
    inFreshProcess([&] {
        ASSERT_EQ(loadConverted(converted.path()), "") << file.str();
        for (size_t i = 0; i < sizeof(TEXT_CASES) / sizeof(TEXT_CASES[0]); ++i) {
            EXPECT_EQ(formatStored(0x409, static_cast<long>(i + 1)), TEXT_CASES[i].formatted)
                << TEXT_CASES[i].rule;
        }
    });
}

TEST(MessageFileWriter, FileLinesFitTheReadersBuffer) {
    for (const TextCase& c : TEXT_CASES) {
        for (const std::string& line : writeTextLines(c.lines, c.finalLineBreak)) {
            EXPECT_LE(line.size(), MAX_FILE_LINE) << c.rule;
        }
    }
}

TEST(MessageFileWriter, LinesTheReaderCannotHoldAreRefused) {
    for (const std::string& line :
         {std::string("a\0b", 3), std::string("a\nb"), "%1!" + LONG + "s!"}) {
        EXPECT_THROW(writeTextLines({line}, true), UnwritableText);
    }
}

struct NameCase {
    const char* name;
    NameRole role;
    const char* misread;  // the keyword that spoils it, "" when none
};

const NameCase NAME_CASES[] = {
    {"ERROR_INSTALL_LANGUAGE_UNSUPPORTED", NameRole::SymbolicName, "language"},
    {"MSG_FACILITY_DOWN", NameRole::SymbolicName, "facility"},
    {"MSG_OUTPUTBASE", NameRole::SymbolicName, "outputbase"},
    {"MSG_SYMBOLICNAME", NameRole::SymbolicName, "symbolicname"},
    {"MSG_DISK_FULL", NameRole::SymbolicName, ""},
    {"HighSeverity", NameRole::Language, "severity"},
    {"MyLanguageNames", NameRole::Language, "languagenames"},
    {"EnglishUS", NameRole::Language, ""},
    {"NoFacility", NameRole::Severity, "facility"},
    {"LanguageLevel", NameRole::Severity, ""},
    {"SeverityFacility", NameRole::Facility, ""},
};

TEST(MessageFileWriter, NamesThatTheReaderMisreadsAreRefused) {
    for (const NameCase& c : NAME_CASES) {
        EXPECT_EQ(misreadKeyword(c.name, c.role), c.misread) << c.name;
        MessageFileContent content;
        content.languages.push_back({"English", 1, ""});
        MessageDefinition definition{1, "Success", "Application", "MSG", {{"English", {"x"}}}};
        if (c.role == NameRole::SymbolicName) definition.symbolicName = c.name;
        if (c.role == NameRole::Language) content.languages[0].name = c.name;
        if (c.role == NameRole::Language) definition.texts[0].language = c.name;
        if (c.role == NameRole::Severity) definition.severity = c.name;
        if (c.role == NameRole::Facility) definition.facility = c.name;
        content.definitions.push_back(definition);
        std::ostringstream out;
        bool refused = false;
        try {
            writeMessageFile(out, content);
        } catch (UnwritableText&) {
            refused = true;
        }
        EXPECT_EQ(refused, *c.misread != '\0') << c.name;
    }
}

// Every keyword gets its "_", overlapping ones and long repeats included, and
// the result is writable; a name too long for a file line is refused.
TEST(MessageFileWriter, UnspoiledNamesAreWritable) {
    const struct {
        const char* name;
        NameRole role;
        const char* unspoiled;
    } cases[] = {
        {"ERROR_LANGUAGE_FACILITY", NameRole::SymbolicName, "ERROR_L_ANGUAGE_F_ACILITY"},
        {"languageLANGUAGE", NameRole::SymbolicName, "l_anguageL_ANGUAGE"},
        {"MessageIdTypedefacility", NameRole::Language, "M_essageIdTypedef_acility"},
        {"MyLanguageNames", NameRole::Language, "MyL_anguageNames"},
        {"MSG_DISK_FULL", NameRole::SymbolicName, "MSG_DISK_FULL"},
    };
    for (const auto& c : cases) {
        const std::string unspoiled = unspoiledName(c.name, c.role);
        EXPECT_EQ(unspoiled, c.unspoiled);
        EXPECT_TRUE(writableName(unspoiled, c.role)) << unspoiled;
    }
    std::string repeated;
    for (int i = 0; i < 200; ++i) repeated += "language";  // 1,800 characters unspoiled
    EXPECT_TRUE(
        writableName(unspoiledName(repeated, NameRole::SymbolicName), NameRole::SymbolicName));
    EXPECT_TRUE(writableName(std::string(2031, 'x'), NameRole::SymbolicName));
    EXPECT_FALSE(writableName(std::string(2032, 'x'), NameRole::SymbolicName));
}

// The second name follows one that passed and shares a long prefix with it:
// what differs, and a keyword reaching back into the shared part, is still
// searched.
TEST(MessageFileWriter, NamesSharingAPrefixWithTheLastOneAreStillChecked) {
    struct Follower {
        const char *first, *second;
        bool writable;
    };
    const Follower followers[] = {
        {"REACTOS_EVENTCREATE_FACILIT", "REACTOS_EVENTCREATE_FACILITX", true},
        {"REACTOS_EVENTCREATE_FACILIT", "REACTOS_EVENTCREATE_FACILITY", false},
        {"REACTOS_EVENTCREATE_SYMBOLICNAM", "REACTOS_EVENTCREATE_SYMBOLICNAME", false},
        {"REACTOS_EVENTCREATE_00000001", "REACTOS_EVENTCREATE_00000002", true},
        {"REACTOS_EVENTCREATE_00000001", "REACTOS_EVENTCREATE_0000000 2", false},
        {"REACTOS_EVENTCREATE_00000001", "REACTOS_EVENTCREATE_00000001_LANGUAGE", false},
    };
    for (const Follower& follower : followers) {
        MessageFileContent content;
        content.languages.push_back({"English", 1, ""});
        for (const char* name : {follower.first, follower.second}) {
            content.definitions.push_back(
                {1, "Success", "Application", name, {{"English", {"x"}}}});
        }
        std::ostringstream out;
        if (follower.writable) {
            EXPECT_NO_THROW(writeMessageFile(out, content)) << follower.second;
        } else {
            EXPECT_THROW(writeMessageFile(out, content), UnwritableText) << follower.second;
        }
    }
}

}  // namespace
