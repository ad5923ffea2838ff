// The formatter's side of the scan: output, column count and width rule.
//
// Plain text is copied in runs and each insert is formatted into a stack
// buffer, so a typical message is expanded without a heap allocation.
#include "module/TextExpansion.h"

#include "module/InsertFormat.h"
#include "module/InsertScan.h"

namespace {

class Expansion {
public:
    Expansion(int maxWidth, char** Arguments, char** argArray, std::size_t arrayLength,
              InsertObserver* observer, ResultText& out)
        : maxWidth_(maxWidth),
          arguments_(Arguments),
          argArray_(argArray),
          arrayLength_(arrayLength),
          observer_(observer),
          out_(out) {}

    void literal(const char* data, std::size_t length) {
        out_.write(data, length);
        column_ += static_cast<long long>(length);
    }

    void escapeStart() { ++column_; }

    // A line feed of the text: doubled, and the column reset, once the line
    // has reached the width; otherwise counted like any other character.
    void lineFeed() {
        if (maxWidth_ != 0 && column_ >= maxWidth_) {
            out_.write("\n\n", 2);
            column_ = 0;
        } else {
            out_.put('\n');
            ++column_;
        }
    }

    void lineBreak() {
        out_.put('\n');
        column_ = 0;
    }

    void insert(int number, const char* format, std::size_t formatLength) {
        char buffer[INSERT_BUFFER_SIZE];
        InsertText text =
            formatInsert(number, format, formatLength, arguments_, argArray_, buffer, arrayLength_);
        if (observer_ != nullptr)
            observer_->inserted(observer_->context, number, text.data, text.length);
        writeInsert(out_, text, column_, maxWidth_);
    }

private:
    int maxWidth_;
    char** arguments_;
    char** argArray_;
    std::size_t arrayLength_;
    InsertObserver* observer_;
    ResultText& out_;
    long long column_ = 0;  // compared with the width; see lineFeed and writeInsert
};

}  // namespace

void expandMessageText(const char* text, std::size_t length, int maxWidth, char** Arguments,
                       char** argArray, ResultText& result, std::size_t arrayLength,
                       InsertObserver* observer) {
    Expansion expansion(maxWidth, Arguments, argArray, arrayLength, observer, result);
    InsertScanner<Expansion>(text, length, expansion).run();
}
