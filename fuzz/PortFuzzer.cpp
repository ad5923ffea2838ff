// Fuzz target: arbitrary bytes converted as a Windows message file.
//
// The converter either reports an error (PortError, or UnwritableText from the
// writer) or produces a file, and every file it produces must load. The load
// runs in a child process: the store is process-wide and keeps every text, so
// the files of two inputs would collide in it. A file that fails to load is a
// finding: the parent prints the converted file and the loader's text and
// aborts. Bits of the input's length choose the options (final line break,
// facility Application 0xFFF, code page CP1252).
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include "MessageModule.h"
#include "PortConverter.h"

namespace {

const std::string& scratchFile() {
    static const std::string path = [] {
        const char* dir = std::getenv("TMPDIR");
        return std::string(dir && *dir ? dir : "/tmp") + "/tqmsg-fuzz-port-" +
               std::to_string(getpid()) + ".mc";
    }();
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

// Loads the scratch file in a child; its status is 0 when the file loaded.
int loadInChild() {
    std::fflush(nullptr);
    pid_t pid = fork();
    if (pid < 0) return 0;  // no process to spare: nothing to judge
    if (pid == 0) {
        try {
            MessageModule module(scratchFile(), false);
        } catch (MessageTableParserException& e) {
            std::fprintf(stderr, "the converted file does not load: %s\n", e.msg.c_str());
            _exit(1);
        } catch (MessageModuleException& e) {
            std::fprintf(stderr, "the converted file does not load: %s\n", e.msg.c_str());
            _exit(1);
        }
        _exit(0);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string converted = convert(std::string(reinterpret_cast<const char*>(data), size));
    if (converted.empty()) return 0;
    std::FILE* out = std::fopen(scratchFile().c_str(), "wb");
    if (!out) return 0;
    bool written = std::fwrite(converted.data(), 1, converted.size(), out) == converted.size();
    if (std::fclose(out) != 0 || !written) return 0;
    int status = loadInChild();
    std::remove(scratchFile().c_str());
    if (status != 0) {
        std::fprintf(stderr, "converted file (status %d):\n%s\n", status, converted.c_str());
        std::abort();
    }
    return 0;
}
