// Comparing the inserts of a message's languages.
#include "InsertAgreement.h"

#include <set>

#include "InsertCType.h"

namespace {

// One use of an insert number in one language.
struct LanguageUse {
    const TranslatedText* text;
    InsertUse use;
};

// The same kind of value and the same size on both architectures: the
// classifier gives the size on this build and the widest of the two; the C
// type adds the i386 size, which tells %ld (4 bytes there) from %lld on x86-64.
bool sameReading(const InsertFormatInfo& a, const InsertFormatInfo& b) {
    return insertKindWord(a.kind) == insertKindWord(b.kind) && a.valueBytes == b.valueBytes &&
           a.widestValueBytes == b.widestValueBytes &&
           insertCType(a).i386Bytes == insertCType(b).i386Bytes;
}

// "text", "an integer of 4 bytes", "an integer of 4 bytes on i386 and 8 on x86-64".
std::string reading(const InsertFormatInfo& info) {
    std::string kind = insertKindWord(info.kind);
    if (info.kind == InsertFormatInfo::TEXT || info.kind == InsertFormatInfo::NO_VALUE) return kind;
    std::string article = kind == "integer" ? "an " : "a ";
    if (info.kind == InsertFormatInfo::POINTER) return article + kind;
    InsertCType type = insertCType(info);
    std::string size = " of " + std::to_string(type.i386Bytes) + " bytes";
    if (type.i386Bytes != type.x8664Bytes) {
        size += " on i386 and " + std::to_string(type.x8664Bytes) + " on x86-64";
    }
    return article + kind + size;
}

std::string readingIn(const LanguageUse& use) {
    return reading(use.use.info) + " (" + writtenInsert(use.use) + ") in " + use.text->language;
}

// Every use of every insert number, in text order within each language.
std::map<int, std::vector<LanguageUse>> usesByNumber(const std::vector<TranslatedText>& texts,
                                                     std::vector<InsertProblem>& problems) {
    std::map<int, std::vector<LanguageUse>> uses;
    for (const TranslatedText& text : texts) {
        try {
            for (InsertUse& use : MessageModule::findInserts(text.text)) {
                uses[use.number].push_back({&text, std::move(use)});
            }
        } catch (MessageModuleException& e) {
            problems.push_back({InsertProblem::UNSCANNABLE, 0,
                                "the " + text.language + " text cannot be formatted: " + e.msg,
                                text.line});
        }
    }
    return uses;
}

void compareUses(int number, const std::vector<LanguageUse>& uses,
                 std::vector<InsertProblem>& problems) {
    const LanguageUse& first = uses.front();
    std::set<std::string> reported;  // one problem per language and format
    for (const LanguageUse& use : uses) {
        std::string key = use.text->language + "\n" + use.use.format;
        if (!reported.insert(key).second) continue;
        if (use.use.info.kind == InsertFormatInfo::REFUSED) {
            problems.push_back({InsertProblem::REFUSED, number,
                                "insert " + writtenInsert(use.use) + " in " + use.text->language +
                                    " has a format the formatter refuses: " + use.use.info.refusal,
                                use.text->line});
        } else if (first.use.info.kind != InsertFormatInfo::REFUSED &&
                   !sameReading(first.use.info, use.use.info)) {
            problems.push_back({InsertProblem::READ_DIFFERENTLY, number,
                                "insert %" + std::to_string(number) + " is read as " +
                                    readingIn(first) + " but as " + readingIn(use),
                                use.text->line});
        }
    }
}

void findMissing(int number, const std::vector<LanguageUse>& uses,
                 const std::vector<TranslatedText>& texts, std::vector<InsertProblem>& problems) {
    std::set<std::string> languagesUsing;
    for (const LanguageUse& use : uses) languagesUsing.insert(use.text->language);
    for (const TranslatedText& text : texts) {
        if (languagesUsing.count(text.language)) continue;
        problems.push_back({InsertProblem::MISSING, number,
                            "insert " + writtenInsert(uses.front().use) + " is used in " +
                                uses.front().text->language + " but not in " + text.language,
                            text.line});
    }
}

}  // namespace

std::string writtenInsert(const InsertUse& use) {
    std::string text = "%" + std::to_string(use.number);
    if (use.format != "%s") text += "!" + use.format.substr(1) + "!";
    return text;
}

InsertComparison compareInserts(const std::vector<TranslatedText>& texts) {
    InsertComparison comparison;
    std::map<int, std::vector<LanguageUse>> uses = usesByNumber(texts, comparison.problems);
    bool allScanned = comparison.problems.empty();
    for (auto& entry : uses) {
        compareUses(entry.first, entry.second, comparison.problems);
        if (allScanned) findMissing(entry.first, entry.second, texts, comparison.problems);
        comparison.inserts[entry.first] = entry.second.front().use;
    }
    return comparison;
}
