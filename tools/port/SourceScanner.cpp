// Statement-level scanning of Windows message files.
#include "SourceScanner.h"

#include <algorithm>

namespace {

bool isSpace(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v'; }

bool endsWord(char c) {
    return isSpace(c) || c == '=' || c == ':' || c == '(' || c == ')' || c == ';';
}

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
    if (atEnd()) return "";
    const std::string& line = (*lines_)[line_];
    size_t start = std::min(column_, line.size());
    size_t end = start;
    while (end < line.size() && !endsWord(line[end])) ++end;
    column_ = end;
    return line.substr(start, end - start);
}

std::string SourceScanner::rest() const {
    return atEnd() || column_ >= (*lines_)[line_].size() ? "" : (*lines_)[line_].substr(column_);
}

std::string* SourceScanner::nextLine() {
    if (!atEnd()) ++line_;
    column_ = 0;
    if (atEnd()) return nullptr;
    column_ = (*lines_)[line_].size();
    return &(*lines_)[line_];
}
