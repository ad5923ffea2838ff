// Line edits of a text file that leave every untouched byte as it was: the
// lines replaced or added are the whole change, a reviewable diff.
#ifndef TQMSG_PO_FILE_EDITS_H
#define TQMSG_PO_FILE_EDITS_H

#include <map>
#include <string>
#include <vector>

class FileEdits {
public:
    // `content` is the file's bytes; lines are counted from 1.
    explicit FileEdits(const std::string& content);

    // Replaces lines `first` to `last` with `lines`; `last` = `first` - 1
    // inserts them before line `first`. Ranges must not overlap.
    void replace(int first, int last, const std::vector<std::string>& lines);
    // Inserts `lines` after line `line`, after any lines inserted there before.
    void insertAfter(int line, const std::vector<std::string>& lines);

    bool changed() const { return !replaced_.empty() || !after_.empty(); }
    // The edited bytes. New lines end like the line they stand next to (a
    // carriage return before the line feed when it has one).
    std::string result() const;

private:
    struct Replacement {
        int last;
        std::vector<std::string> lines;
    };
    std::vector<std::string> lines_;  // each with its own ending ("\n", "\r\n" or none at the end)
    std::map<int, Replacement> replaced_;
    std::map<int, std::vector<std::string>> after_;
};

// The bytes of the file at `path`. Throws PoFailure, with the system's
// reason, when it cannot be read.
std::string readFileContent(const std::string& path);

#endif  // TQMSG_PO_FILE_EDITS_H
