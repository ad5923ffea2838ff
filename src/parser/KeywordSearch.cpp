#include "parser/KeywordSearch.h"

#include <cctype>
#include <cstring>
#include <string>

namespace {

// libc's tolower of a byte, as toLowerCase applies it.
struct Lowering {
#ifdef __GLIBC__
    // The locale's table, read once per line instead of once per byte.
    const int32_t* table = *__ctype_tolower_loc();
    char operator()(char c) const {
        return static_cast<char>(table[static_cast<unsigned char>(c)]);
    }
#else
    char operator()(char c) const {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
#endif
};

bool matchesAt(const Lowering& lower, const char* text, const char* keyword, std::size_t length) {
    for (std::size_t i = 1; i < length; ++i) {
        if (lower(text[i]) != keyword[i]) return false;
    }
    return true;
}

}  // namespace

KeywordSet::KeywordSet(const char* const* keywords, int count)
    : keywords_(keywords), count_(count) {
    std::memset(startingWith_, 0, sizeof startingWith_);
    std::memset(secondIs_, 0, sizeof secondIs_);
    for (int k = 0; k < count; ++k) {
        lengths_[k] = std::strlen(keywords[k]);
        startingWith_[static_cast<unsigned char>(keywords[k][0])] |= static_cast<uint8_t>(1u << k);
        secondIs_[static_cast<unsigned char>(keywords[k][1])] |= static_cast<uint8_t>(1u << k);
    }
}

int KeywordSet::firstFound(const char* text, std::size_t length, std::size_t& position) const {
    const Lowering lower;
    std::size_t found[MAX_KEYWORDS];
    int best = count_;                      // rank of the best keyword found so far
    unsigned wanted = (1u << count_) - 1u;  // the keywords ranked above it
    for (std::size_t at = 0; at < length && wanted != 0; ++at) {
        unsigned candidates = startingWith_[static_cast<unsigned char>(lower(text[at]))] & wanted;
        if (__builtin_expect(candidates == 0, 1)) continue;
        // Most letters that start a keyword are not followed by its second
        // letter; the byte after the last one is the terminating NUL.
        candidates &= secondIs_[static_cast<unsigned char>(lower(text[at + 1]))];
        for (; candidates != 0; candidates &= candidates - 1) {
            int k = __builtin_ctz(candidates);
            if (lengths_[k] <= length - at &&
                matchesAt(lower, text + at, keywords_[k], lengths_[k])) {
                // Its first occurrence: from now on only better keywords are wanted,
                // and the better ones were already tested at this byte.
                found[k] = at;
                best = k;
                wanted = (1u << k) - 1u;
                break;
            }
        }
    }
    if (best < count_) position = found[best];
    return best;
}
