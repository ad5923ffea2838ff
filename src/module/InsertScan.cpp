// The insert scan: a five-state machine over the bytes of a message text.
//
// Plain text is copied in runs and each insert is formatted into a stack
// buffer, so a typical message is expanded without a heap allocation.
#include "module/InsertScan.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "MessageModuleMaps.h"
#include "maps/FailureText.h"
#include "module/InsertFormat.h"

namespace {

class InsertScanner {
public:
    InsertScanner(const char* text, std::size_t length, int maxWidth, char** Arguments,
                  char** argArray, ResultText& out)
        : text_(text),
          length_(length),
          maxWidth_(maxWidth),
          arguments_(Arguments),
          argArray_(argArray),
          out_(out) {}

    void run() {
        std::size_t at = 0;
        while (at < length_) at = step(at);
        finish();
    }

private:
    enum class State { Text, Escape, AfterZero, InsertNumber, InsertFormat };

    static const std::size_t MAX_DIGITS = 3;
    static const std::size_t NOT_SEARCHED = static_cast<std::size_t>(-1);

    // Handles the byte at `at` (and, in the text and insert format states, the
    // run that follows it); returns the position of the next unhandled byte.
    std::size_t step(std::size_t at) {
        char c = text_[at];
        switch (state_) {
            case State::Text:
                return textRun(at);
            case State::Escape:
                escape(c);
                return at + 1;
            case State::AfterZero:
                state_ = State::Text;
                if (c != '\n') text(c);  // a line feed right after "%0" is dropped
                return at + 1;
            case State::InsertNumber:
                insertNumber(c, at);
                return at + 1;
            case State::InsertFormat:
                return insertFormat(at);
        }
        return at + 1;
    }

    // Copies the run of ordinary bytes at `at` at once; a run that starts with
    // "%" or a line feed is that one byte.
    std::size_t textRun(std::size_t at) {
        std::size_t end = std::min(find('%', at, nextPercent_), find('\n', at, nextLineFeed_));
        if (end == at) {
            text(text_[at]);
            return at + 1;
        }
        out_.write(text_ + at, end - at);
        column_ += static_cast<long long>(end - at);
        return end;
    }

    // The position of the first `c` at or after `at` (`length_` when none),
    // remembered in `next` so that each byte is searched once.
    std::size_t find(char c, std::size_t at, std::size_t& next) const {
        if (next == NOT_SEARCHED || next < at) {
            const void* found = std::memchr(text_ + at, c, length_ - at);
            next = found == nullptr ? length_ : static_cast<const char*>(found) - text_;
        }
        return next;
    }

    void text(char c) {
        if (c == '%') {
            ++column_;
            state_ = State::Escape;
        } else if (c == '\n') {
            lineFeed();
        } else {
            out_.put(c);
            ++column_;
        }
    }

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

    void escape(char c) {
        state_ = State::Text;
        if (c >= '1' && c <= '9') {
            digits_[0] = c;
            digitCount_ = 1;
            state_ = State::InsertNumber;
        } else if (c == '0') {
            state_ = State::AfterZero;
        } else if (c == '%') {
            out_.put('%');
            ++column_;
        } else if (c == 'n') {
            out_.put('\n');
            column_ = 0;
        } else {
            text(c);  // the "%" is dropped
        }
    }

    void insertNumber(char c, std::size_t at) {
        if (c >= '0' && c <= '9') {
            if (digitCount_ == MAX_DIGITS) tooManyDigits();
            digits_[digitCount_++] = c;
        } else if (c == '!') {
            formatStart_ = at + 1;
            state_ = State::InsertFormat;
        } else {
            state_ = State::Text;
            completeInsert("%s", 2);
            text(c);
        }
    }

    // Takes everything up to the closing "!" as the format at once; without
    // one, the scan ends in this state and fails.
    std::size_t insertFormat(std::size_t at) {
        const void* bang = std::memchr(text_ + at, '!', length_ - at);
        if (bang == nullptr) return length_;
        std::size_t end = static_cast<const char*>(bang) - text_;
        format_.assign(1, '%');
        format_.append(text_ + formatStart_, end - formatStart_);
        state_ = State::Text;
        completeInsert(format_.data(), format_.size());
        return end + 1;
    }

    void finish() {
        switch (state_) {
            case State::Text:
            case State::AfterZero:
                return;
            case State::InsertNumber:
                completeInsert("%s", 2);
                return;
            case State::Escape:
                throw MessageModuleException(
                    FailureText("Invalid message string: %s, string cannot end with an escape "
                                "sequence %%",
                                text_)
                        .text);
            case State::InsertFormat:
                throw MessageModuleException(
                    FailureText("Invalid message string: %s, format string begin marker ! noticed "
                                "without any matching end marker after escape sequence %%",
                                text_)
                        .text);
        }
    }

    [[noreturn]] void tooManyDigits() {
        throw MessageModuleException(
            FailureText("Arg Index: %.3s.., is too big must not be more than 3 digits", digits_)
                .text);
    }

    // The insert number is 1 to 3 decimal digits, the first not 0; the range
    // check (at most 199) belongs to formatInsert.
    void completeInsert(const char* format, std::size_t formatLength) {
        int argIndex = 0;
        for (std::size_t i = 0; i < digitCount_; ++i) argIndex = argIndex * 10 + (digits_[i] - '0');
        digitCount_ = 0;
        char buffer[INSERT_BUFFER_SIZE];
        InsertText insert =
            formatInsert(argIndex, format, formatLength, arguments_, argArray_, buffer);
        writeInsert(out_, insert, column_, maxWidth_);
    }

    const char* text_;
    std::size_t length_;
    int maxWidth_;
    char** arguments_;
    char** argArray_;
    ResultText& out_;

    State state_ = State::Text;
    long long column_ = 0;          // compared with the width; see lineFeed and writeInsert
    char digits_[MAX_DIGITS] = {};  // the insert number read so far
    std::size_t digitCount_ = 0;
    std::size_t formatStart_ = 0;             // first byte of the pending insert's format
    std::string format_;                      // "%" and the pending insert's format
    std::size_t nextPercent_ = NOT_SEARCHED;  // see find()
    std::size_t nextLineFeed_ = NOT_SEARCHED;
};

}  // namespace

void scanMessageText(const char* text, std::size_t length, int maxWidth, char** Arguments,
                     char** argArray, ResultText& result) {
    InsertScanner(text, length, maxWidth, Arguments, argArray, result).run();
}
