// Fuzz target: arbitrary bytes converted as a Windows message file.
//
// The converter either reports an error (PortError, or UnwritableText from the
// writer) or produces a file, and every file it produces must load. Each load
// starts with an empty message store (FreshStore.h), as the file would in a
// program of its own. A file that fails to load is a finding: the target
// prints the loader's text and the converted file, and aborts. Bits of the
// input's length choose the options (final line break, facility Application
// 0xFFF, code page CP1252).
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include "FreshStore.h"
#include "MessageModule.h"
#include "PortConverter.h"
#include "ScratchFiles.h"

namespace {

const std::string& scratchFile() {
    static const std::string path = scratchPath("port", ".mc");
    return path;
}

PortOptions optionsFor(size_t size) {
    PortOptions options;
    options.finalLineBreak = size % 2 == 0;
    options.resolve.applicationFacility = (size / 2) % 2 ? 0xFFF : 0;
    if ((size / 4) % 2) options.codePage = "CP1252";
    return options;
}

// The converted file, or "" when the converter reported an error.
std::string convert(const std::string& bytes) {
    PortReport report;
    try {
        PortResult result = portMessageFile(bytes, "fuzz.mc", optionsFor(bytes.size()), report);
        std::ostringstream file;
        writeMessageFile(file, result.content);
        return file.str();
    } catch (const PortError&) {
    } catch (const UnwritableText&) {
    }
    return "";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string converted = convert(std::string(reinterpret_cast<const char*>(data), size));
    if (converted.empty() || !writeScratch(scratchFile(), converted.data(), converted.size())) {
        return 0;
    }
    FreshStoreAfterInput freshStore;
    std::string failure = loadFailure(scratchFile());
    std::remove(scratchFile().c_str());
    if (!failure.empty()) {
        std::fprintf(stderr, "the converted file does not load: %s\nconverted file:\n%s\n",
                     failure.c_str(), converted.c_str());
        std::abort();
    }
    return 0;
}
