// What a path given to the tool leads to, found before anything is written:
// a new or an existing regular file (replaced through a temporary file), a
// file written directly (a device, a FIFO), or an open descriptor of the
// process (`-`, /dev/stdout, /dev/fd/N). Symbolic links are followed, so a
// link stays a link and a dangling link creates the file it names.
#ifndef TQMSG_TOOL_OUTPUT_TARGET_H
#define TQMSG_TOOL_OUTPUT_TARGET_H

#include <sys/stat.h>
#include <sys/types.h>

#include <string>

// Which file a path names: the device and inode when it exists, else its
// absolute path with every symbolic link resolved.
struct FileIdentity {
    bool exists = false;
    dev_t device = 0;
    ino_t inode = 0;
    std::string resolvedPath;

    bool sameFileAs(const FileIdentity& other) const;
};

enum class TargetKind {
    NEW_FILE,      // created through a temporary file with the umask's mode
    REGULAR_FILE,  // replaced through a temporary file, keeping mode and owner
    DEVICE,        // not a regular file: opened and written directly
    DESCRIPTOR,    // an open descriptor of the process, written directly
};

struct OutputTarget {
    std::string path;       // as given on the command line
    std::string finalPath;  // after following symbolic links: the file written
    TargetKind kind = TargetKind::NEW_FILE;
    int descriptor = -1;      // for DESCRIPTOR
    struct stat existing {};  // for REGULAR_FILE
    FileIdentity identity;
};

// Examines output `path` ("-": standard output). Throws CommandFailure
// "cannot write PATH: REASON" for a directory, an existing file the process
// may not write, a path that cannot be followed.
OutputTarget examineOutput(const std::string& path);

// The identity of input `path`. Throws CommandFailure "cannot read PATH: Is a
// directory" for a directory; a missing file is left to the reader to report.
FileIdentity examineInput(const std::string& path);

#endif  // TQMSG_TOOL_OUTPUT_TARGET_H
