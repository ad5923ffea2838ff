// Splitting, editing and joining the lines of a file.
#include "FileEdits.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "PoFailure.h"

namespace {

bool endsWith(const std::string& text, const char* tail) {
    std::string end = tail;
    return text.size() >= end.size() &&
           text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// The ending new lines take beside `neighbour`.
std::string endingLike(const std::string& neighbour) {
    return endsWith(neighbour, "\r\n") ? "\r\n" : "\n";
}

void appendLines(std::string& out, const std::vector<std::string>& lines,
                 const std::string& ending) {
    for (const std::string& line : lines) out += line + ending;
}

}  // namespace

FileEdits::FileEdits(const std::string& content) {
    std::size_t start = 0;
    while (start < content.size()) {
        std::size_t end = content.find('\n', start);
        end = end == std::string::npos ? content.size() : end + 1;
        lines_.push_back(content.substr(start, end - start));
        start = end;
    }
}

void FileEdits::replace(int first, int last, const std::vector<std::string>& lines) {
    if (first < 1 || last < first - 1 || last > static_cast<int>(lines_.size()) ||
        !replaced_.emplace(first, Replacement{last, lines}).second) {
        throw std::logic_error("bad line range");
    }
}

void FileEdits::insertAfter(int line, const std::vector<std::string>& lines) {
    if (line < 0 || line > static_cast<int>(lines_.size())) throw std::logic_error("bad line");
    std::vector<std::string>& added = after_[line];
    added.insert(added.end(), lines.begin(), lines.end());
}

std::string FileEdits::result() const {
    std::string out;
    const int count = static_cast<int>(lines_.size());
    const std::string fileEnding = count > 0 ? endingLike(lines_.front()) : "\n";
    auto addedAfter = [&](int number, const std::string& ending) {
        auto added = after_.find(number);
        if (added == after_.end()) return;
        if (!out.empty() && !endsWith(out, "\n")) out += ending;  // a last line without line feed
        appendLines(out, added->second, ending);
    };
    addedAfter(0, fileEnding);
    for (int number = 1; number <= count; ++number) {
        const std::string& line = lines_[number - 1];
        const std::string ending = endsWith(line, "\n") ? endingLike(line) : fileEnding;
        auto replacement = replaced_.find(number);
        if (replacement != replaced_.end()) {
            appendLines(out, replacement->second.lines, ending);
            if (replacement->second.last >= number) {  // the range's lines are left out
                number = replacement->second.last;
                addedAfter(number, ending);
                continue;
            }
        }
        out += line;
        addedAfter(number, ending);
    }
    return out;
}

std::string readFileContent(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw PoFailure("cannot read " + path + ": " + std::strerror(errno));
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}
