// The libgettextpo boundary: conversions between PoCatalogue and po_file_t,
// and the error handler that collects what the library reports.
#include "PoFiles.h"

#include <gettext-po.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>

#include "EntryLines.h"
#include "PoFailure.h"

namespace {

// What libgettextpo reported during one read or write. The library's handler
// must not return from a fatal error: it jumps back to the caller's setjmp.
struct Reports {
    std::vector<std::string> errors;
    std::vector<std::string> warnings;
    std::jmp_buf fatal;
    std::string path;                       // the file read, "" when writing
    std::map<std::string, int> entryLines;  // of `path`, once a message needs them
};
Reports* activeReports = nullptr;  // the call in progress (the tool is single-threaded)

std::string located(const char* file, std::size_t line, const char* text) {
    std::string where;
    if (file != nullptr) {
        where = std::string(file) + ":";
        if (line != static_cast<std::size_t>(-1)) where += std::to_string(line) + ":";
        where += " ";
    }
    std::string message = where + text;
    while (!message.empty() && message.back() == '\n') message.pop_back();
    return message;
}

void record(int severity, const char* file, std::size_t line, const char* text) {
    std::vector<std::string>& list =
        severity == PO_SEVERITY_WARNING ? activeReports->warnings : activeReports->errors;
    list.push_back(located(file, line, text));
}

extern "C" void onProblem(int severity, po_message_t, const char* file, std::size_t line,
                          std::size_t, int, const char* text) {
    record(severity, file, line, text);
    if (severity == PO_SEVERITY_FATAL_ERROR) std::longjmp(activeReports->fatal, 1);
}

// The line of the entry `message` of the file being read. libgettextpo gives
// none for the first of two entries with one context ("duplicate message
// definition"), and a translator needs it to choose between them.
std::size_t lineOfEntry(po_message_t message) {
    const char* context = message != nullptr ? po_message_msgctxt(message) : nullptr;
    if (context == nullptr || activeReports->path.empty()) return static_cast<std::size_t>(-1);
    if (activeReports->entryLines.empty())
        activeReports->entryLines = entryLines(activeReports->path);
    auto found = activeReports->entryLines.find(context);
    return found == activeReports->entryLines.end() ? static_cast<std::size_t>(-1)
                                                    : static_cast<std::size_t>(found->second);
}

extern "C" void onTwoPlaceProblem(int severity, po_message_t, const char* file1, std::size_t line1,
                                  std::size_t, int, const char* text1, po_message_t message2,
                                  const char* file2, std::size_t line2, std::size_t, int,
                                  const char* text2) {
    record(severity, file1, line1, text1);
    if (file2 == nullptr && !activeReports->path.empty()) {
        file2 = activeReports->path.c_str();
        line2 = lineOfEntry(message2);
    }
    record(severity, file2, line2, text2);
    if (severity == PO_SEVERITY_FATAL_ERROR) std::longjmp(activeReports->fatal, 1);
}

// An anonymous file in memory, named for libraries that open files by name.
class MemoryFile {
public:
    MemoryFile() : descriptor_(memfd_create("tqmsg-po", MFD_CLOEXEC)) {
        if (descriptor_ < 0) throw PoFailure(std::string("cannot write the PO text: ") + reason());
    }
    ~MemoryFile() { close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }
    // What was written through `path` (opening it again starts at offset 0).
    std::string content() const {
        std::string text;
        char block[1 << 16];
        for (off_t offset = 0;;) {
            ssize_t count = pread(descriptor_, block, sizeof(block), offset);
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) throw PoFailure(std::string("cannot read the PO text: ") + reason());
            if (count == 0) return text;
            text.append(block, static_cast<std::size_t>(count));
            offset += count;
        }
    }

private:
    static const char* reason() { return std::strerror(errno); }
    int descriptor_;
};

const po_xerror_handler HANDLER = {onProblem, onTwoPlaceProblem};

struct FileFree {
    void operator()(po_file* file) const { po_file_free(file); }
};
using PoFilePtr = std::unique_ptr<po_file, FileFree>;

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
    return text;
}

// po_file_read with the collecting handler; null after a fatal error.
po_file_t readReporting(const char* path, Reports& reports) {
    reports.path = path;
    activeReports = &reports;
    po_file_t file = nullptr;
    if (setjmp(reports.fatal) == 0) {
        file = po_file_read(path, &HANDLER);
    } else {
        file = nullptr;  // what the library had built is lost with the jump
    }
    activeReports = nullptr;
    return file;
}

