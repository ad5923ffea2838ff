// iconv conversions of whole texts.
#include "Charset.h"

#include <cctype>
#include <cerrno>

#include "PoFailure.h"

TextConverter::TextConverter(const std::string& from, const std::string& to)
    : handle_(iconv_open(to.c_str(), from.c_str())) {
    if (handle_ == reinterpret_cast<iconv_t>(-1)) {
        throw PoFailure("cannot convert texts from " + from + " to " + to +
                        ": the character set is unknown");
    }
}

TextConverter::~TextConverter() { iconv_close(handle_); }

bool TextConverter::convert(const std::string& text, std::string& converted,
                            std::size_t& failedAt) {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);  // a fresh shift state per text
    converted.clear();
    std::string input = text;  // iconv's input pointer is not const
    char* in = &input[0];
    std::size_t inLeft = input.size();
    char chunk[1024];
    while (inLeft > 0) {
        char* out = chunk;
        std::size_t outLeft = sizeof(chunk);
        std::size_t result = iconv(handle_, &in, &inLeft, &out, &outLeft);
        converted.append(chunk, out - chunk);
        if (result == static_cast<std::size_t>(-1) && errno != E2BIG) {
            failedAt = input.size() - inLeft;
            return false;
        }
    }
    char* out = chunk;
    std::size_t outLeft = sizeof(chunk);
    iconv(handle_, nullptr, nullptr, &out, &outLeft);  // close a shift sequence
    converted.append(chunk, out - chunk);
    return true;
}

namespace {

// Upper case without "-" and "_": "utf-8", "UTF8" and "utf_8" compare equal.
std::string charsetKey(const std::string& name) {
    std::string key;
    for (char c : name) {
        if (c != '-' && c != '_')
            key += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return key;
}

}  // namespace

bool sameCharset(const std::string& a, const std::string& b) {
    return charsetKey(a) == charsetKey(b);
}
