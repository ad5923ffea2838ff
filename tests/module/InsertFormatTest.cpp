// Insert formats: how each conversion and length modifier is classified and
// printed, through the argument array and the variable list, with snprintf
// as the oracle; literal text around the conversion; fields of any size.
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <type_traits>

#include "FormatTestSupport.h"
#include "GuardedText.h"

namespace {

typedef InsertFormatInfo Info;

// The length modifier handed to snprintf for each modifier written before a
// conversion of each class; "-" where the pairing is refused.
const char* const CLASSES[] = {"diouxXbB", "eEfFgGaA", "cCsS", "p"};
const char* const DECISIONS[][5] = {
    {"", "", "", "", ""},       {"hh", "hh", "-", "-", "-"},  {"h", "h", "-", "", "-"},
    {"l", "l", "l", "", "-"},   {"ll", "ll", "-", "-", "-"},  {"q", "ll", "-", "-", "-"},
    {"L", "ll", "L", "-", "-"}, {"j", "j", "-", "-", "-"},    {"z", "z", "-", "-", "-"},
    {"Z", "z", "-", "-", "-"},  {"t", "t", "-", "-", "-"},    {"I", "z", "-", "-", "-"},
    {"I32", "", "-", "-", "-"}, {"I64", "ll", "-", "-", "-"}, {"w", "-", "-", "", "-"}};

Info::Kind kindOf(char conversion) {
    if (std::strchr("di", conversion)) return Info::SIGNED_INTEGER;
    if (std::strchr("ouxXbB", conversion)) return Info::UNSIGNED_INTEGER;
    if (std::strchr("eEfFgGaA", conversion)) return Info::FLOATING;
    if (std::strchr("cC", conversion)) return Info::CHARACTER;
    return std::strchr("sS", conversion) ? Info::TEXT : Info::POINTER;
}

// An array element as a conversion reading T takes it: integers signed or
// unsigned as T is, a floating conversion the integer value.
template <typename T>
T elementAs(char* element) {
    if constexpr (std::is_pointer<T>::value) {
        return reinterpret_cast<T>(element);
    } else if constexpr (std::is_unsigned<T>::value) {
        return static_cast<T>(reinterpret_cast<uintptr_t>(element));
    } else {
        return static_cast<T>(reinterpret_cast<intptr_t>(element));
    }
}

template <typename Signed, typename Check>
void withInteger(bool isUnsigned, Check check) {
    typedef typename std::make_unsigned<Signed>::type Unsigned;
    if (isUnsigned) return check(static_cast<Unsigned>(-42));
    check(static_cast<Signed>(-42));
}

// Calls `check` with a value of the type a conversion of `kind` with the
// printed length modifier `modifier` reads.
template <typename Check>
void withValueOf(const std::string& modifier, Info::Kind kind, Check check) {
    bool isUnsigned = kind == Info::UNSIGNED_INTEGER;
    if (kind == Info::FLOATING) return modifier == "L" ? check(-42.5L) : check(-42.5);
    if (kind == Info::TEXT) return check(static_cast<const char*>("abc"));
    if (kind == Info::POINTER) return check(static_cast<void*>(&kind));
    if (modifier == "l") return withInteger<long>(isUnsigned, check);
    if (modifier == "ll") return withInteger<long long>(isUnsigned, check);
    if (modifier == "j") return withInteger<intmax_t>(isUnsigned, check);
    if (modifier == "z") return withInteger<std::make_signed<size_t>::type>(isUnsigned, check);
    if (modifier == "t") return withInteger<ptrdiff_t>(isUnsigned, check);
    withInteger<int>(isUnsigned, check);  // none, hh, h, and characters
}

template <typename T>
std::string snprintfOf(const std::string& format, T value, std::size_t limit) {
    char printed[2048];
    snprintf(printed, sizeof printed, format.c_str(), value);
    return std::string(printed).substr(0, limit);
}

// Insert 1 from an array element and insert 2 of a list (after an int) print
// as snprintf prints `printed` with the value each path reads.
template <typename T>
void expectBothPaths(const std::string& body, const std::string& printed, char* element,
                     T listValue) {
    EXPECT_EQ(formatArray(("%1!" + body + "!").c_str(), {element}).text,
              snprintfOf(printed, elementAs<T>(element), 999))
        << body;
    EXPECT_EQ(formatList(("%2!" + body + "!").c_str(), 0, 0, listValue).text,
              snprintfOf(printed, listValue, 1000))
        << body;
}

// Every length modifier on every conversion character: classified as the
// table above says, and printed through both paths as snprintf prints the
// mapped format, also with flags, a width and literal text.
TEST(InsertFormat, EveryConversionAndModifierIsDecidedAndPrinted) {
    char text[] = "abc";
    for (const auto& row : DECISIONS) {
        for (int column = 0; column < 4; ++column) {
            for (const char* c = CLASSES[column]; *c != 0; ++c) {
                std::string written = std::string("%") + row[0] + *c, modifier = row[column + 1];
                Info info = MessageModule::describeInsertFormat(written);
                if (modifier == "-") {
                    EXPECT_EQ(info.refusal, "the length modifier does not fit the conversion")
                        << written;
                    continue;
                }
                std::string printed = "%" + modifier + (*c == 'C' ? 'c' : *c == 'S' ? 's' : *c);
                Info::Kind kind = kindOf(*c);
                EXPECT_EQ(info.kind, kind) << written;
                EXPECT_EQ(info.printfFormat, printed) << written;
                char* element = kind == Info::TEXT || kind == Info::POINTER ? text : asElement(-42);
                withValueOf(modifier, kind, [&](auto value) {
                    EXPECT_EQ(info.valueBytes, int(sizeof value)) << written;
                    expectBothPaths(written.substr(1), printed, element, value);
                    expectBothPaths("-'12" + written.substr(1) + "|",
                                    "%-'12" + printed.substr(1) + "|", element, value);
                });
            }
        }
    }
}

TEST(InsertFormat, FormatsThatReadOrWriteElsewhereAreRefused) {
    const std::pair<const char*, const char*> cases[] = {
        {"", "the format is empty"},
        {"*d", "a '*' width or precision would read an argument of its own"},
        {"5.*s", "a '*' width or precision would read an argument of its own"},
        {"1$d", "an argument position ('$') is not supported"},
        {"2147483648d", "a width or precision above 2147483647 cannot be formatted"},
        {".99999999999s", "a width or precision above 2147483647 cannot be formatted"},
        {"I5d", "the I flag (the locale's digits) is not supported"},
        {"5", "it ends before its conversion character"},
        {"s%", "it ends before its conversion character"},
        {"k", "it is not a printf conversion"},
        {"lp", "the length modifier does not fit the conversion"},
        {"d and %x", "it holds more than one conversion"},
        {"hn", "the n conversion writes to memory"},
        {"m", "the m conversion prints the C library's error text, not an argument"},
        {"5%", "a percent sign takes no flags, width, precision or length modifier"},
    };
    for (const auto& c : cases) {
        std::string format = std::string("%") + c.first;
        EXPECT_EQ(MessageModule::describeInsertFormat(format).refusal, c.second) << format;
        expectFailure(formatArray(("%1!" + std::string(c.first) + "!").c_str(), {asElement(1)}),
                      "Insert %1 has an unsupported format \"" + format + "\": " + c.second);
    }
}

// Literal text, "%%" and line feeds around the conversion are ordinary printf;
// the insert is cut as a whole.
TEST(InsertFormat, LiteralTextAroundTheConversionIsPrinted) {
    const std::string tail(300, 't'), four = tail + tail + tail + tail;
    const std::pair<std::string, std::string> cases[] = {
        {"%1!s%%!", "v%"},
        {"<%1!s and %%s!>", "<v and %s>"},
        {"[%1!-6s|!]", "[v     |]"},
        {"%1!ls\nnext!", "v\nnext"},
        {"%1!s" + tail + "!", "v" + tail},
        {"%1!%" + tail + "%s" + four + "!", "%" + tail + "v" + four}};
    for (const auto& c : cases) {
        EXPECT_EQ(formatArray(c.first.c_str(), {const_cast<char*>("v")}).text,
                  c.second.substr(0, 999))
            << c.first;
        EXPECT_EQ(formatList(c.first.c_str(), 0, "v").text, c.second.substr(0, 1000)) << c.first;
    }
}

// A format without a conversion reads no argument: it needs no argument source.
TEST(InsertFormat, AFormatWithoutConversionReadsNoArgument) {
    for (long flags : {0L, long(_FORMAT_MESSAGE_ARGUMENT_ARRAY)}) {
        Outcome outcome = formatList("[%1!%!|%2!%d %%!]", flags, static_cast<char**>(nullptr));
        EXPECT_EQ(outcome.text + outcome.printed, "[%|%d %]");
    }
    EXPECT_EQ(MessageModule::describeInsertFormat("%%d").kind, Info::NO_VALUE);
}

// Widths and precisions beyond what is handed to the C library as written
// print as snprintf prints them, cut to the insert's limit.
TEST(InsertFormat, FieldsOfAnySizePrintAsSnprintf) {
    const char* formats[] = {"%20000d",       "%-20000d",       "%020000d",       "%+.20000d",
                             "%#.20000x",     "%20500.20000i",  "%-30000.20000o", "%20000c]",
                             "%%%20000u%%",   "%.20000f",       "%020000.3f",     "%#.20000g",
                             "%.20000g",      "%-20000.20000e", "%.20000a",       "%20000p",
                             "%.20000p",      "%20000s",        "%-20000s",       "%.20000s",
                             "%25500.25000s", "%020000s"};
    std::string longText(30000, 'q');
    longText[5] = 'r';
    char* texts[] = {&longText[0], nullptr};
    for (const char* format : formats) {
        std::string body = std::string(format).substr(1);
        Info::Kind kind = MessageModule::describeInsertFormat(format).kind;
        if (kind == Info::TEXT || kind == Info::POINTER) {
            for (char* text : texts) expectBothPaths(body, format, text, text);
        } else if (kind == Info::FLOATING) {
            expectBothPaths(body, format, asElement(-5), -5.0 / 3);
        } else {
            for (int value : {0, 7, -123}) expectBothPaths(body, format, asElement(value), value);
        }
    }
    EXPECT_EQ(formatList("%1!.17000Le!", 0, 1e-4940L).text,
              snprintfOf("%.17000Le", 1e-4940L, 1000));
}

// Up to INT_MAX a field is printed even where the whole would pass INT_MAX
// characters, which snprintf refuses; above INT_MAX the format is refused.
TEST(InsertFormat, FieldsUpToIntMaxArePrinted) {
    const struct {
        const char* text;
        std::string expected;
    } cases[] = {{"%1!2147483647d!", std::string(999, ' ')},
                 {"%1!2147483647dx!", std::string(999, ' ')},
                 {"%1!-2147483647d!", "5" + std::string(998, ' ')},
                 {"%1!.2147483647d!", std::string(999, '0')},
                 {"%2!-2147483647.2147483647s!", "ab" + std::string(997, ' ')}};
    for (const auto& c : cases) {
        EXPECT_EQ(formatArray(c.text, {asElement(5), const_cast<char*>("ab")}).text, c.expected)
            << c.text;
    }
}

// A wide spelling read a narrow argument as a wide text and ran past it, also
// when snprintf prints it (with a width or precision).
TEST(InsertFormat, WideSpellingsReadNothingBeyondANarrowArgument) {
    GuardedText first("abcdefg"), second("xy");
    const std::pair<const char*, const char*> cases[] = {
        {"[%1!ls!|%2!S!]", "[abcdefg|xy]"}, {"[%1!-9ls!|%2!.1S!|%2!3ws!]", "[abcdefg  |x| xy]"}};
    for (const auto& c : cases) {
        EXPECT_EQ(formatArray(c.first, {first.get(), second.get()}).text, c.second);
        EXPECT_EQ(formatList(c.first, 0, first.get(), second.get()).text, c.second);
    }
}

// findInserts reads the inserts as the formatter does; its failures are in
// the scan tests.
TEST(InsertFormat, FindInsertsReadsTheTextAsTheFormatterDoes) {
    std::string listed;
    for (const InsertUse& use :
         MessageModule::findInserts("%1 %%2 %3!-5ls! %0%n%4!n!%5!%!\n%199x%10!!")) {
        listed += std::to_string(use.number) + use.format + "/" + std::to_string(use.info.kind) +
                  use.info.printfFormat + " ";
    }
    EXPECT_EQ(listed, "1%s/5%s 3%-5ls/5%-5s 4%n/7 5%%/0%% 199%s/5%s 10%/7 ");
}

}  // namespace
