// Names and keywords compared as the library's reader compares them: ASCII
// letters without regard to case, every other byte as it is (whatever the
// program's locale).
#ifndef TQMSG_PORT_CASELESS_H
#define TQMSG_PORT_CASELESS_H

#include <string>

inline char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string lowerCase(std::string text) {
    for (char& c : text) c = asciiLower(c);
    return text;
}

// True when the lower-case `keyword` stands in `text` at `at`, in any case.
inline bool startsCaseless(const std::string& text, size_t at, const char* keyword) {
    for (; *keyword != '\0'; ++keyword, ++at) {
        if (at >= text.size() || asciiLower(text[at]) != *keyword) return false;
    }
    return true;
}

// The first position of the lower-case `keyword` in `text`, in any case; npos
// when it is not there.
inline size_t findCaseless(const std::string& text, const char* keyword) {
    for (size_t at = 0; *keyword != '\0' && at < text.size(); ++at) {
        if (startsCaseless(text, at, keyword)) return at;
    }
    return std::string::npos;
}

#endif  // TQMSG_PORT_CASELESS_H
