// Statement-level scanning of Windows message files.
#include "SourceScanner.h"

#include <cstring>

namespace {

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }

}  // namespace

char SourceScanner::peek() const {
    if (atEnd() || column_ >= (*lines_)[line_].size()) return '\0';
    return (*lines_)[line_][column_];
}

void SourceScanner::skipComment() {
    if (firstComment_ == 0) firstComment_ = lineNumber();
    ++comments_;
    column_ = (*lines_)[line_].size();
}

void SourceScanner::skipSpaceAndComments() {
    while (!atEnd()) {
        skipBlanks();
        if (peek() == ';') skipComment();
        if (column_ < (*lines_)[line_].size()) return;
        ++line_;
        column_ = 0;
    }
}

void SourceScanner::skipBlanks() {
    while (isSpace(peek())) ++column_;
}

bool SourceScanner::atLineEnd() {
    skipBlanks();
    return peek() == '\0' || peek() == ';';
}

std::string SourceScanner::readWord() {
    std::string word;
    for (char c = peek(); c != '\0' && !isSpace(c) && !std::strchr("=:();", c); c = peek()) {
        word += c;
        ++column_;
    }
    return word;
}

std::string SourceScanner::rest() const {
    return atEnd() || column_ >= (*lines_)[line_].size() ? "" : (*lines_)[line_].substr(column_);
}

const std::string* SourceScanner::nextLine() {
    if (!atEnd()) ++line_;
    column_ = 0;
    if (atEnd()) return nullptr;
    column_ = (*lines_)[line_].size();
    return &(*lines_)[line_];
}
