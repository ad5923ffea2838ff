#include "parser/LineReader.h"

#include <cstring>

#include "maps/FailureText.h"

namespace {

// Characters of the beginning of an over-long line quoted in its error text.
const int QUOTED_PREFIX = 40;

}  // namespace

LineRead readLine(MessageTable& table, std::istream& in, char* buffer) {
    buffer[0] = '\0';
    in.getline(buffer, LINE_BUFFER_SIZE, '\n');
    table.lineNumber += 1;
    if (in.bad()) {
        throw table.wrapError("Read error: the file could not be read to its end");
    }
    bool atEnd = in.eof();
    if (!atEnd && in.fail()) {
        // getline stops with failbit, before the end of the file, only when the
        // buffer is full and the line goes on.
        throw table.wrapError(FailureText("Line too long: \"%.*s...\" (at most %d characters)",
                                          QUOTED_PREFIX, buffer, LINE_BUFFER_SIZE - 1)
                                  .text);
    }
    // A NUL byte would silently end the line for every reader after this one
    // (a UTF-16 file, for instance, would read as blank lines): refuse it.
    std::streamsize stored = in.gcount() - (atEnd ? 0 : 1);
    const void* nul = std::memchr(buffer, '\0', static_cast<std::size_t>(stored));
    if (nul != nullptr) {
        int column = static_cast<int>(static_cast<const char*>(nul) - buffer) + 1;
        throw table.wrapError(
            FailureText("NUL byte in column %d: message files are read as 8-bit text", column)
                .text);
    }
    return atEnd ? LineRead::EndOfFile : LineRead::Line;
}
