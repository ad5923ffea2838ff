// Fuzz target: arbitrary bytes loaded as a message file through MessageModule.
//
// The bytes go to a temporary file (the loader reads files only); the parity of
// the input's length chooses the trimming mode. The library's two exception
// types are the documented failures and are caught; anything else escaping,
// and any sanitizer report, is a finding. Successful loads also render the
// new table, which walks every map the parser filled. Each input starts with an
// empty message store (FreshStore.h), so identifiers shared with earlier inputs
// neither fail the load nor pile up in memory.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "FreshStore.h"
#include "MessageModule.h"

namespace {

const std::string& scratchFile() {
    static const std::string path = [] {
        const char* dir = std::getenv("TMPDIR");
        return std::string(dir && *dir ? dir : "/tmp") + "/tqmsg-fuzz-load-" +
               std::to_string(getpid()) + ".mc";
    }();
    return path;
}

bool writeScratch(const uint8_t* data, size_t size) {
    std::FILE* out = std::fopen(scratchFile().c_str(), "wb");
    if (!out) {
        return false;
    }
    bool written = std::fwrite(data, 1, size, out) == size;
    return std::fclose(out) == 0 && written;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (!writeScratch(data, size)) {
        return 0;
    }
    std::string fileName = scratchFile();
    FreshStoreAfterInput freshStore;
    try {
        MessageModule module(fileName, size % 2 == 1);
        if (MessageTable* table = MessageModule::mtmap.get(fileName)) {
            (void)table->toString();
        }
    } catch (MessageTableParserException& e) {
        (void)e.msg.size();
    } catch (MessageModuleException& e) {
        (void)e.msg.size();
    }
    std::remove(fileName.c_str());
    return 0;
}
