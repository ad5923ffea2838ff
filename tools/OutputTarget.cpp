// Following an output's symbolic links and classifying what they lead to.
#include "OutputTarget.h"

#include <fcntl.h>
#include <limits.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>

#include "Catalogue.h"

namespace {

const int MAX_LINKS = 40;  // the kernel's own limit when it resolves a path

[[noreturn]] void cannot(const char* verb, const std::string& path, int error) {
    throw CommandFailure{std::string("cannot ") + verb + " " + path + ": " + std::strerror(error)};
}

std::string directoryOf(const std::string& path) {
    std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string nameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

// N when `path` names descriptor N of this process, else -1.
int namedDescriptor(const std::string& path) {
    for (const char* prefix : {"/dev/fd/", "/proc/self/fd/"}) {
        const std::size_t length = std::strlen(prefix);
        if (path.compare(0, length, prefix) != 0) continue;
        const std::string digits = path.substr(length);
        if (digits.empty() || digits.size() > 9) return -1;
        if (!std::all_of(digits.begin(), digits.end(), ::isdigit)) return -1;
        return std::stoi(digits);
    }
    return -1;
}

// The target of symbolic link `link`, relative to the link's directory.
std::string linkTarget(const std::string& link, const char* verb, const std::string& given) {
    char buffer[PATH_MAX];
    ssize_t length = readlink(link.c_str(), buffer, sizeof(buffer));
    if (length < 0) cannot(verb, given, errno);
    if (length == static_cast<ssize_t>(sizeof(buffer))) cannot(verb, given, ENAMETOOLONG);
    std::string target(buffer, static_cast<std::size_t>(length));
    return target[0] == '/' ? target : directoryOf(link) + "/" + target;
}

// Follows the symbolic links from `path` to the name that is not one (and
// may not exist yet). Stops at the name of an open descriptor (/dev/stdout
// leads to /proc/self/fd/1), setting `descriptor`. Failures are reported as
// "cannot VERB GIVEN: REASON".
std::string followLinks(std::string path, int& descriptor, const char* verb,
                        const std::string& given) {
    for (int hops = 0; hops <= MAX_LINKS; ++hops) {
        descriptor = namedDescriptor(path);
        if (descriptor >= 0) return path;
        struct stat status;
        if (lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) return path;
        path = linkTarget(path, verb, given);
    }
    cannot(verb, given, ELOOP);
}

// `path` with its directory made absolute and free of links.
std::string resolvedPath(const std::string& path) {
    char* directory = realpath(directoryOf(path).c_str(), nullptr);
    if (directory == nullptr) return path;
    std::string result = directory;
    std::free(directory);
    return (result == "/" ? "" : result) + "/" + nameOf(path);
}

FileIdentity identify(const std::string& finalPath, int descriptor) {
    FileIdentity identity;
    struct stat status;
    int found = descriptor >= 0 ? fstat(descriptor, &status) : stat(finalPath.c_str(), &status);
    if (found == 0) {
        identity.exists = true;
        identity.device = status.st_dev;
        identity.inode = status.st_ino;
    }
    identity.resolvedPath = descriptor >= 0 ? finalPath : resolvedPath(finalPath);
    return identity;
}

}  // namespace

bool FileIdentity::sameFileAs(const FileIdentity& other) const {
    if (exists && other.exists) return device == other.device && inode == other.inode;
    return resolvedPath == other.resolvedPath;
}

OutputTarget examineOutput(const std::string& path) {
    OutputTarget target;
    target.path = path;
    if (path.empty()) cannot("write", "''", ENOENT);
    if (path == "-") {
        target.finalPath = "-";
        target.descriptor = STDOUT_FILENO;
    } else {
        target.finalPath = followLinks(path, target.descriptor, "write", path);
    }
    if (target.descriptor >= 0) {
        target.kind = TargetKind::DESCRIPTOR;
        target.identity = identify(target.finalPath, target.descriptor);
        return target;
    }
    struct stat status;
    if (stat(target.finalPath.c_str(), &status) != 0) {
        if (errno != ENOENT) cannot("write", path, errno);
        target.kind = TargetKind::NEW_FILE;
    } else if (S_ISDIR(status.st_mode)) {
        cannot("write", path, EISDIR);
    } else if (S_ISREG(status.st_mode)) {
        // Replacing a file by renaming needs only the directory's permission:
        // ask for the file's own, so a read-only file stays untouched.
        if (faccessat(AT_FDCWD, target.finalPath.c_str(), W_OK, AT_EACCESS) != 0) {
            cannot("write", path, errno);
        }
        target.kind = TargetKind::REGULAR_FILE;
        target.existing = status;
    } else {
        target.kind = TargetKind::DEVICE;
    }
    target.identity = identify(target.finalPath, -1);
    return target;
}

FileIdentity examineInput(const std::string& path) {
    int descriptor = -1;
    std::string finalPath = followLinks(path, descriptor, "read", path);
    struct stat status;
    if (descriptor < 0 && stat(finalPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
        cannot("read", path, EISDIR);
    }
    return identify(finalPath, descriptor);
}
