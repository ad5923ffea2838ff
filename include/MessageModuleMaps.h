// tqmsg: the message data model.
//
// The value types and containers of a loaded message catalogue: the 32-bit
// message identifier helpers, the records `FormattableMessage` and `Facility`,
// the two exception types, the name/identifier maps (`IDMap`, `IDReverseMap`,
// `DualIDMap`, `FacilityMap`), the process-wide message store
// (`MultiLangMessageMap`) and the registry of loaded files (`MessageTableMap`),
// each with its text rendering (`operator<<` and `toString()`).
//
// Ownership: text-keyed maps own private `new[]` copies of their keys; the
// store owns its records; the registry owns the tables it holds (destroyed only
// by `clear`). None of these classes is copyable.
//
// Identifiers are 32-bit signed values held in a `long`. On LP64 platforms
// every identifier that enters the library is normalised with `toInt32`, so
// keys, lookups and renderings are the same on i386 and x86-64.
//
// Thread safety: nothing is locked. `put` and `clear` must not overlap any
// other use of the same container; `get` calls alone may run side by side.
#ifndef TQMSG_MESSAGE_MODULE_MAPS_H
#define TQMSG_MESSAGE_MODULE_MAPS_H

#include <cstdint>
#include <cstring>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#define TQMSG_API __attribute__((visibility("default")))

class MessageTable;

// The 32-bit signed value of `value`: its low 32 bits, sign-extended.
// The identity on i386; on x86-64 it folds any wider value onto the same
// pattern an i386 `long` would hold.
inline long toInt32(long value) {
    return static_cast<long>(static_cast<int32_t>(static_cast<uint32_t>(value)));
}

// "0x%lx (%ld)" of the 32-bit value: "0xffffffff (-1)" for -1 on every platform.
TQMSG_API std::string toHex(long value);

// A copy of `s` with every byte passed through libc's `tolower`; `s` is unchanged.
TQMSG_API std::string toLowerCase(std::string& s);

// Byte-wise `strcmp` order of NUL-terminated keys: "1033.10" < "1033.9".
struct ltstr {
    bool operator()(const char* a, const char* b) const { return std::strcmp(a, b) < 0; }
};

// Thrown by module-level operations (file loading, formatting). `msg` holds
// the complete text; there is deliberately no base class and no `what()`.
class TQMSG_API MessageModuleException {
public:
    std::string msg;  // the complete, formatted failure text

    explicit MessageModuleException(const char* text) : msg(text) {}
};

// Thrown by the message file parser; `msg` carries the file name and line.
class TQMSG_API MessageTableParserException {
public:
    std::string msg;  // the complete, formatted failure text

    explicit MessageTableParserException(const char* text) : msg(text) {}
};

// One message text in one language. It does not know its own message
// identifier: that exists only as the store's key.
class TQMSG_API FormattableMessage {
public:
    std::string text;          // text as assembled by the parser; escapes and inserts kept
    std::string symbolicName;  // the SymbolicName of the definition (rendered as "msgID")
    long languageId = 0;       // language the text is written in
    long facilityId = 0;       // id of the message's facility
    long severityId = 0;       // id of the message's severity

    std::string toString();
};

// One declared facility and its message counter.
class TQMSG_API Facility {
public:
    long id = 0;       // facility code; only the low 12 bits enter identifiers
    long msgId = 1;    // next message code of this facility
    std::string name;  // the symbol declared with the facility (may be empty)

    std::string toString();
};

// Name -> id. Names are matched exactly (case-sensitive). Owns its key copies.
class TQMSG_API IDMap {
public:
    std::map<const char*, long, ltstr> entries;  // keys are owned new[] copies

    IDMap() = default;
    IDMap(const IDMap&) = delete;
    IDMap& operator=(const IDMap&) = delete;
    ~IDMap();

    // The id stored for exactly `name`, or null. Points into the map.
    long* get(std::string& name);
    // True when added; false when `name` is present (its id stays unchanged).
    bool put(std::string& name, long id);
    std::string toString();
};

// Id -> text, in ascending signed order of the id.
class TQMSG_API IDReverseMap {
public:
    std::map<long, std::string> entries;

    // The text stored for `id`, or null. Points into the map.
    std::string* get(long id);
    // True when added; false when `id` is present (its text stays unchanged).
    bool put(long id, std::string& text);
    std::string toString();
};

// Name -> id and id -> text side by side, with a policy for repeated and
// conflicting definitions (see `put`). The X variants lower-case the name.
class TQMSG_API DualIDMap {
public:
    IDMap forward;                 // name -> id
    IDReverseMap reverse;          // id -> text
    bool allowDuplicates = false;  // accept repeats (and, on request, conflicts)

    DualIDMap() = default;
    DualIDMap(const DualIDMap&) = delete;
    DualIDMap& operator=(const DualIDMap&) = delete;
    ~DualIDMap();

