#include "EntryFields.h"

#include <cstring>

namespace tqmsg_journal {

void EntryFields::clear() {
    storage_.clear();
    spans_.clear();
}

void EntryFields::add(const char* name, const char* value, std::size_t length) {
    std::size_t offset = storage_.size();
    storage_.append(name).append(1, '=').append(value, length);
    spans_.emplace_back(offset, storage_.size() - offset);
}

void EntryFields::truncate(std::size_t count) {
    if (count >= spans_.size()) return;
    storage_.resize(spans_[count].first);
    spans_.resize(count);
}

const std::vector<iovec>& EntryFields::iovecs() {
    iovecs_.clear();
    for (const auto& span : spans_) {
        iovecs_.push_back(iovec{&storage_[span.first], span.second});
    }
    return iovecs_;
}

}  // namespace tqmsg_journal
