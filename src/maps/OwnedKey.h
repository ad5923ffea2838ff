// Internal: the private key copies of the text-keyed maps.
#ifndef TQMSG_OWNED_KEY_H
#define TQMSG_OWNED_KEY_H

#include <cstring>
#include <memory>
#include <utility>

// Adds `text` -> `value` to a map keyed by `const char*` texts that it owns,
// the key being a new[] copy of `text`; a map that holds `text` already is
// left unchanged. Returns the entry of `text` and whether it was added, as
// emplace does. One search serves both the test and the insertion, and the
// copy is made only for a new key (freed again if the insertion throws).
template <typename Map>
std::pair<typename Map::iterator, bool> emplaceOwnedKey(Map& map, const char* text,
                                                        typename Map::mapped_type value) {
    auto position = map.lower_bound(text);
    if (position != map.end() && std::strcmp(position->first, text) == 0) {
        return {position, false};
    }
    std::size_t size = std::strlen(text) + 1;
    std::unique_ptr<char[]> key(new char[size]);
    std::memcpy(key.get(), text, size);
    auto added = map.emplace_hint(position, key.get(), std::move(value));
    key.release();  // the map owns it now
    return {added, true};
}

// Releases every key copy of a map whose keys are owned `const char*` texts.
template <typename Map>
void releaseKeys(Map& map) {
    for (auto& entry : map) {
        delete[] entry.first;
    }
    map.clear();
}

#endif  // TQMSG_OWNED_KEY_H
