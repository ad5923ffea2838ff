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

// The C type a conversion reads (its unsigned twin on o u x X b B).
enum class Reads { Int, Long, LongLong, IntMax, Size, PtrDiff, Double, LongDouble, Text, Pointer };

int bytesOf(Reads reads) {
    const int sizes[] = {sizeof(int),    sizeof(long),      sizeof(long long), sizeof(intmax_t),
                         sizeof(size_t), sizeof(ptrdiff_t), sizeof(double),    sizeof(long double),
                         sizeof(char*),  sizeof(void*)};
    return sizes[static_cast<int>(reads)];
}

// What each length modifier becomes on each class of conversion: the modifier
// handed to snprintf (null: refused) and the type read.
struct ModifierRow {
    const char* written;
    const char* integer;  // on d i o u x X b B
    Reads integerReads;
    const char* floating;  // on e E f F g G a A
    Reads floatingReads;
    bool narrow;   // accepted on c C s S, which print without a modifier
    bool pointer;  // accepted on p
};

const ModifierRow MODIFIERS[] = {
    {"", "", Reads::Int, "", Reads::Double, true, true},
    {"hh", "hh", Reads::Int, nullptr, Reads::Double, false, false},
    {"h", "h", Reads::Int, nullptr, Reads::Double, true, false},
    {"l", "l", Reads::Long, "l", Reads::Double, true, false},
    {"ll", "ll", Reads::LongLong, nullptr, Reads::Double, false, false},
    {"q", "ll", Reads::LongLong, nullptr, Reads::Double, false, false},
    {"L", "ll", Reads::LongLong, "L", Reads::LongDouble, false, false},
    {"j", "j", Reads::IntMax, nullptr, Reads::Double, false, false},
    {"z", "z", Reads::Size, nullptr, Reads::Double, false, false},
    {"Z", "z", Reads::Size, nullptr, Reads::Double, false, false},
    {"t", "t", Reads::PtrDiff, nullptr, Reads::Double, false, false},
    {"I", "z", Reads::Size, nullptr, Reads::Double, false, false},
    {"I32", "", Reads::Int, nullptr, Reads::Double, false, false},
    {"I64", "ll", Reads::LongLong, nullptr, Reads::Double, false, false},
    {"w", nullptr, Reads::Int, nullptr, Reads::Double, true, false},
};

struct ConversionColumn {
    char written, printed;
    Info::Kind kind;
};

const ConversionColumn CONVERSIONS[] = {{'d', 'd', Info::SIGNED_INTEGER},
                                        {'i', 'i', Info::SIGNED_INTEGER},
                                        {'o', 'o', Info::UNSIGNED_INTEGER},
                                        {'u', 'u', Info::UNSIGNED_INTEGER},
                                        {'x', 'x', Info::UNSIGNED_INTEGER},
                                        {'X', 'X', Info::UNSIGNED_INTEGER},
                                        {'b', 'b', Info::UNSIGNED_INTEGER},
                                        {'B', 'B', Info::UNSIGNED_INTEGER},
                                        {'e', 'e', Info::FLOATING},
                                        {'E', 'E', Info::FLOATING},
                                        {'f', 'f', Info::FLOATING},
                                        {'F', 'F', Info::FLOATING},
                                        {'g', 'g', Info::FLOATING},
                                        {'G', 'G', Info::FLOATING},
                                        {'a', 'a', Info::FLOATING},
                                        {'A', 'A', Info::FLOATING},
                                        {'c', 'c', Info::CHARACTER},
                                        {'C', 'c', Info::CHARACTER},
                                        {'s', 's', Info::TEXT},
                                        {'S', 's', Info::TEXT},
                                        {'p', 'p', Info::POINTER}};

