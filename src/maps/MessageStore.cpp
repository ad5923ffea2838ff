// MultiLangMessageMap: the process-wide message store.
//
// `msgmap` is authoritative: one entry per (language id, message id) pair,
// keyed by the owned text "%ld.%ld" in strcmp order, each holding a map with
// exactly that one record. `index_` mirrors it by the numeric pair so that a
// lookup by identifier neither formats a key nor allocates. std::map nodes
// never move, so the index may point at the value maps and records inside
// `msgmap`. The index is a flat open-addressing table (linear probing, a
// power-of-two size, at most half full): a random lookup in a large store
// costs one cache miss for the slot instead of a walk through hash nodes,
// tree headers and tree nodes scattered over the heap.
#include "MessageModuleMaps.h"
#include "maps/DecimalText.h"
#include "maps/OwnedKey.h"

namespace {

// Both ids must already be normalised to 32 bits.
uint64_t pairKey(long languageId, long messageId) {
    return (static_cast<uint64_t>(static_cast<uint32_t>(languageId)) << 32) |
           static_cast<uint32_t>(messageId);
}

// Appends "%ld" of a 32-bit `value` at `out`; returns the end. Each key text
// is made once per stored pair.
char* appendSigned(char* out, long value) {
    uint32_t magnitude = static_cast<uint32_t>(value);
    return appendDecimal(out, value < 0 ? 0u - magnitude : magnitude, value < 0);
}

// The home slot of `key` in a table of `mask` + 1 slots (Fibonacci hashing:
// the high bits of the product mix both halves of the key).
std::size_t homeSlot(uint64_t key, std::size_t mask) {
    return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15ull) >> 32) & mask;
}

// The copy the store keeps: the record with its ids normalised to 32 bits.
FormattableMessage normalisedCopy(FormattableMessage& message) {
    FormattableMessage copy = message;
    copy.languageId = toInt32(copy.languageId);
    copy.facilityId = toInt32(copy.facilityId);
    copy.severityId = toInt32(copy.severityId);
    return copy;
}

// The store's notion of a repeated definition: same text, facility and severity.
bool sameDefinition(FormattableMessage& stored, FormattableMessage& message) {
    return stored.text == message.text && stored.facilityId == toInt32(message.facilityId) &&
           stored.severityId == toInt32(message.severityId);
}

}  // namespace

MultiLangMessageMap::~MultiLangMessageMap() {
    index_.clear();
    releaseKeys(msgmap);
}

MultiLangMessageMap::IndexSlot* MultiLangMessageMap::findSlot(uint64_t key) {
    if (index_.empty()) {
        return nullptr;
    }
    std::size_t mask = index_.size() - 1;
    for (std::size_t at = homeSlot(key, mask);; at = (at + 1) & mask) {
        IndexSlot& slot = index_[at];
        if (slot.records == nullptr) {
            return nullptr;
        }
        if (slot.key == key) {
            return &slot;
        }
    }
}

void MultiLangMessageMap::addToIndex(uint64_t key, MessageIdMap* records) {
    if (2 * (indexed_ + 1) > index_.size()) {
        std::vector<IndexSlot> previous(index_.size() ? 2 * index_.size() : 64,
                                        IndexSlot{0, nullptr, nullptr, nullptr});
        previous.swap(index_);  // index_ is now the larger, empty table
        indexed_ = 0;
        for (IndexSlot& slot : previous) {
            if (slot.records != nullptr) {
                addToIndex(slot.key, slot.records);
            }
        }
    }
    std::size_t mask = index_.size() - 1;
    std::size_t at = homeSlot(key, mask);
    while (index_[at].records != nullptr) {
        at = (at + 1) & mask;
    }
    FormattableMessage* message = &records->begin()->second;
    index_[at] = IndexSlot{key, records, message, message->text.data()};
    ++indexed_;
}

MultiLangMessageMap::MessageIdMap* MultiLangMessageMap::get(long languageId, long messageId,
                                                            FormattableMessage*& message) {
    message = nullptr;
    IndexSlot* slot = findSlot(pairKey(toInt32(languageId), toInt32(messageId)));
    if (slot == nullptr) {
        return nullptr;
    }
    // The record and its text usually sit in two distant cache lines; fetching
    // the text while the caller reads the record overlaps the two misses. The
    // hint may be stale (a caller may assign a record's text through the
    // pointer): a prefetch never faults, and the text is always read from the
    // record itself.
    __builtin_prefetch(slot->textHint);
    message = slot->message;
    return slot->records;
}

MultiLangMessageMap::MessageIdMap* MultiLangMessageMap::get(long languageId,
                                                            std::string& symbolicName,
                                                            FormattableMessage*& message) {
    message = nullptr;
    long* messageId = idmap.get(symbolicName);
    return messageId == nullptr ? nullptr : get(languageId, *messageId, message);
}

bool MultiLangMessageMap::put(long languageId, long messageId, FormattableMessage& message) {
    languageId = toInt32(languageId);
    messageId = toInt32(messageId);
    FormattableMessage* stored = nullptr;
    if (get(languageId, messageId, stored) != nullptr) {
        if (!sameDefinition(*stored, message)) {
            *stored = normalisedCopy(message);
            findSlot(pairKey(languageId, messageId))->textHint = stored->text.data();
        }
        return false;
    }

    // The key text is "%ld.%ld" of the pair; "-2147483648.-2147483648" is the
    // longest, 23 characters.
    char keyText[100];
    char* end = appendSigned(keyText, languageId);
    *end++ = '.';
    *appendSigned(end, messageId) = '\0';
    MessageIdMap& records = emplaceOwnedKey(msgmap, keyText, MessageIdMap()).first->second;
    records.emplace(messageId, normalisedCopy(message));
    addToIndex(pairKey(languageId, messageId), &records);
    return true;
}

// A symbolic name stays bound to the identifier it was first stored with; a
// later message under that name is filed under that identifier. One search of
// `idmap` finds the bound identifier or binds the new name.
bool MultiLangMessageMap::put(long languageId, std::string& symbolicName, long messageId,
                              FormattableMessage& message) {
    auto binding = emplaceOwnedKey(idmap.entries, symbolicName.c_str(), toInt32(messageId));
    return put(languageId, binding.first->second, message);
}
