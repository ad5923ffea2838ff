// Building template and translation catalogues.
#include "PoExport.h"

#include <cstdio>
#include <map>

#include "Charset.h"
#include "InsertCheck.h"
#include "LanguageChoice.h"
#include "LanguageCodes.h"
#include "PoFailure.h"

namespace {

// The file's texts in UTF-8, failing with the place of a text that is not
// valid in the file's charset.
class ToUtf8 {
public:
    ToUtf8(const MessageFileTexts& file, const std::string& charset)
        : file_(file),
          charset_(charset.empty() ? "UTF-8" : charset),
          converter_(charset_, "UTF-8") {}

    std::string operator()(const FileText& text) {
        std::string converted;
        std::size_t failedAt = 0;
        if (!converter_.convert(text.record->text, converted, failedAt)) {
            throw PoFailure(file_.path() + ":" + std::to_string(text.place->firstTextLine) +
                            ": the text of " + text.record->symbolicName + " is not valid " +
                            charset_ + " (byte " + std::to_string(failedAt + 1) +
                            "): give the file's encoding with --charset");
        }
        return converted;
    }

private:
    const MessageFileTexts& file_;
    std::string charset_;
    TextConverter converter_;
};

// "0x01000004": identifiers are shown with all eight digits.
std::string messageIdText(long messageId) {
    char text[16];  // "0x" + 8 digits
    std::snprintf(text, sizeof(text), "0x%08lX",
                  static_cast<unsigned long>(messageId) & 0xFFFFFFFFUL);
    return text;
}

// The extracted comments of an entry: the message's identity and the inserts
// its translation must keep.
std::string notesFor(const MessageFileTexts& file, const FileText& text) {
    const FormattableMessage& record = *text.record;
    std::string notes = "MessageId " + messageIdText(text.messageId) + ", severity " +
                        file.severityName(record.severityId) + ", facility " +
                        file.facilityName(record.facilityId) + "\n";
    try {
        std::string inserts = insertList(insertsOf(record.text));
        if (!inserts.empty()) notes += "Inserts to keep: " + inserts + "\n";
    } catch (MessageModuleException& e) {
        notes += "The source text does not format: " + e.msg + "\n";
    }
    return notes;
}

std::string projectName(const std::string& path) {
    std::size_t slash = path.find_last_of('/');
    std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    std::size_t dot = name.find_last_of('.');
    return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

// A header msgfmt accepts, with nothing that changes from run to run.
std::string headerFor(const MessageFileTexts& file, const std::string& languageCode) {
    const std::pair<const char*, std::string> fields[] = {
        {"Project-Id-Version", projectName(file.path())},
        {"PO-Revision-Date", "YEAR-MO-DA HO:MI+ZONE"},
        {"Last-Translator", "FULL NAME <EMAIL@ADDRESS>"},
        {"Language-Team", "LANGUAGE <LL@li.org>"},
        {"Language", languageCode},
        {"MIME-Version", "1.0"},
        {"Content-Type", "text/plain; charset=UTF-8"},
        {"Content-Transfer-Encoding", "8bit"}};
    std::string header;
    for (const auto& field : fields) header = withHeaderField(header, field.first, field.second);
    return header;
}

}  // namespace

PoCatalogue exportCatalogue(const MessageFileTexts& file, const ExportRequest& request) {
    const long source = sourceLanguageId(file, request.sourceLanguage);
    const bool isTemplate = request.language.empty();
    LanguageChoice target;
    if (!isTemplate) target = chooseLanguage(file, request.language, "");

    std::map<std::string, const FileText*> translated;
    std::vector<FileText> targetTexts;
    if (!isTemplate && target.declared) targetTexts = file.texts(target.id);
    for (const FileText& text : targetTexts) translated[text.record->symbolicName] = &text;

    ToUtf8 toUtf8(file, request.charset);
    PoCatalogue catalogue;
    catalogue.header = headerFor(file, isTemplate ? "" : poLanguageCode(target.id));
    for (const FileText& text : file.texts(source)) {
        if (text.record->text.empty()) continue;  // nothing to translate
        PoEntry entry;
        entry.context = text.record->symbolicName;
        entry.source = toUtf8(text);
        entry.notes = notesFor(file, text);
        entry.referenceFile = file.path();
        entry.referenceLine = text.place->firstTextLine;
        auto found = translated.find(entry.context);
        if (found != translated.end()) entry.translation = toUtf8(*found->second);
        catalogue.entries.push_back(entry);
    }
    return catalogue;
}
