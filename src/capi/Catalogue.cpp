// Loading message files from C, and the thread's last error.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <string>

#include "MessageModule.h"
#include "capi/Boundary.h"
#include "maps/FailureText.h"
#include "tqmsg.h"

namespace {

// The module that loads for C callers: the program's own when it has made
// one, otherwise one that lives until the process ends.
MessageModule* loadingModule() {
    if (MessageModule::self() != nullptr) return MessageModule::self();
    static MessageModule module;
    return &module;
}

// Why the system refuses to let `path` be read, or null when it would.
// The parser only says that it could not open a file; a program wants to
// know whether it is missing, a directory or forbidden.
const char* systemRefusal(const char* path) {
    struct stat status;
    if (::stat(path, &status) != 0) return std::strerror(errno);
    if (S_ISDIR(status.st_mode)) return std::strerror(EISDIR);
    int descriptor = ::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) return std::strerror(errno);
    ::close(descriptor);
    return nullptr;
}

void loadFile(const char* path) {
    if (path == nullptr) throw moduleFailure("The path of the file to load is NULL");
    try {
        MessageModule::loadFile(loadingModule(), path, false);
    } catch (MessageTableParserException& failure) {
        const char* refusal = systemRefusal(path);
        if (refusal != nullptr) failure.msg += std::string(" (") + refusal + ")";
        throw;
    }
}

}  // namespace

extern "C" {

int tqmsg_load(const char* path) {
    return atCBoundary(-1, [&] {
        loadFile(path);
        return 0;
    });
}

const char* tqmsg_last_error(void) { return lastError(); }

void tqmsg_set_last_error(const char* text) { setLastError(text != nullptr ? text : ""); }

}  // extern "C"