// po_file_write with the collecting handler; false after a fatal error.
bool writeReporting(po_file_t file, const char* path, Reports& reports) {
    activeReports = &reports;
    bool written = false;
    if (setjmp(reports.fatal) == 0) {
        po_file_write(file, path, &HANDLER);
        written = true;
    } else {
        written = false;
    }
    activeReports = nullptr;
    return written && reports.errors.empty();
}

po_message_t headerMessage(const std::string& header) {
    po_message_t message = po_message_create();
    po_message_set_msgid(message, "");
    po_message_set_msgstr(message, header.c_str());
    return message;
}

po_message_t entryMessage(const PoEntry& entry) {
    po_message_t message = po_message_create();
    if (entry.hasContext) po_message_set_msgctxt(message, entry.context.c_str());
    po_message_set_msgid(message, entry.source.c_str());
    po_message_set_msgstr(message, entry.translation.c_str());
    if (!entry.notes.empty()) po_message_set_extracted_comments(message, entry.notes.c_str());
    if (entry.referenceLine > 0) {
        po_message_add_filepos(message, entry.referenceFile.c_str(),
                               static_cast<std::size_t>(entry.referenceLine));
    }
    po_message_set_fuzzy(message, entry.fuzzy ? 1 : 0);
    return message;
}

PoEntry readEntry(po_message_t message) {
    PoEntry entry;
    const char* context = po_message_msgctxt(message);
    entry.hasContext = context != nullptr;
    if (context != nullptr) entry.context = context;
    entry.source = po_message_msgid(message);
    entry.translation = po_message_msgstr(message);
    entry.fuzzy = po_message_is_fuzzy(message) != 0;
    entry.plural = po_message_msgid_plural(message) != nullptr;
    return entry;
}

}  // namespace

std::string poFileText(const PoCatalogue& catalogue) {
    PoFilePtr file(po_file_create());
    po_message_iterator_t iterator = po_message_iterator(file.get(), nullptr);
    po_message_insert(iterator, headerMessage(catalogue.header));
    for (const PoEntry& entry : catalogue.entries) po_message_insert(iterator, entryMessage(entry));
    po_message_iterator_free(iterator);

    // The library writes only to a named file: give it a file in memory,
    // which no other process sees and nothing has to remove.
    MemoryFile memory;
    Reports reports;
    if (!writeReporting(file.get(), memory.path().c_str(), reports)) {
        throw PoFailure("cannot write the PO text: " + joined(reports.errors));
    }
    return memory.content();
}

PoCatalogue readPoFile(const std::string& path, std::vector<std::string>& warnings) {
    if (std::FILE* probe = std::fopen(path.c_str(), "r")) {
        std::fclose(probe);
    } else {
        throw PoFailure("cannot open " + path + ": " + std::strerror(errno));
    }
    Reports reports;
    PoFilePtr file(readReporting(path.c_str(), reports));
    warnings.insert(warnings.end(), reports.warnings.begin(), reports.warnings.end());
    if (!file || !reports.errors.empty()) {
        if (reports.errors.empty()) reports.errors.push_back(path + ": cannot be read");
        throw PoFailure(joined(reports.errors));
    }
    PoCatalogue catalogue;
    if (const char* header = po_file_domain_header(file.get(), nullptr)) catalogue.header = header;
    po_message_iterator_t iterator = po_message_iterator(file.get(), nullptr);
    while (po_message_t message = po_next_message(iterator)) {
        if (po_message_is_obsolete(message)) continue;
        if (!po_message_msgctxt(message) && po_message_msgid(message)[0] == '\0') continue;
        catalogue.entries.push_back(readEntry(message));
    }
    po_message_iterator_free(iterator);
    return catalogue;
}

std::string headerField(const std::string& header, const char* field) {
    char* value = po_header_field(header.c_str(), field);
    if (value == nullptr) return "";
    std::string result = value;
    std::free(value);
    return result;
}

std::string withHeaderField(const std::string& header, const char* field,
                            const std::string& value) {
    char* updated = po_header_set_field(header.c_str(), field, value.c_str());
    std::string result = updated;
    std::free(updated);
    return result;
}

std::string headerCharset(const std::string& header) {
    const std::string contentType = headerField(header, "Content-Type");
    const std::string key = "charset=";
    std::size_t at = contentType.find(key);
    if (at == std::string::npos) return "";
    std::size_t start = at + key.size();
    std::size_t end = contentType.find_first_of("; \t", start);
    return contentType.substr(start, end == std::string::npos ? std::string::npos : end - start);
}
