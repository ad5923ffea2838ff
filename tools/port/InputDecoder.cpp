// Encoding detection, transcoding through iconv and line splitting.
#include "InputDecoder.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

namespace {

const char CTRL_Z = '\x1A';

bool startsWith(const std::string& bytes, const char* prefix, size_t length) {
    return bytes.size() >= length && bytes.compare(0, length, prefix, length) == 0;
}

// "UTF-16LE" or "UTF-16BE" when NUL bytes show UTF-16 without a mark: ASCII
// characters have their NUL in the high byte, which comes second in LE.
std::string utf16WithoutMark(const std::string& bytes) {
    size_t sample = std::min<size_t>(bytes.size(), 4096);
    size_t evenNuls = 0, oddNuls = 0;
    for (size_t i = 0; i < sample; ++i) {
        if (bytes[i] == '\0') ++(i % 2 ? oddNuls : evenNuls);
    }
    if (evenNuls + oddNuls == 0) return "";
    return oddNuls >= evenNuls ? "UTF-16LE" : "UTF-16BE";
}

size_t lineOf(const std::string& text, size_t end) {
    return 1 + static_cast<size_t>(std::count(text.begin(), text.begin() + end, '\n'));
}

class Converter {
public:
    explicit Converter(const std::string& from)
        : handle_(iconv_open("UTF-8", from.c_str())), from_(from) {}
    ~Converter() {
        if (ok()) iconv_close(handle_);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    bool ok() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    // `bytes` in UTF-8; throws PortError at the first sequence that does not convert.
    std::string convert(const std::string& bytes) {
        std::string out(bytes.size() * 2 + 16, '\0');
        char* in = const_cast<char*>(bytes.data());
        size_t inLeft = bytes.size();
        size_t produced = 0;
        while (inLeft > 0) {
            char* target = &out[produced];
            size_t outLeft = out.size() - produced;
            size_t result = iconv(handle_, &in, &inLeft, &target, &outLeft);
            produced = out.size() - outLeft;
            if (result != static_cast<size_t>(-1)) break;
            if (errno == E2BIG) {
                out.resize(out.size() * 2);
                continue;
            }
            out.resize(produced);
            throw PortError{static_cast<int>(lineOf(out, out.size())),
                            "the input does not decode as " + from_ + " (byte offset " +
                                std::to_string(bytes.size() - inLeft) + ")"};
        }
        out.resize(produced);
        return out;
    }

private:
    iconv_t handle_;
    std::string from_;
};

std::string transcode(const std::string& bytes, const std::string& from) {
    Converter converter(from);
    if (!converter.ok()) throw PortError{0, "iconv cannot convert from " + from};
    return converter.convert(bytes);
}

// The text as UTF-8 (or kept 8-bit), its encoding named in `encoding`.
std::string decodeText(const std::string& bytes, const std::string& codePage, std::string& encoding,
                       PortReport& report) {
    std::string unicode;
    if (startsWith(bytes, "\xFF\xFE", 2)) {
        encoding = "UTF-16LE";
        unicode = transcode(bytes.substr(2), encoding);
    } else if (startsWith(bytes, "\xFE\xFF", 2)) {
        encoding = "UTF-16BE";
        unicode = transcode(bytes.substr(2), encoding);
    } else if (startsWith(bytes, "\xEF\xBB\xBF", 3)) {
        encoding = "UTF-8";
        unicode = bytes.substr(3);
    } else if (!(encoding = utf16WithoutMark(bytes)).empty()) {
        unicode = transcode(bytes, encoding);
    } else if (!codePage.empty()) {
        encoding = codePage;
        return transcode(bytes, codePage);
    } else {
        encoding = "8-bit, kept as it is";
        return bytes;
    }
    if (!codePage.empty()) {
        report.warn(0, WarningKind::Dropped,
                    "the input is " + encoding + ": the code page " + codePage + " is not used");
    }
    return unicode;
}

void checkNoNul(const std::string& text) {
    size_t nul = text.find('\0');
    if (nul != std::string::npos) {
        throw PortError{static_cast<int>(lineOf(text, nul)), "a NUL character in the text"};
    }
}

std::vector<std::string> splitLines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        size_t stop = end > start && text[end - 1] == '\r' ? end - 1 : end;
        lines.emplace_back(text, start, stop - start);
        start = end + 1;
    }
    return lines;
}

}  // namespace

bool knownCodePage(const std::string& codePage) { return Converter(codePage).ok(); }

DecodedInput decodeInput(const std::string& bytes, const std::string& codePage,
                         PortReport& report) {
    DecodedInput input;
    std::string text = decodeText(bytes, codePage, input.encoding, report);
    size_t end = text.find(CTRL_Z);
    if (end != std::string::npos) {
        report.warn(static_cast<int>(lineOf(text, end)), WarningKind::Dropped,
                    "a Ctrl-Z (0x1A) ends the file here: the rest is ignored");
        text.resize(end);
    }
    checkNoNul(text);
    input.lines = splitLines(text);
    return input;
}
