#include "parser/LineReader.h"

#include <cstring>
#include <exception>
#include <streambuf>

#include "parser/ParseError.h"

namespace {

// Characters of the beginning of an over-long line quoted in its error text.
const int QUOTED_PREFIX = 40;

// Reads the get area of any stream buffer in place. The area is protected;
// pointers to its accessors are formed through this derived class, which the
// language permits, and applied to the stream's own buffer.
struct GetArea : std::streambuf {
    static char* next(std::streambuf* buffer) { return (buffer->*&GetArea::gptr)(); }
    static char* end(std::streambuf* buffer) { return (buffer->*&GetArea::egptr)(); }
    static void advance(std::streambuf* buffer, std::size_t count) {
        (buffer->*&GetArea::gbump)(static_cast<int>(count));
    }
};

enum class Outcome { Line, EndOfFile, TooLong };

// What istream::getline(buffer, LINE_BUFFER_SIZE, '\n') extracts, without its
// sentry and per-character calls: the line's characters are copied from the
// stream buffer's get area a block at a time (memchr finds the line feed),
// and the buffer is refilled through sgetc only when the area is used up.
// Stores at most LINE_BUFFER_SIZE - 1 characters and the NUL; `stored` is
// their count. The line feed is consumed; a line that goes on after a full
// buffer is TooLong with its next character left unread, as getline leaves it.
Outcome extractLine(std::streambuf* source, char* buffer, std::size_t& stored) {
    const std::size_t capacity = LINE_BUFFER_SIZE - 1;
    stored = 0;
    for (;;) {
        char* next = GetArea::next(source);
        char* end = GetArea::end(source);
        if (next == end) {
            int c = source->sgetc();
            if (c == std::char_traits<char>::eof()) return Outcome::EndOfFile;
            next = GetArea::next(source);
            end = GetArea::end(source);
            if (next == end) {
                // A buffer without a get area hands out single characters.
                if (c != '\n' && stored == capacity) return Outcome::TooLong;
                source->sbumpc();
                if (c == '\n') return Outcome::Line;
                buffer[stored++] = static_cast<char>(c);
                buffer[stored] = '\0';
                continue;
            }
        }
        std::size_t available = static_cast<std::size_t>(end - next);
        if (stored == capacity) {
            if (*next != '\n') return Outcome::TooLong;
            GetArea::advance(source, 1);
            return Outcome::Line;
        }
        std::size_t room = capacity - stored;
        std::size_t scan = available < room ? available : room;
        const char* feed = static_cast<const char*>(std::memchr(next, '\n', scan));
        std::size_t take = feed != nullptr ? static_cast<std::size_t>(feed - next) : scan;
        std::memcpy(buffer + stored, next, take);
        stored += take;
        buffer[stored] = '\0';
        if (feed != nullptr) {
            GetArea::advance(source, take + 1);
            return Outcome::Line;
        }
        GetArea::advance(source, take);
    }
}

// True for a line that starts with a UTF-16 byte-order mark, or whose every
// other byte is NUL: the signs of 16-bit text, where each ASCII character is
// a byte and a NUL.
bool looksLikeUtf16(const char* line, std::size_t length) {
    if (length < 2) return false;
    const unsigned char first = static_cast<unsigned char>(line[0]);
    const unsigned char second = static_cast<unsigned char>(line[1]);
    if ((first == 0xFF && second == 0xFE) || (first == 0xFE && second == 0xFF)) return true;
    for (std::size_t parity = 0; parity < 2; ++parity) {
        bool allNul = true;
        for (std::size_t i = parity; i < length && allNul; i += 2) allNul = line[i] == '\0';
        if (allNul) return true;
    }
    return false;
}

}  // namespace

LineRead readLine(MessageTable& table, std::istream& in, char* buffer) {
    buffer[0] = '\0';
    std::size_t stored = 0;
    // Leave the stream in the state getline would leave it in: a stream that
    // is no longer good reads nothing and fails, keeping its end-of-file mark.
    std::ios_base::iostate state = std::ios_base::failbit;
    if (in.good()) {
        try {
            switch (extractLine(in.rdbuf(), buffer, stored)) {
                case Outcome::Line:
                    state = std::ios_base::goodbit;
                    break;
                case Outcome::EndOfFile:
                    state = stored == 0 ? std::ios_base::eofbit | std::ios_base::failbit
                                        : std::ios_base::eofbit;
                    break;
                case Outcome::TooLong:
                    state = std::ios_base::failbit;
                    break;
            }
        } catch (const std::exception&) {
            // The stream buffer reports a failing read by throwing; getline
            // turns that into badbit.
            state = std::ios_base::badbit;
        }
    }
    if (state != std::ios_base::goodbit) in.setstate(state);

    table.lineNumber += 1;
    if (in.bad()) {
        throw parseError(table, "Read error: the file could not be read to its end");
    }
    bool atEnd = in.eof();
    if (!atEnd && in.fail()) {
        throw parseError(table, "Line too long: \"%.*s...\" (at most %d characters)", QUOTED_PREFIX,
                         buffer, LINE_BUFFER_SIZE - 1);
    }
    // A NUL byte would silently end the line for every reader after this one
    // (a UTF-16 file, for instance, would read as blank lines): refuse it.
    const void* nul = std::memchr(buffer, '\0', stored);
    if (nul != nullptr) {
        int column = static_cast<int>(static_cast<const char*>(nul) - buffer) + 1;
        const char* kind = looksLikeUtf16(buffer, stored) ? "the file looks like UTF-16; " : "";
        throw parseError(table, "NUL byte in column %d: %smessage files are read as 8-bit text",
                         column, kind);
    }
    return atEnd ? LineRead::EndOfFile : LineRead::Line;
}