    std::string* get(long id);
    // The text of the id that `name` (exactly as passed) maps to; null if either is absent.
    std::string* get(std::string& name);
    long* getID(std::string& name);
    long* getIDX(std::string& name);
    // True when the definition is new or an accepted repeat or conflict. A refusal
    // may leave the name entry it had already added.
    bool put(std::string& name, long id, std::string& text, bool ignoreConflicts);
    bool putX(std::string& name, long id, std::string& text, bool ignoreConflicts);
    std::string toString();
};

// Lower-cased facility name -> id -> Facility record.
class TQMSG_API FacilityMap {
public:
    IDMap forward;                  // lower-cased name -> id
    std::map<long, Facility> byId;  // id -> owned record

    FacilityMap() = default;
    FacilityMap(const FacilityMap&) = delete;
    FacilityMap& operator=(const FacilityMap&) = delete;
    ~FacilityMap();

    // The record stored under `id`, or null. Changes through it change the map.
    Facility* get(long id);
    // The record of `name` (case-insensitive), or null.
    Facility* get(std::string& name);
    // False when the name is present in any case; otherwise adds the name and,
    // when `id` is new, a copy of `facility`; returns `ignoreConflicts` or whether
    // the record was added.
    bool put(std::string& name, long id, Facility& facility, bool ignoreConflicts);
    std::string toString();
};

// The process-wide message store: (language id, message id) -> record, keyed
// by the text "%ld.%ld" in strcmp order, plus symbolic name -> message id.
class TQMSG_API MultiLangMessageMap {
public:
    typedef std::map<long, FormattableMessage> MessageIdMap;

    IDMap idmap;                                        // symbolic name -> message id
    std::map<const char*, MessageIdMap, ltstr> msgmap;  // "%ld.%ld" (owned copy) -> one record

    MultiLangMessageMap() = default;
    MultiLangMessageMap(const MultiLangMessageMap&) = delete;
    MultiLangMessageMap& operator=(const MultiLangMessageMap&) = delete;
    ~MultiLangMessageMap();

    // Sets `message` to the stored record and returns its value map, or returns
    // null with `message` null. Allocates nothing.
    MessageIdMap* get(long languageId, long messageId, FormattableMessage*& message);
    MessageIdMap* get(long languageId, std::string& symbolicName, FormattableMessage*& message);
    // True when the pair was new. A present pair returns false and is replaced in
    // place unless text, facility and severity are all equal.
    bool put(long languageId, long messageId, FormattableMessage& message);
    // Files the record under the id first bound to `symbolicName` (binding it to
    // `messageId` when the name is new).
    bool put(long languageId, std::string& symbolicName, long messageId,
             FormattableMessage& message);
    std::string toString();

private:
    // One slot of the private index: the pair (language id in the high half,
    // message id in the low half) and where its entry lives in `msgmap`.
    struct IndexSlot {
        uint64_t key;
        MessageIdMap* records;        // the entry's one-record map; null: a free slot
        FormattableMessage* message;  // that one record
        const char* textHint;         // the record's text when indexed; only prefetched
    };
    // Open-addressing index kept in step with `msgmap` by `put`, at most half
    // full: answers `get` by identifier without formatting a key text, in one
    // probe of a flat array.
    std::vector<IndexSlot> index_;
    std::size_t indexed_ = 0;  // slots in use

    IndexSlot* findSlot(uint64_t key);
    void addToIndex(uint64_t key, MessageIdMap* records);
};

// The registry of loaded files: file name (exactly as given) -> table.
class TQMSG_API MessageTableMap {
public:
    std::map<const char*, MessageTable*, ltstr> tables;  // owned key copies; tables owned

    MessageTableMap() = default;
    MessageTableMap(const MessageTableMap&) = delete;
    MessageTableMap& operator=(const MessageTableMap&) = delete;
    // Releases the key copies but not the tables.
    ~MessageTableMap();

    // The table registered under exactly `fileName`, or null.
    MessageTable* get(std::string& fileName);
    // True when registered; false (nothing kept, table not taken over) when present.
    bool put(std::string& fileName, MessageTable* table);
    // Destroys every registered table, in file-name order, and empties the registry.
    void clear();
    std::string toString();
};

TQMSG_API std::ostream& operator<<(std::ostream& out, IDMap& map);
TQMSG_API std::ostream& operator<<(std::ostream& out, IDReverseMap& map);
TQMSG_API std::ostream& operator<<(std::ostream& out, DualIDMap& map);
TQMSG_API std::ostream& operator<<(std::ostream& out, FacilityMap& map);
TQMSG_API std::ostream& operator<<(std::ostream& out, Facility& facility);
TQMSG_API std::ostream& operator<<(std::ostream& out, FormattableMessage& message);
TQMSG_API std::ostream& operator<<(std::ostream& out, MultiLangMessageMap& store);
TQMSG_API std::ostream& operator<<(std::ostream& out, MessageTableMap& registry);

#endif  // TQMSG_MESSAGE_MODULE_MAPS_H
