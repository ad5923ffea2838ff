// tqmsg: the message module, the formatter and the lookup functions.
//
// A program constructs a `MessageModule` with its message files; every text
// goes into the process-wide store and stays there for the life of the
// process. Messages are then formatted with `MessageModule::formatMessage`
// (the calling conventions of the Windows FormatMessage function) or looked up
// with `TQ_LangLookup` / `TQ_CompoundLangLookup`.
//
// Conventions of the formatter and the lookup functions:
//  1. No exception of the library's two types escapes them.
//  2. A failure writes one line (the failure text) to std::cout, sets the
//     caller's buffer pointer to null and returns -1.
//  3. A buffer allocated for the caller comes from new[]; release it with delete[].
//  4. Message and language identifiers are normalised to 32-bit signed values.
//
// Thread safety: all state is process-wide and unlocked. Loading files,
// constructing or destroying a module must not overlap anything else; lookups
// and formatting alone may run side by side.
#ifndef TQMSG_MESSAGE_MODULE_H
#define TQMSG_MESSAGE_MODULE_H

#include <sstream>
#include <string>
#include <vector>

#include "MessageModuleMaps.h"
#include "MessageTable.h"

// Flags of `formatMessage`; the values of the Windows flags of the same names.
#define _FORMAT_MESSAGE_MAX_WIDTH_MASK 0x00FF   // low byte: maximum line width, 0 for none
#define _FORMAT_MESSAGE_ALLOCATE_BUFFER 0x0100  // deliver into a new[] buffer
#define _FORMAT_MESSAGE_IGNORE_INSERTS 0x0200   // deliver the text unchanged
#define _FORMAT_MESSAGE_FROM_STRING 0x0400      // the text is lpSource
#define _FORMAT_MESSAGE_FROM_HMODULE 0x0800     // lpSource names a file to load first
#define _FORMAT_MESSAGE_FROM_SYSTEM 0x1000      // refused
#define _FORMAT_MESSAGE_ARGUMENT_ARRAY 0x2000   // Arguments is an array, not a va_list*

// How the formatter reads the value of one insert format.
struct TQMSG_API InsertFormatInfo {
    enum Kind {
        NO_VALUE,          // only literal text and "%%": no argument is read
        SIGNED_INTEGER,    // d i
        UNSIGNED_INTEGER,  // o u x X b B
        CHARACTER,         // c C (an int)
        FLOATING,          // e E f F g G a A (an array element gives its integer value)
        TEXT,              // s S (a narrow text)
        POINTER,           // p
        REFUSED            // the formatter fails on it; see `refusal`
    };
    Kind kind = REFUSED;
    int valueBytes = 0;        // bytes of the value read on this build (sizeof(int) for %d,
                               // sizeof(long) for %ld, 8 for %lld); 0 for NO_VALUE and REFUSED
    std::string printfFormat;  // what is handed to snprintf: wide/Windows spellings mapped
    std::string refusal;       // REFUSED: the reason, in words
};

// One insert of a message text.
struct TQMSG_API InsertUse {
    int number = 0;      // 1 to 199
    std::string format;  // "%" + the text between the two "!" marks, or "%s" without them
    InsertFormatInfo info;
};

class TQMSG_API MessageModule {
public:
    static MessageTableMap mtmap;        // registry: file name -> loaded table
    static MultiLangMessageMap mlmap;    // store: every message of every loaded file
    static MessageModule* selfInstance;  // the module whose constructor completed last

    // Loads nothing; becomes `self()`.
    MessageModule();
    // Loads the files in order (both ends of text lines trimmed); becomes `self()`.
    explicit MessageModule(std::vector<std::string>& fileNames);
    // Loads one file; becomes `self()`. Throws what `loadFile` throws.
    MessageModule(std::string fileName, bool trimTrailingOnly);
    // Destroys every registered table; the store and `selfInstance` are kept.
    ~MessageModule();

    static MessageModule* self();
    static MultiLangMessageMap* getMessageMap();
    // Loads and registers one file. Throws MessageModuleException when it is
    // already registered, MessageTableParserException for any error in it.
    static bool loadFile(MessageModule* module, std::string fileName, bool trimTrailingOnly);
    // Loads the files in order; the first failure ends the loop and is thrown on.
    static void loadFiles(MessageModule* module, std::vector<std::string>& fileNames,
                          bool trimTrailingOnly);

    // Formats a stored message (or `lpSource`) into `*lpBuffer`. Returns the bytes
    // stored including the NUL, the size of the new buffer under
    // _FORMAT_MESSAGE_ALLOCATE_BUFFER, or -1 (failure, or nSize <= 0 without
    // allocation). `Arguments` is an insert array under
    // _FORMAT_MESSAGE_ARGUMENT_ARRAY, else the address of a va_list.
    static long formatMessage(long dwFlags, char* lpSource, long dwMessageId, long dwLanguageId,
                              char** lpBuffer, long nSize, char** Arguments);
    // As above, the inserts taken from the arguments after `nSize`.
    static long formatMessage(long dwFlags, char* lpSource, long dwMessageId, long dwLanguageId,
                              char** lpBuffer, long nSize, ...);

    // Formats argument `argIndex` (from 1) with `format`, writes it to `out` under
    // the width rule, updates `column` and returns the formatted text.
    static std::string substituteArg(std::ostringstream& out, int argIndex, std::string& format,
                                     int& column, int maxWidth, char** Arguments, char** argArray);

    // Classifies one insert format ("%" + the text between an insert's two "!"
    // marks) exactly as the formatter does. Never throws.
    static InsertFormatInfo describeInsertFormat(const std::string& format);
    // The inserts of `text` in order of appearance, read exactly as the formatter's
    // scan reads them (escapes skipped). Throws MessageModuleException with the
    // formatter's own text when the scan would fail (an insert number of four digits
    // or above 199, a text ending in "%", an unclosed "!"). Refused formats are
    // returned with kind REFUSED.
    static std::vector<InsertUse> findInserts(const std::string& text);

    // The registry and the store; the same text whichever instance is asked.
    std::string toString();
};

TQMSG_API std::ostream& operator<<(std::ostream& out, MessageModule& module);

// The stored text, escapes interpreted, into `buffer` (cut to size - 1
// characters). Returns `buffer`, or null after a failure.
TQMSG_API char* TQ_LangLookup(int messageId, int languageId, char* buffer, int size);
// The stored text into `result` (empty after a failure); returns result's characters.
TQMSG_API const char* TQ_LangLookup(int messageId, int languageId, std::string& result);
// The message with its inserts from the arguments after `languageId`. Returns
// the bytes stored including the NUL, or -1.
TQMSG_API int TQ_CompoundLangLookup(char* buffer, unsigned int size, int messageId, int languageId,
                                    ...);
// As above into `result` (empty after a failure).
TQMSG_API void TQ_CompoundLangLookup(std::string& result, int messageId, int languageId, ...);

#endif  // TQMSG_MESSAGE_MODULE_H
