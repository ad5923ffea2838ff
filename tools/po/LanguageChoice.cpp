// Settling the name and identifier of a language.
#include "LanguageChoice.h"

#include <cstdint>
#include <cstdio>

#include "LanguageCodes.h"
#include "MessageFileWriter.h"
#include "PoFailure.h"

std::string hexId(long id) {
    char text[16];  // "0x" + 8 digits
    std::snprintf(text, sizeof(text), "0x%lX",
                  static_cast<unsigned long>(static_cast<uint32_t>(id)));
    return text;
}

namespace {

// The identifier of a new language, from the option or the PO header.
long newLanguageId(const MessageFileTexts& file, const LanguageChoice& choice,
                   const std::string& idText, const std::string& poLanguage) {
    long id = 0;
    std::string number = idText;
    if (!idText.empty()) {
        if (!file.table().getNumber(number, id, false)) {
            throw PoFailure("not a language identifier: " + idText +
                            " (decimal or 0x hexadecimal)");
        }
        return toInt32(id);
    }
    if (!poLanguage.empty() && (id = windowsLanguageId(poLanguage)) != -1) return id;
    std::string why = poLanguage.empty()
                          ? ""
                          : " (the PO file's language " + poLanguage + " is not a common one)";
    throw PoFailure("language " + choice.name + " is new to " + file.path() +
                    ": give its identifier, as in --language " + choice.name + "=0x40C" + why);
}

}  // namespace

LanguageChoice chooseLanguage(const MessageFileTexts& file, const std::string& option,
                              const std::string& poLanguage) {
    LanguageChoice choice;
    std::size_t equals = option.find('=');
    choice.name = option.substr(0, equals);
    std::string idText = equals == std::string::npos ? "" : option.substr(equals + 1);
    if (!writableName(choice.name, NameRole::Language)) {
        throw PoFailure("not a language name a message file can hold: \"" + choice.name + "\"");
    }
    choice.declared = file.languageId(choice.name, choice.id);
    if (choice.declared) {
        long asked = 0;
        if (!idText.empty() &&
            (!file.table().getNumber(idText, asked, false) || toInt32(asked) != choice.id)) {
            throw PoFailure(file.path() + " declares " + choice.name + " as " + hexId(choice.id) +
                            ", not " + idText);
        }
        return choice;
    }
    choice.id = newLanguageId(file, choice, idText, poLanguage);
    std::string other = file.languageName(choice.id);
    if (!other.empty()) {
        throw PoFailure(file.path() + " declares " + hexId(choice.id) + " as " + other +
                        ": use --language " + other);
    }
    return choice;
}

void checkPoLanguage(const LanguageChoice& choice, const std::string& poLanguage,
                     const std::string& poPath) {
    // The low ten bits of a language identifier name the language, the
    // bits above them its region.
    const long primaryLanguage = 0x3FF;
    long poId = poLanguage.empty() ? -1 : windowsLanguageId(poLanguage);
    if (poId == -1 || (poId & primaryLanguage) == (choice.id & primaryLanguage)) return;
    throw PoFailure(poPath + " is in language " + poLanguage + " (" + hexId(poId) + "), not " +
                    choice.name + " (" + hexId(choice.id) +
                    "): check --language, or give --force-language to import it as " + choice.name);
}

long sourceLanguageId(const MessageFileTexts& file, const std::string& name) {
    long id = 0;
    if (!name.empty()) {
        if (!file.languageId(name, id)) {
            throw PoFailure(file.path() + " declares no language " + name);
        }
        return id;
    }
    std::vector<long> declared = file.declaredLanguages();
    if (declared.empty()) throw PoFailure(file.path() + " declares no language");
    return declared.front();
}