// The modifier printed for `row` on `column` (null: refused) and the type read.
const char* expectedModifier(const ModifierRow& row, const ConversionColumn& column, Reads& reads) {
    switch (column.kind) {
        case Info::SIGNED_INTEGER:
        case Info::UNSIGNED_INTEGER:
            reads = row.integerReads;
            return row.integer;
        case Info::FLOATING:
            reads = row.floatingReads;
            return row.floating;
        case Info::CHARACTER:
            reads = Reads::Int;
            return row.narrow ? "" : nullptr;
        case Info::TEXT:
            reads = Reads::Text;
            return row.narrow ? "" : nullptr;
        default:
            reads = Reads::Pointer;
            return row.pointer ? "" : nullptr;
    }
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
                     T fromElement, T listValue) {
    EXPECT_EQ(formatArray(("%1!" + body + "!").c_str(), {element}).text,
              snprintfOf(printed, fromElement, 999))
        << body;
    EXPECT_EQ(formatList(("%2!" + body + "!").c_str(), 0, 0, listValue).text,
              snprintfOf(printed, listValue, 1000))
        << body;
}

template <typename Signed>
void expectIntegers(bool isUnsigned, const std::string& body, const std::string& printed) {
    typedef typename std::make_unsigned<Signed>::type Unsigned;
    char* element = asElement(-42);
    if (isUnsigned) {
        Unsigned fromElement = static_cast<Unsigned>(reinterpret_cast<uintptr_t>(element));
        expectBothPaths<Unsigned>(body, printed, element, fromElement, static_cast<Unsigned>(-42));
    } else {
        expectBothPaths<Signed>(body, printed, element, -42, -42);
    }
}

void expectPrinting(Reads reads, bool isUnsigned, const std::string& body,
                    const std::string& printed) {
    char text[] = "abc";
    switch (reads) {
        case Reads::Int:
            return expectIntegers<int>(isUnsigned, body, printed);
        case Reads::Long:
            return expectIntegers<long>(isUnsigned, body, printed);
        case Reads::LongLong:
            return expectIntegers<long long>(isUnsigned, body, printed);
        case Reads::IntMax:
            return expectIntegers<intmax_t>(isUnsigned, body, printed);
        case Reads::Size:
            return expectIntegers<std::make_signed<size_t>::type>(isUnsigned, body, printed);
        case Reads::PtrDiff:
            return expectIntegers<ptrdiff_t>(isUnsigned, body, printed);
        case Reads::Double:  // an element gives its integer value
            return expectBothPaths<double>(body, printed, asElement(-42), -42.0, -42.5);
        case Reads::LongDouble:
            return expectBothPaths<long double>(body, printed, asElement(-42), -42.0L, -42.5L);
        case Reads::Text:
            return expectBothPaths<const char*>(body, printed, text, text, text);
        case Reads::Pointer:
            return expectBothPaths<void*>(body, printed, text, text, text);
    }
}

