// The fields of one journal entry, "NAME=value" each, built in one buffer
// and handed to sd_journal_sendv as an iovec array.
#ifndef TQMSG_JOURNAL_ENTRY_FIELDS_H
#define TQMSG_JOURNAL_ENTRY_FIELDS_H

#include <sys/uio.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace tqmsg_journal {

class EntryFields {
public:
    // Empties the entry, keeping the memory for the next one.
    void clear();
    // Adds NAME=value, the value `length` bytes (line feeds and NULs allowed).
    void add(const char* name, const char* value, std::size_t length);
    void add(const char* name, const std::string& value) { add(name, value.data(), value.size()); }
    // Fields added so far; `truncate` drops those added after that count.
    std::size_t count() const { return spans_.size(); }
    void truncate(std::size_t count);
    // The fields as iovecs, valid until the next change of the entry.
    const std::vector<iovec>& iovecs();

private:
    std::string storage_;
    std::vector<std::pair<std::size_t, std::size_t>> spans_;  // offset, length
    std::vector<iovec> iovecs_;
};

}  // namespace tqmsg_journal

#endif  // TQMSG_JOURNAL_ENTRY_FIELDS_H
