// Scratch files of the fuzz targets that write a message file and load it:
// where they go, how they are written, and what the loader says of them.
#ifndef TQMSG_FUZZ_SCRATCH_FILES_H
#define TQMSG_FUZZ_SCRATCH_FILES_H

#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "MessageModule.h"

// "$TMPDIR/tqmsg-fuzz-<name>-<pid><suffix>" (/tmp without TMPDIR): one per
// process, so that parallel workers do not share files.
inline std::string scratchPath(const char* name, const char* suffix) {
    const char* dir = std::getenv("TMPDIR");
    return std::string(dir && *dir ? dir : "/tmp") + "/tqmsg-fuzz-" + name + "-" +
           std::to_string(getpid()) + suffix;
}

// Writes `size` bytes to `path`; false when any of them could not be written.
inline bool writeScratch(const std::string& path, const char* bytes, size_t size) {
    std::FILE* out = std::fopen(path.c_str(), "wb");
    if (!out) return false;
    bool written = std::fwrite(bytes, 1, size, out) == size;
    return std::fclose(out) == 0 && written;
}

// The loader's complaint about `path`, or "" when it loaded.
inline std::string loadFailure(const std::string& path) {
    try {
        MessageModule module(path, false);
    } catch (MessageTableParserException& e) {
        return e.msg;
    } catch (MessageModuleException& e) {
        return e.msg;
    }
    return "";
}

#endif  // TQMSG_FUZZ_SCRATCH_FILES_H
