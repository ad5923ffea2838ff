// Converting the arguments of tqmsg format for the inserts that read them.
#include "InsertArguments.h"

#include <algorithm>
#include <cstdint>
#include <map>

#include "Catalogue.h"
#include "MessageModule.h"

namespace {

// How the inserts that read one argument read it; each field keeps the first
// format that asked for it, for the messages.
struct ArgumentNeed {
    std::string text;          // a text conversion
    std::string number;        // any number conversion
    std::string signedWide;    // a signed or floating conversion of more than 32 bits
    std::string unsignedWide;  // an unsigned conversion of more than 32 bits
    std::string floating;      // a floating conversion
};

// True when the conversion reads more than 32 bits on i386 or on x86-64, so
// that the bits above an argument's 32 show in what it prints.
bool readsMoreThan32Bits(const InsertFormatInfo& info) { return info.widestValueBytes > 4; }

std::string insertName(const InsertUse& use) { return "%" + std::to_string(use.number); }

// Records what `use` needs of its argument; throws for the formats the tool
// cannot supply a value for.
void noteUse(const InsertUse& use, const std::string& message, ArgumentNeed& need) {
    const InsertFormatInfo& info = use.info;
    std::string where =
        "insert " + insertName(use) + " of " + message + " (\"" + use.format + "\")";
    switch (info.kind) {
        case InsertFormatInfo::REFUSED:
            throw CommandFailure{where + " cannot be formatted: " + info.refusal};
        case InsertFormatInfo::POINTER:
            throw CommandFailure{where + " prints a pointer, which the tool cannot supply"};
        case InsertFormatInfo::NO_VALUE:
            return;
        case InsertFormatInfo::TEXT:
            if (need.text.empty()) need.text = use.format;
            return;
        default:
            break;
    }
    if (need.number.empty()) need.number = use.format;
    if (info.kind == InsertFormatInfo::FLOATING && need.floating.empty()) {
        need.floating = use.format;
    }
    if (!readsMoreThan32Bits(info)) return;
    std::string& wide =
        info.kind == InsertFormatInfo::UNSIGNED_INTEGER ? need.unsignedWide : need.signedWide;
    if (wide.empty()) wide = use.format;
}

// Refuses an argument that its inserts would need as two different values.
void checkOneType(int number, const ArgumentNeed& need, const std::string& message) {
    std::string argument = "argument " + std::to_string(number) + " of " + message;
    if (!need.text.empty() && !need.number.empty()) {
        throw CommandFailure{argument + " would be needed as a text (\"" + need.text +
                             "\") and as a number (\"" + need.number +
                             "\"); the tool can pass only one of them"};
    }
}

// The array element of a number argument.
char* numberElement(int number, const std::string& argument, const ArgumentNeed& need) {
    long value = 0;
    NumberText parsed = parseNumber(argument, value);
    std::string which = "argument " + std::to_string(number) + " (\"" + argument + "\")";
    if (parsed == NumberText::OUT_OF_RANGE) throw UsageError{which + " is " + OUTSIDE_32_BITS};
    if (parsed == NumberText::NOT_A_NUMBER) {
        std::string why = need.floating.empty() ? " for \"" + need.number + "\""
                                                : ": the formatter gives \"" + need.floating +
                                                      "\" the integer value of its argument";
        throw UsageError{which + " must be an integer" + why};
    }
    // The bits above the 32 are the sign for a signed reader of more than 32
    // bits and zero otherwise; narrower readers never see them. A value with
    // its top bit set reads differently as signed and as unsigned there, so
    // one element cannot serve readers of both kinds.
    bool topBitSet = (static_cast<uint32_t>(value) & 0x80000000u) != 0;
    if (topBitSet && !need.signedWide.empty() && !need.unsignedWide.empty()) {
        throw CommandFailure{which + " would be needed as a signed (\"" + need.signedWide +
                             "\") and as an unsigned (\"" + need.unsignedWide +
                             "\") number of more than 32 bits; the tool can pass only one of them"};
    }
    intptr_t raw = need.signedWide.empty() ? static_cast<intptr_t>(static_cast<uint32_t>(value))
                                           : static_cast<intptr_t>(static_cast<int32_t>(value));
    return reinterpret_cast<char*>(raw);
}

}  // namespace

std::vector<char*> insertArguments(const std::string& text, std::vector<std::string>& args,
                                   const std::string& message) {
    std::vector<InsertUse> uses;
    try {
        uses = MessageModule::findInserts(text);
    } catch (MessageModuleException& e) {
        throw CommandFailure{e.msg};
    }
    std::map<int, ArgumentNeed> needs;
    for (const InsertUse& use : uses) noteUse(use, message, needs[use.number]);

    int highest = 0;  // the highest insert that reads a value
    for (auto& entry : needs) {
        checkOneType(entry.first, entry.second, message);
        bool readsValue = !entry.second.text.empty() || !entry.second.number.empty();
        if (readsValue) highest = entry.first;
    }
    if (highest > static_cast<int>(args.size())) {
        throw UsageError{message + " uses insert %" + std::to_string(highest) + " but " +
                         std::to_string(args.size()) + " argument(s) were given"};
    }
    static char notRead[] = "";
    std::vector<char*> array(std::max<size_t>(199, args.size()), notRead);
    for (auto& entry : needs) {
        const ArgumentNeed& need = entry.second;
        std::string& argument = args[entry.first - 1];
        if (!need.text.empty()) {
            array[entry.first - 1] = &argument[0];
        } else if (!need.number.empty()) {
            array[entry.first - 1] = numberElement(entry.first, argument, need);
        }
    }
    return array;
}