// Every length modifier on every conversion character: classified as the
// table above says, and printed through both paths as snprintf prints the
// mapped format, with flags, width and literal text kept.
TEST(InsertFormat, EveryConversionAndModifierIsDecidedAndPrinted) {
    for (const ModifierRow& row : MODIFIERS) {
        for (const ConversionColumn& column : CONVERSIONS) {
            std::string written = std::string("%") + row.written + column.written;
            Info info = MessageModule::describeInsertFormat(written);
            Reads reads;
            const char* modifier = expectedModifier(row, column, reads);
            if (modifier == nullptr) {
                EXPECT_EQ(info.kind, Info::REFUSED) << written;
                EXPECT_EQ(info.refusal, "the length modifier does not fit the conversion");
                continue;
            }
            std::string printed = std::string("%") + modifier + column.printed;
            EXPECT_EQ(info.kind, column.kind) << written;
            EXPECT_EQ(info.printfFormat, printed) << written;
            EXPECT_EQ(info.valueBytes, bytesOf(reads)) << written;
            bool isUnsigned = column.kind == Info::UNSIGNED_INTEGER;
            expectPrinting(reads, isUnsigned, written.substr(1), printed);
            expectPrinting(reads, isUnsigned, "-12" + written.substr(1) + "|",
                           "%-12" + printed.substr(1) + "|");
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

// Literal text, "%%" and line feeds around the conversion are ordinary printf.
TEST(InsertFormat, LiteralTextAroundTheConversionIsPrinted) {
    const std::string tail(300, 't');
    const struct {
        std::string text;
        const char* value;
        std::string printed;  // the format snprintf is handed
    } cases[] = {{"%1!s%%!", "a", "%s%%"},
                 {"<%1!s and %%s!>", "b", "%s and %%s"},
                 {"[%1!-6s|!]", "ab", "%-6s|"},
                 {"%1!ls\nnext!", "w", "%s\nnext"},
                 {"%1!s" + tail + "!", "v", "%s" + tail},
                 {"%1!%" + tail + "%s" + tail + tail + tail + "!", "v",
                  "%%" + tail + "%s" + tail + tail + tail}};
    for (const auto& c : cases) {
        const char* value = c.value;
        std::string around = c.text.substr(0, c.text.find('%'));
        EXPECT_EQ(formatArray(c.text.c_str(), {const_cast<char*>(value)}).text,
                  around + snprintfOf(c.printed, value, 999) + c.text.substr(c.text.rfind('!') + 1))
            << c.text;
        EXPECT_EQ(
            formatList(c.text.c_str(), 0, value).text,
            around + snprintfOf(c.printed, value, 1000) + c.text.substr(c.text.rfind('!') + 1))
            << c.text;
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
                             "%#.20000x",     "%30000.20000i",  "%-30000.20000o", "%20000c]",
                             "%%%20000u%%",   "%.20000f",       "%020000.3f",     "%#.20000g",
                             "%.20000g",      "%-20000.20000e", "%.20000a",       "%20000p",
                             "%.20000p",      "%20000s",        "%-20000s",       "%.20000s",
                             "%30000.25000s", "%020000s"};
    std::string longText(30000, 'q');
    longText[5] = 'r';
    for (const char* format : formats) {
        std::string body = std::string(format).substr(1);
        char conversion = body.back() == ']' ? 'c' : body.back() == '%' ? 'u' : body.back();
        if (std::strchr("diouxc", conversion) != nullptr) {
            for (long value : {0L, 7L, -123L}) {
                expectBothPaths<int>(body, format, asElement(value), int(value), int(value));
            }
        } else if (conversion == 's' || conversion == 'p') {
            char* text = const_cast<char*>(longText.c_str());
            expectBothPaths<char*>(body, format, text, text, text);
            expectBothPaths<char*>(body, format, nullptr, nullptr, nullptr);
        } else {
            expectBothPaths<double>(body, format, asElement(-5), -5.0, -5.0 / 3);
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

// The scan of findInserts is the formatter's: the same inserts, the same failures.
TEST(InsertFormat, FindInsertsReadsTheTextAsTheFormatterDoes) {
    std::string listed;
    for (const InsertUse& use :
         MessageModule::findInserts("%1 %%2 %3!-5ls! %0%n%4!n!%5!%!\n%199x%10!!")) {
        listed += std::to_string(use.number) + use.format + "/" + std::to_string(use.info.kind) +
                  use.info.printfFormat + " ";
    }
    EXPECT_EQ(listed, "1%s/5%s 3%-5ls/5%-5s 4%n/7 5%%/0%% 199%s/5%s 10%/7 ");
    for (const char* text : {"%1000", "%200", "50%", "ab %1!d"}) {
        std::string failure;
        try {
            MessageModule::findInserts(text);
        } catch (MessageModuleException& error) {
            failure = error.msg;
        }
        EXPECT_EQ(failure + "\n", formatArray(text, {asElement(1)}).printed) << text;
    }
}

}  // namespace
