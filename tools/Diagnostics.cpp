// Messages on standard error and the hints for files that do not load.
#include "Diagnostics.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iostream>

#include "Catalogue.h"
#include "TextEscape.h"

namespace {

std::string& currentCommand() {
    static std::string name = "tqmsg";
    return name;
}

bool endsWith(const std::string& text, const std::string& end) {
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// Why `file` cannot be opened for reading, or "" when it can.
std::string openFailureReason(const std::string& file) {
    int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return std::strerror(errno);
    struct stat status;
    bool directory = ::fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
    ::close(descriptor);
    return directory ? std::strerror(EISDIR) : "";
}

// The first bytes of `file` (fewer when it is shorter or unreadable).
std::string fileStart(const std::string& file) {
    char bytes[4];
    ssize_t length = 0;
    int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor >= 0) {
        length = ::read(descriptor, bytes, sizeof(bytes));
        ::close(descriptor);
    }
    return std::string(bytes, length > 0 ? static_cast<size_t>(length) : 0);
}

// The iconv name of the UTF-16 form that `start` begins, or "". With a
// byte-order mark, "UTF-16" lets iconv read the mark and drop it.
std::string utf16Encoding(const std::string& start) {
    if (start.compare(0, 2, "\xFF\xFE") == 0 || start.compare(0, 2, "\xFE\xFF") == 0) {
        return "UTF-16";
    }
    if (start.size() >= 2 && start[0] != '\0' && start[1] == '\0') return "UTF-16LE";
    if (start.size() >= 2 && start[0] == '\0' && start[1] != '\0') return "UTF-16BE";
    return "";
}

// The number the failure quotes after "got: ", when it is one beyond 32 bits.
std::string numberBeyond32Bits(const std::string& failure) {
    size_t at = failure.rfind("got: ");
    if (at == std::string::npos) return "";
    std::string quoted = failure.substr(at + 5);
    quoted = quoted.substr(0, quoted.find_first_of(": \t"));
    long ignored = 0;
    return parseNumber(quoted, ignored) == NumberText::OUT_OF_RANGE ? quoted : "";
}

}  // namespace

std::string shellWord(const std::string& name) {
    if (name.find_first_not_of(
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_./+-") ==
        std::string::npos) {
        return name;
    }
    std::string quoted = "'";
    for (char c : name) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

void setCommandName(const std::string& name) { currentCommand() = name; }

const std::string& commandName() { return currentCommand(); }

void printError(const std::string& text) {
    std::cout.flush();
    size_t end = text.find_last_not_of('\n') + 1;  // 0 for an empty text
    for (size_t start = 0; start <= end;) {
        size_t lineEnd = std::min(text.find('\n', start), end);
        std::cerr << currentCommand() << ": "
                  << escapeForTerminal(text.substr(start, lineEnd - start)) << '\n';
        start = lineEnd + 1;
    }
}

std::vector<std::string> loadFailureHints(const std::string& file, const std::string& failure) {
    std::vector<std::string> hints;
    std::string reason = openFailureReason(file);
    if (!reason.empty() && endsWith(failure, "Unable to open file: " + file)) {
        hints.push_back(file + ": " + reason);
    }
    std::string firstLinePrefix = "File: \"" + file + "\", Line: 1 - ";
    bool firstLine = failure.compare(0, firstLinePrefix.size(), firstLinePrefix) == 0;
    std::string start = fileStart(file);
    std::string encoding = utf16Encoding(start);
    if (firstLine && !encoding.empty()) {
        hints.push_back(file + " is " + encoding +
                        " text; convert it to UTF-8 first, e.g. iconv -f " + encoding +
                        " -t UTF-8 " + shellWord(file) + " > NEW.mc");
    }
    if (firstLine && start.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        hints.push_back(file +
                        " starts with a UTF-8 byte-order mark (EF BB BF), read as text;"
                        " remove it, e.g. sed -i '1s/^\\xEF\\xBB\\xBF//' " +
                        shellWord(file));
    }
    std::string number = numberBeyond32Bits(failure);
    if (!number.empty()) hints.push_back(number + " is a number, but outside the 32-bit range");
    return hints;
}
