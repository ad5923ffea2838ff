// Oversized widths and precisions, formatted from bounded snprintf calls.
//
// What snprintf prints for one conversion is a body, padded to the width by
// a run of one character (blanks before or after it, or zeros after a sign or
// a "0x"). The body is printed with the precision cut to LARGEST_DIRECT_FIELD
// (which changes only characters far beyond the insert's limit, and adds up
// exactly: see bodyLength); where the padding goes and with what character is
// learnt from a second call with a width one more than the body. Only the
// first characters, up to the insert's limit, are ever produced.
#include "module/OversizedField.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "maps/FailureText.h"

namespace {

// The window of each bounded call: more than any insert's limit.
const std::size_t WINDOW = 1024;

// Appends to a buffer of fixed capacity, dropping whatever does not fit.
class BoundedText {
public:
    BoundedText(char* buffer, std::size_t capacity) : buffer_(buffer), capacity_(capacity) {}

    void append(const char* data, std::size_t length) {
        length = std::min(length, capacity_ - size_);
        std::memcpy(buffer_ + size_, data, length);
        size_ += length;
    }
    void appendRepeated(char c, unsigned long long count) {
        std::size_t length =
            static_cast<std::size_t>(std::min<unsigned long long>(count, capacity_ - size_));
        std::memset(buffer_ + size_, c, length);
        size_ += length;
    }
    std::size_t finish() {
        buffer_[size_] = '\0';
        return size_;
    }

private:
    char* buffer_;
    std::size_t capacity_;
    std::size_t size_ = 0;
};

// Appends literal format text, in which each "%%" prints one percent sign.
void appendLiteral(BoundedText& out, const char* begin, const char* end) {
    while (begin < end) {
        const char* percent = static_cast<const char*>(std::memchr(begin, '%', end - begin));
        if (percent == nullptr) {
            out.append(begin, static_cast<std::size_t>(end - begin));
            return;
        }
        out.append(begin, static_cast<std::size_t>(percent + 1 - begin));
        begin = percent + 2;
    }
}

// The conversion of `format` with the given width (NO_FIELD: none) and its
// precision cut to LARGEST_DIRECT_FIELD.
std::string boundedConversion(const char* format, const InsertConversion& conversion, long width) {
    std::string text(format + conversion.conversionBegin,
                     conversion.flagsEnd - conversion.conversionBegin);
    if (width != NO_FIELD) text += std::to_string(width);
    if (conversion.precision != NO_FIELD) {
        text += '.';
        text += std::to_string(std::min(conversion.precision, LARGEST_DIRECT_FIELD));
    }
    text += conversion.printedModifier;
    text += conversion.conversion;
    return text;
}

int printWindow(const PrintableValue& value, char (&window)[WINDOW], const std::string& text) {
    int length = value.print(value.value, window, sizeof window, text.c_str());
    if (length < 0)
        throw moduleFailure("The insert format \"%s\" cannot be formatted", text.c_str());
    return length;
}

// The length of the body printed with the whole precision, from the length
// `printed` it has with the precision cut. A text is as long as it is, up to
// the precision. Otherwise a body that reached the cut precision holds that
// many digits, and the rest of the precision adds one zero each; a shorter
// one (a character, "(nil)", inf, or %g without "#") does not grow with it.
unsigned long long bodyLength(const InsertConversion& conversion, const PrintableValue& value,
                              int printed) {
    unsigned long long length = static_cast<unsigned long long>(printed);
    if (conversion.precision <= LARGEST_DIRECT_FIELD || printed < LARGEST_DIRECT_FIELD) {
        return length;
    }
    if (conversion.conversion == 's') {
        return value.textLength(value.value, static_cast<std::size_t>(conversion.precision));
    }
    return length + static_cast<unsigned long long>(conversion.precision - LARGEST_DIRECT_FIELD);
}

// Appends the body padded to the width.
void appendField(BoundedText& out, const char* format, const InsertConversion& conversion,
                 const PrintableValue& value) {
    char body[WINDOW];
    int printed = printWindow(value, body, boundedConversion(format, conversion, NO_FIELD));
    std::size_t visible = std::min(static_cast<std::size_t>(printed), WINDOW - 1);
    unsigned long long length = bodyLength(conversion, value, printed);
    if (conversion.width == NO_FIELD ||
        static_cast<unsigned long long>(conversion.width) <= length) {
        out.append(body, visible);
        return;
    }
    // One character of padding shows where the padding goes: the first
    // position at which the padded body differs from the body.
    char padded[WINDOW];
    int paddedLength =
        printWindow(value, padded, boundedConversion(format, conversion, printed + 1));
    std::size_t paddedVisible = std::min(static_cast<std::size_t>(paddedLength), WINDOW - 1);
    std::size_t at = 0;
    while (at < visible && at < paddedVisible && body[at] == padded[at]) ++at;
    if (at >= paddedVisible) {
        out.append(body, visible);  // the padding starts beyond the window
        return;
    }
    out.append(body, at);
    out.appendRepeated(padded[at], static_cast<unsigned long long>(conversion.width) - length);
    out.append(body + at, visible - at);
}

}  // namespace

std::size_t printBounded(const char* format, const InsertConversion& conversion,
                         const PrintableValue& value, std::size_t limit, char* buffer) {
    BoundedText out(buffer, std::min(limit, WINDOW) - 1);
    appendLiteral(out, format, format + conversion.conversionBegin);
    if (conversion.type != InsertValueType::None) appendField(out, format, conversion, value);
    appendLiteral(out, format + conversion.conversionEnd, format + conversion.length);
    return out.finish();
}
