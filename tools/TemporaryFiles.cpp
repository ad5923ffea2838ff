// Creation, removal and signal-time cleanup of temporary files.
#include "TemporaryFiles.h"

#include <fcntl.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include "Catalogue.h"

namespace {

const int CLEANUP_SIGNALS[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE, SIGXFSZ};

// The names the signal handler removes. Changed only with the cleanup signals
// blocked, so the handler never sees a list half updated.
std::vector<std::string> registeredPaths;

extern "C" void removeTemporariesAndDie(int signalNumber) {
    for (const std::string& path : registeredPaths) unlink(path.c_str());
    // The handler was installed with SA_RESETHAND: the signal, delivered again
    // once this handler returns, ends the process with its usual status.
    raise(signalNumber);
}

void installHandlersOnce() {
    static bool installed = false;
    if (installed) return;
    installed = true;
    for (int signalNumber : CLEANUP_SIGNALS) {
        struct sigaction previous;
        if (sigaction(signalNumber, nullptr, &previous) != 0) continue;
        if (previous.sa_handler == SIG_IGN) continue;  // nohup, `trap '' ...`: keep it so
        struct sigaction action {};
        action.sa_handler = removeTemporariesAndDie;
        action.sa_flags = SA_RESETHAND;
        sigemptyset(&action.sa_mask);
        sigaction(signalNumber, &action, nullptr);
    }
}

// Blocks the cleanup signals for its lifetime.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t blocked;
        sigemptyset(&blocked);
        for (int signalNumber : CLEANUP_SIGNALS) sigaddset(&blocked, signalNumber);
        sigprocmask(SIG_BLOCK, &blocked, &previous_);
    }
    ~SignalsBlocked() { sigprocmask(SIG_SETMASK, &previous_, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t previous_;
};

void forget(const std::string& path) {
    for (auto it = registeredPaths.begin(); it != registeredPaths.end(); ++it) {
        if (*it == path) {
            registeredPaths.erase(it);
            return;
        }
    }
}

std::string temporaryPattern(const std::string& target) {
    std::size_t slash = target.rfind('/');
    std::string directory = slash == std::string::npos ? "" : target.substr(0, slash + 1);
    std::string name = slash == std::string::npos ? target : target.substr(slash + 1);
    return directory + "." + name + ".XXXXXX";
}

}  // namespace

TemporaryFile::TemporaryFile(const std::string& target)
    : target_(target), path_(temporaryPattern(target)) {
    installHandlersOnce();
    SignalsBlocked blocked;  // a signal between creating and registering would leave the file
    descriptor_ = mkostemp(&path_[0], O_CLOEXEC);
    if (descriptor_ < 0) {
        throw CommandFailure{"cannot write " + target + ": " + std::strerror(errno)};
    }
    registeredPaths.push_back(path_);
}

TemporaryFile::~TemporaryFile() {
    close();
    if (renamed_) return;
    SignalsBlocked blocked;
    unlink(path_.c_str());
    forget(path_);
}

int TemporaryFile::close() {
    if (descriptor_ < 0) return 0;
    int error = ::close(descriptor_) == 0 ? 0 : errno;
    descriptor_ = -1;
    return error;
}

int TemporaryFile::renameOntoTarget() {
    SignalsBlocked blocked;
    if (std::rename(path_.c_str(), target_.c_str()) != 0) return errno;
    renamed_ = true;
    forget(path_);
    return 0;
}
