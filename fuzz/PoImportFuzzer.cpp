// Fuzz target: arbitrary bytes imported as a PO file into a fixed message
// file with three languages.
//
// A PO file comes from translators, so its bytes are untrusted: the import
// either reports an error (PoFailure, from reading the PO file or from an
// entry it refuses) or produces a message file, and every file it produces
// must load. Each input starts with an empty message store (FreshStore.h):
// the fixed file is loaded anew for every input, as `tqmsg po import` loads
// it in a process of its own. A produced file that fails to load is a
// finding: the target prints the loader's text and the file, and aborts.
// Bits of the input's length choose the language imported: one the file has
// (German), one it declares without texts (French), or a new one (Spanish).
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "FreshStore.h"
#include "MessageFileTexts.h"
#include "MessageModule.h"
#include "PoFailure.h"
#include "PoFiles.h"
#include "PoImport.h"
#include "ScratchFiles.h"

namespace {

// Inserts of every kind, escapes, and a message in one language only, so
// that entries can add, replace and be refused.
const char MESSAGE_FILE[] =
    "LanguageNames=(English=0x409:MSG00409)\n"
    "LanguageNames=(German=0x407:MSG00407)\n"
    "LanguageNames=(French=0x40C:MSG0040C)\n"
    "FacilityNames=(Backup=0x100:FACILITY_BACKUP)\n"
    "\n"
    "MessageId=1\nSeverity=Error\nFacility=Backup\nSymbolicName=MSG_COPY_FAILED\n"
    "Language=English\nCopy of %1 to %2!s! failed after %3!u! tries (%4!ld! bytes, %5!c!).\n.\n"
    "Language=German\nKopie von %1 nach %2!s! nach %3!u! Versuchen gescheitert (%4!ld! Bytes, "
    "%5!c!).\n.\n"
    "\n"
    "MessageId=\nSymbolicName=MSG_PROGRESS\nLanguage=English\n%1!5.1f!%% done%n"
    "at %2!p!%0\n.\n"
    "\n"
    "MessageId=\nSymbolicName=MSG_ENGLISH_ONLY\nLanguage=English\nOnly in English: %1!lld!\n.\n";

const char* const LANGUAGES[] = {"German", "French", "Spanish=0x40A"};

const std::string& messagePath() {
    static const std::string path = scratchPath("po", ".mc");
    return path;
}

void removeMessageFile() { std::remove(messagePath().c_str()); }

// Writes the fixed message file once per process, removed when it exits.
bool messageFileReady() {
    if (!writeScratch(messagePath(), MESSAGE_FILE, sizeof(MESSAGE_FILE) - 1)) return false;
    std::atexit(removeMessageFile);
    return true;
}

// The message file with the PO file's translations, or "" when the import
// reported an error. Loads the fixed file into the store.
std::string import(const std::string& poPath, size_t size) {
    try {
        std::vector<std::string> warnings;
        PoCatalogue catalogue = readPoFile(poPath, warnings);
        MessageFileTexts file(messagePath());
        ImportRequest request{poPath, LANGUAGES[size % 3], "", ""};
        ImportReport report;
        return importCatalogue(file, MESSAGE_FILE, catalogue, request, report);
    } catch (const PoFailure&) {
        return "";
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool ready = messageFileReady();
    static const std::string poPath = scratchPath("po", ".po");
    static const std::string outputPath = scratchPath("po", "-out.mc");
    if (!ready || !writeScratch(poPath, reinterpret_cast<const char*>(data), size)) return 0;
    std::string imported;
    {
        FreshStoreAfterInput freshStore;
        imported = import(poPath, size);
    }
    std::remove(poPath.c_str());
    if (imported.empty() || !writeScratch(outputPath, imported.data(), imported.size())) return 0;
    FreshStoreAfterInput freshStore;
    std::string failure = loadFailure(outputPath);
    std::remove(outputPath.c_str());
    if (!failure.empty()) {
        std::fprintf(stderr, "the imported file does not load: %s\nimported file:\n%s\n",
                     failure.c_str(), imported.c_str());
        std::abort();
    }
    return 0;
}
