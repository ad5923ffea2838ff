// Internal: the private key copies of the text-keyed maps.
#ifndef TQMSG_OWNED_KEY_H
#define TQMSG_OWNED_KEY_H

#include <cstring>
#include <memory>

// A NUL-terminated new[] copy of `text`. The holder owns it until the copy is
// handed to a map (release()), so a refused or failed insertion frees it.
inline std::unique_ptr<char[]> copyKey(const char* text) {
    std::size_t length = std::strlen(text);
    std::unique_ptr<char[]> copy(new char[length + 1]);
    std::memcpy(copy.get(), text, length + 1);
    return copy;
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
