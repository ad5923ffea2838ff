// Internal: decimal digits without printf.
#ifndef TQMSG_DECIMAL_TEXT_H
#define TQMSG_DECIMAL_TEXT_H

// Writes `magnitude` in decimal at `out`, after a "-" when `negative`: the
// text printf's "%d", "%ld" or "%u" gives for the value. No NUL is written;
// returns the end. `out` needs room for a sign and the digits of the widest
// value of `Unsigned` (21 bytes for 64 bits). Hot paths use it where a
// general printf would cost more than the rest of their work.
template <typename Unsigned>
char* appendDecimal(char* out, Unsigned magnitude, bool negative) {
    if (negative) *out++ = '-';
    char digits[20];
    int count = 0;
    do {
        digits[count++] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    while (count > 0) *out++ = digits[--count];
    return out;
}

#endif  // TQMSG_DECIMAL_TEXT_H
