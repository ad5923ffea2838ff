// Taking the entries of a PO file into a message file.
#include "PoImport.h"

#include <cctype>
#include <cstdio>
#include <map>
#include <sstream>

#include "Charset.h"
#include "EntryLines.h"
#include "FileEdits.h"
#include "InsertCheck.h"
#include "LanguageChoice.h"
#include "MessageFileWriter.h"
#include "PoFailure.h"

namespace {

std::vector<std::string> splitLines(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
        lines.push_back(text.substr(start, end - start));
    }
    lines.push_back(text.substr(start));
    return lines;
}

std::string joinLines(const std::vector<std::string>& lines) {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) text += (i ? "\n" : "") + lines[i];
    return text;
}

// "Language", the continuation keyword as files usually spell it.
std::string languageKeyword() {
    std::string keyword = MessageTable::MESSAGE_LANGUAGE;
    keyword[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(keyword[0])));
    return keyword;
}

// The lines that declare `language`, as the project's writer writes a list.
std::vector<std::string> declaration(const LanguageChoice& language) {
    char symbol[16];  // "MSG" + 8 digits
    std::snprintf(symbol, sizeof(symbol), "MSG%05lX", language.id & 0xFFFFFFFFL);
    MessageFileContent content;
    content.languages.push_back({language.name, language.id, symbol});
    std::ostringstream out;
    writeMessageFile(out, content);
    std::vector<std::string> lines = splitLines(out.str());
    while (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
}

// One import: the state shared by the entries of the catalogue.
class Importer {
public:
    Importer(const MessageFileTexts& file, const std::string& content, const PoCatalogue& catalogue,
             const ImportRequest& request, ImportReport& report)
        : file_(file),
          request_(request),
          report_(report),
          edits_(content),
          target_(
              chooseLanguage(file, request.language, headerField(catalogue.header, "Language"))),
          fromPo_(poCharset(catalogue.header), fileCharset()),
          poLines_(entryLines(request.poPath)),
          messageEnds_(file.messageEnds()) {
        if (!request.forceLanguage) {
            checkPoLanguage(target_, headerField(catalogue.header, "Language"), request.poPath);
        }
        source_ = file.texts(sourceLanguageId(file, request.sourceLanguage));
        existing_ = file.texts(target_.id);
        for (const FileText& text : source_) sources_[text.record->symbolicName] = &text;
        for (const FileText& text : existing_) translated_[text.record->symbolicName] = &text;
    }

    void take(const PoEntry& entry) {
        const std::string where = placeOf(entry);
        if (skipped(entry, where)) return;
        auto source = sources_.find(entry.context);
        if (source == sources_.end()) {
            ++report_.unknown;
            return warn(where, entry.context + " is no longer in " + file_.path());
        }
        std::string sourceText, translation;
        if (!inFileCharset(where, entry, entry.source, sourceText) ||
            !inFileCharset(where, entry, entry.translation, translation)) {
            return;
        }
        if (sourceText != source->second->record->text) {
            ++report_.outdated;
            return warn(where, entry.context +
                                   ": the source text has changed since (merge the PO file "
                                   "with a new template): skipped");
        }
        if (keepsInserts(where, entry.context, sourceText, translation)) {
            place(where, *source->second, translation);
        }
    }

    std::string finish() {
        if (!errors_.empty()) throw PoFailure(joinLines(errors_));
        if (report_.added > 0 && !target_.declared) {
            edits_.insertAfter(file_.languageListEnd(), declaration(target_));
            report_.languageDeclared = true;
        }
        return edits_.result();
    }

private:
    static std::string poCharset(const std::string& header) {
        std::string charset = headerCharset(header);
        return charset.empty() || charset == "CHARSET" ? "UTF-8" : charset;
    }
    std::string fileCharset() const {
        return request_.charset.empty() ? "UTF-8" : request_.charset;
    }

    // An entry without a translation to take: counted, or warned about.
    bool skipped(const PoEntry& entry, const std::string& where) {
        if (entry.plural) {
            warn(where, "an entry with plural forms: skipped");
        } else if (!entry.hasContext) {
            warn(where, "an entry without a symbolic name: skipped");
        } else if (entry.fuzzy) {
            ++report_.fuzzy;
        } else if (entry.translation.empty()) {
            ++report_.untranslated;
        } else {
            return false;
        }
        return true;
    }

    std::string placeOf(const PoEntry& entry) const {
        auto line = poLines_.find(entry.context);
        return request_.poPath + (line == poLines_.end() ? "" : ":" + std::to_string(line->second));
    }
    void warn(const std::string& where, const std::string& text) {
        report_.warnings.push_back(where + ": warning: " + text);
    }
    void fail(const std::string& where, const std::string& text) {
        errors_.push_back(where + ": " + text);
    }

    bool inFileCharset(const std::string& where, const PoEntry& entry, const std::string& text,
                       std::string& converted) {
        std::size_t failedAt = 0;
        if (fromPo_.convert(text, converted, failedAt)) return true;
        fail(where, entry.context + ": byte " + std::to_string(failedAt + 1) +
                        " cannot be written in " + fileCharset() +
                        " (give the message file's encoding with --charset)");
        return false;
    }

    // A translation keeps the inserts of the source text; one that replaces a
    // text of the file may instead keep that text's inserts. Translations
    // written before this import often differ from their source (a French
    // text without the %2 the English one has): exported unchanged, they
    // must import unchanged. A new text has no such precedent.
    bool keepsInserts(const std::string& where, const std::string& name, const std::string& source,
                      const std::string& translation) {
        InsertSet kept;
        try {
            kept = insertsOf(source);
        } catch (MessageModuleException& e) {
            warn(where, name + ": the source text does not format (" + e.msg + "): skipped");
            return false;
        }
        try {
            InsertSet used = insertsOf(translation);
            std::string changes = insertChanges(kept, used);
            if (changes.empty() || keepsReplacedInserts(name, used)) return true;
            fail(where, name + ": the translation " + changes);
        } catch (MessageModuleException& e) {
            fail(where, name + ": the translation does not format: " + e.msg);
        }
        return false;
    }

    // True when `name` has a text in the target language whose inserts are `used`.
    bool keepsReplacedInserts(const std::string& name, const InsertSet& used) const {
        auto replaced = translated_.find(name);
        if (replaced == translated_.end()) return false;
        try {
            return insertChanges(insertsOf(replaced->second->record->text), used).empty();
        } catch (MessageModuleException&) {
            return false;  // a text that does not format sets no precedent
        }
    }

    // Replaces the text in the target language, or adds it after the message.
    void place(const std::string& where, const FileText& source, const std::string& translation) {
        std::vector<std::string> lines;
        try {
            lines = writeTextLines(splitLines(translation), false);
        } catch (UnwritableText& e) {
            return fail(where, source.record->symbolicName + ": " + e.what());
        }
        auto existing = translated_.find(source.record->symbolicName);
        if (existing == translated_.end()) {
            lines.insert(lines.begin(), languageKeyword() + "=" + target_.name);
            lines.push_back(MessageTable::MESSAGE_END_MARKER);
            edits_.insertAfter(messageEnds_.at(source.messageId), lines);
            ++report_.added;
        } else if (joinLines(lines) == existing->second->record->text) {
            ++report_.unchanged;  // the file already reads back as this translation
        } else {
            const MessageTable::TextPlace& at = *existing->second->place;
            edits_.replace(at.firstTextLine, at.lastTextLine, lines);
            ++report_.changed;
        }
    }

    const MessageFileTexts& file_;
    const ImportRequest& request_;
    ImportReport& report_;
    FileEdits edits_;
    LanguageChoice target_;
    TextConverter fromPo_;
    std::map<std::string, int> poLines_;
    std::map<long, int> messageEnds_;
    std::vector<FileText> source_, existing_;
    std::map<std::string, const FileText*> sources_, translated_;
    std::vector<std::string> errors_;
};

}  // namespace

std::string importCatalogue(const MessageFileTexts& file, const std::string& content,
                            const PoCatalogue& catalogue, const ImportRequest& request,
                            ImportReport& report) {
    Importer importer(file, content, catalogue, request, report);
    for (const PoEntry& entry : catalogue.entries) importer.take(entry);
    return importer.finish();
}
