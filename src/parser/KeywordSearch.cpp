#include "parser/KeywordSearch.h"

#include <cstring>

#include "maps/CaseFolding.h"

namespace {

bool matchesAt(const CaseFolder& lower, const char* text, const char* keyword, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) {
        if (lower(text[i]) != static_cast<unsigned char>(keyword[i])) return false;
    }
    return true;
}

}  // namespace

KeywordSet::KeywordSet(const char* const* keywords, int count)
    : keywords_(keywords), count_(count), window_(0) {
    for (int k = 0; k < count; ++k) {
        lengths_[k] = std::strlen(keywords[k]);
        if (k == 0 || lengths_[k] < window_) window_ = lengths_[k];
    }
    // A window whose last byte sits at place i of some keyword may hold that
    // keyword's start window_ - 1 - i bytes further on; the smallest such
    // distance over all keywords is the safe move (window_ when none has it).
    std::memset(shift_, static_cast<int>(window_), sizeof shift_);
    std::memset(endingWith_, 0, sizeof endingWith_);
    for (int k = 0; k < count; ++k) {
        for (std::size_t i = 0; i + 1 < window_; ++i) {
            uint8_t distance = static_cast<uint8_t>(window_ - 1 - i);
            uint8_t& shift = shift_[static_cast<unsigned char>(keywords[k][i])];
            if (distance < shift) shift = distance;
        }
        endingWith_[static_cast<unsigned char>(keywords[k][window_ - 1])] |=
            static_cast<uint8_t>(1u << k);
    }
}

int KeywordSet::firstFound(const char* text, std::size_t length, std::size_t& position) const {
    const CaseFolder lower;
    std::size_t found[MAX_KEYWORDS];
    int best = count_;                      // rank of the best keyword found so far
    unsigned wanted = (1u << count_) - 1u;  // the keywords ranked above it
    // Windows are tried in order of their start, so the first match of a
    // keyword is its first occurrence.
    for (std::size_t at = 0; at + window_ <= length && wanted != 0;) {
        unsigned char last = lower(text[at + window_ - 1]);
        for (unsigned candidates = endingWith_[last] & wanted; candidates != 0;
             candidates &= candidates - 1) {
            int k = __builtin_ctz(candidates);
            if (lengths_[k] <= length - at &&
                matchesAt(lower, text + at, keywords_[k], lengths_[k])) {
                // From now on only better keywords are wanted; the better ones
                // were already tested at this start.
                found[k] = at;
                best = k;
                wanted = (1u << k) - 1u;
                break;
            }
        }
        at += shift_[last];
    }
    if (best < count_) position = found[best];
    return best;
}
