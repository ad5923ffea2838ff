// Conversion of texts between character sets, through the C library's iconv.
// Message files are 8-bit text in whatever encoding their author chose; PO
// files name their encoding in the header.
#ifndef TQMSG_PO_CHARSET_H
#define TQMSG_PO_CHARSET_H

#include <iconv.h>

#include <string>

class TextConverter {
public:
    // Throws PoFailure when iconv knows no conversion between the two sets.
    TextConverter(const std::string& from, const std::string& to);
    ~TextConverter();
    TextConverter(const TextConverter&) = delete;
    TextConverter& operator=(const TextConverter&) = delete;

    // `text` in the target set. False, with `failedAt` the byte offset in
    // `text`, for an invalid sequence or a character the target lacks.
    bool convert(const std::string& text, std::string& converted, std::size_t& failedAt);

private:
    iconv_t handle_;
};

// The same set under two spellings ("utf8", "UTF-8")?
bool sameCharset(const std::string& a, const std::string& b);

#endif  // TQMSG_PO_CHARSET_H
