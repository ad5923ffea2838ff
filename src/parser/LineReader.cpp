#include "parser/LineReader.h"

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
    if (in.eof()) {
        return LineRead::EndOfFile;
    }
    if (in.fail()) {
        // getline stops with failbit, before the end of the file, only when the
        // buffer is full and the line goes on.
        throw table.wrapError(FailureText("Line too long: \"%.*s...\" (at most %d characters)",
                                          QUOTED_PREFIX, buffer, LINE_BUFFER_SIZE - 1)
                                  .text);
    }
    return LineRead::Line;
}
