// Walks the lines of a Windows message file outside message texts: there,
// statements are separated by any white space and ";" starts a comment that
// runs to the end of its line.
#ifndef TQMSG_PORT_SOURCE_SCANNER_H
#define TQMSG_PORT_SOURCE_SCANNER_H

#include <string>
#include <vector>

class SourceScanner {
public:
    explicit SourceScanner(std::vector<std::string>& lines) : lines_(&lines) {}

    bool atEnd() const { return line_ >= lines_->size(); }
    // The 1-based number of the line the scanner stands on.
    int lineNumber() const { return static_cast<int>(line_ + 1); }
    // The character at the position, '\0' at the end of a line or of the file.
    char peek() const;
    void advance() { ++column_; }

    // Skips white space and comments, across lines.
    void skipSpaceAndComments();
    // Skips blanks on the current line only.
    void skipBlanks();
    // True when only blanks or a comment remain on the current line.
    bool atLineEnd();
    // The word at the position: characters up to white space or one of "=:();".
    std::string readWord();
    // The rest of the current line, from the position.
    std::string rest() const;
    // Moves past the next line and returns it whole (the text of a message is
    // read line by line, comments and blanks included); the caller may take
    // its content, as the scanner does not look at it again.
    std::string* nextLine();
    // The comment lines and trailing comments skipped so far.
    size_t commentsSkipped() const { return comments_; }
    int firstCommentLine() const { return firstComment_; }

private:
    void skipComment();

    std::vector<std::string>* lines_;  // not owned
    size_t line_ = 0;
    size_t column_ = 0;
    size_t comments_ = 0;
    int firstComment_ = 0;
};

#endif  // TQMSG_PORT_SOURCE_SCANNER_H
