// Internal: the one line reader of the parser.
#ifndef TQMSG_PARSER_LINE_READER_H
#define TQMSG_PARSER_LINE_READER_H

#include <istream>

#include "MessageTable.h"

// Size of every line buffer of the parser: a line holds at most 4095
// characters plus the terminating NUL.
const int LINE_BUFFER_SIZE = 4096;

enum class LineRead {
    Line,       // a whole line was read; its line feed is consumed, not stored
    EndOfFile,  // the read met the end of the file; the buffer holds what it got
};

// Reads the next line of `in` into `buffer` (LINE_BUFFER_SIZE bytes, always
// NUL-terminated) and counts it in `table.lineNumber`, the read that meets the
// end of the file included. A line too long for the buffer and a stream that
// fails before its end are errors thrown through `table.wrapError`, naming the
// line: the reader never splits, truncates or loops.
LineRead readLine(MessageTable& table, std::istream& in, char* buffer);

#endif  // TQMSG_PARSER_LINE_READER_H
