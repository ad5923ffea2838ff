// Internal: the scan of a message text's escapes and inserts.
//
// One state machine reads every message text: the formatter expands what it
// reports, and MessageModule::findInserts lists the inserts it reports, so
// both read the text alike.
#ifndef TQMSG_MODULE_INSERT_SCAN_H
#define TQMSG_MODULE_INSERT_SCAN_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

#include "maps/FailureText.h"
#include "module/InsertFormat.h"

// Reads `text` (`length` bytes, NUL-terminated) and reports to `handler`:
//   literal(data, n)  ordinary bytes, never "%" or a line feed; "%%" gives "%"
//   escapeStart()     the "%" that opens any escape or insert
//   lineFeed()        a line feed of the text (also one after a dropped "%")
//   lineBreak()       "%n"
//   insert(number, format, formatLength)
//                     "%1" to "%199", format "%" + the text between the two
//                     "!" marks, or "%s" without them (NUL-terminated)
// "%0" and a line feed right after it report nothing, and "%" before any
// other character reports that character alone. Throws
// MessageModuleException with the scan's texts: an insert number of four
// digits or above 199, a text ending in "%" or inside an insert format.
template <typename Handler>
class InsertScanner {
public:
    InsertScanner(const char* text, std::size_t length, Handler& handler)
        : text_(text), length_(length), handler_(handler) {}

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

    // Reports the run of ordinary bytes at `at` at once; a run that starts
    // with "%" or a line feed is that one byte.
    std::size_t textRun(std::size_t at) {
        std::size_t end = std::min(find('%', at, nextPercent_), find('\n', at, nextLineFeed_));
        if (end == at) {
            text(text_[at]);
            return at + 1;
        }
        handler_.literal(text_ + at, end - at);
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
            handler_.escapeStart();
            state_ = State::Escape;
        } else if (c == '\n') {
            handler_.lineFeed();
        } else {
            handler_.literal(&c, 1);
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
            handler_.literal("%", 1);
        } else if (c == 'n') {
            handler_.lineBreak();
        } else {
            text(c);  // the "%" is dropped
        }
    }

    void insertNumber(char c, std::size_t at) {
        if (c >= '0' && c <= '9') {
            if (digitCount_ == MAX_DIGITS) {
                throw moduleFailure("Arg Index: %.3s.., is too big must not be more than 3 digits",
                                    digits_);
            }
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
                throw moduleFailure(
                    "Invalid message string: %s, string cannot end with an escape sequence %%",
                    text_);
            case State::InsertFormat:
                throw moduleFailure(
                    "Invalid message string: %s, format string begin marker ! noticed without "
                    "any matching end marker after escape sequence %%",
                    text_);
        }
    }

    // The insert number is 1 to 3 decimal digits, the first not 0.
    void completeInsert(const char* format, std::size_t formatLength) {
        int number = 0;
        for (std::size_t i = 0; i < digitCount_; ++i) number = number * 10 + (digits_[i] - '0');
        digitCount_ = 0;
        checkInsertNumber(number);
        handler_.insert(number, format, formatLength);
    }

    const char* text_;
    std::size_t length_;
    Handler& handler_;

    State state_ = State::Text;
    char digits_[MAX_DIGITS] = {};  // the insert number read so far
    std::size_t digitCount_ = 0;
    std::size_t formatStart_ = 0;             // first byte of the pending insert's format
    std::string format_;                      // "%" and the pending insert's format
    std::size_t nextPercent_ = NOT_SEARCHED;  // see find()
    std::size_t nextLineFeed_ = NOT_SEARCHED;
};

#endif  // TQMSG_MODULE_INSERT_SCAN_H
