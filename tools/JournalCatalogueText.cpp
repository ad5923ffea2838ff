// The formatter itself resolves the escapes: the message is formatted with a
// marker argument for each insert, and each insert the formatter reports
// (tqmsg_format_array_inserts) is then replaced, in the order of the text, by
// its field reference. The markers are chosen so that their rendering cannot
// be mistaken for the text around them: a text insert gets control bytes
// that message texts do not hold, a character insert one such byte, a number
// insert a ten-digit value.
#include "JournalCatalogueText.h"

#include <cstdint>
#include <string>
#include <vector>

#include "Catalogue.h"
#include "MessageModule.h"
#include "tqmsg.h"

namespace {

constexpr char RECORD_SEPARATOR = '\x1e';
constexpr std::uintptr_t NUMBER_MARKER = 2071788215;  // ten digits, fits an int

struct RenderedInsert {
    int number;
    std::string text;
};

void recordInsert(void* rendered, int number, const char* text, std::size_t length) {
    static_cast<std::vector<RenderedInsert>*>(rendered)->push_back({number, {text, length}});
}

std::string storedText(long messageId, long languageId) {
    FormattableMessage* message = nullptr;
    MessageModule::mlmap.get(languageId, messageId, message);
    return message != nullptr ? message->text : std::string();
}

// The marker argument of each insert number (index 0 unused), and the text
// markers they point to (kept alive beside them).
struct Markers {
    std::vector<std::string> texts;
    std::vector<std::uintptr_t> arguments;
};

Markers markersFor(const std::vector<InsertUse>& uses) {
    Markers markers;
    markers.texts.resize(200);
    markers.arguments.assign(200, NUMBER_MARKER);
    for (const InsertUse& use : uses) {
        std::uintptr_t& argument = markers.arguments[use.number];
        if (use.info.kind == InsertFormatInfo::TEXT) {
            std::string& text = markers.texts[use.number];
            text = RECORD_SEPARATOR + std::to_string(use.number) + RECORD_SEPARATOR;
            argument = reinterpret_cast<std::uintptr_t>(text.c_str());
        } else if (use.info.kind == InsertFormatInfo::CHARACTER && argument == NUMBER_MARKER) {
            argument = static_cast<unsigned char>(RECORD_SEPARATOR);
        }
    }
    return markers;
}

}  // namespace

std::string journalCatalogueText(long messageId, long languageId) {
    std::vector<InsertUse> uses;
    try {
        uses = MessageModule::findInserts(storedText(messageId, languageId));
    } catch (const MessageModuleException& failure) {
        throw CommandFailure{failure.msg};
    }
    Markers markers = markersFor(uses);
    std::vector<RenderedInsert> rendered;
    long length =
        tqmsg_format_array_inserts(nullptr, 0, messageId, languageId, markers.arguments.data() + 1,
                                   199, recordInsert, &rendered);
    if (length < 0) throw CommandFailure{tqmsg_last_error()};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    rendered.clear();
    tqmsg_format_array_inserts(&text[0], text.size(), messageId, languageId,
                               markers.arguments.data() + 1, 199, recordInsert, &rendered);
    text.resize(static_cast<std::size_t>(length));
    std::size_t position = 0;
    for (std::size_t i = 0; i < rendered.size() && i < uses.size(); ++i) {
        if (uses[i].info.kind == InsertFormatInfo::NO_VALUE || rendered[i].text.empty()) continue;
        std::size_t found = text.find(rendered[i].text, position);
        if (found == std::string::npos) continue;
        std::string field = "@TQMSG_INSERT_" + std::to_string(rendered[i].number) + "@";
        text.replace(found, rendered[i].text.size(), field);
        position = found + field.size();
    }
    return text;
}
