// Temporary files beside the files they will replace. Each is created with an
// unpredictable name (mkstemp) in the target's own directory, so that renaming
// it onto the target is atomic, and is removed again when it is not renamed:
// when its owner is destroyed, and when the process is ended by SIGINT,
// SIGTERM, SIGHUP, SIGQUIT, SIGPIPE or SIGXFSZ (the handler removes every
// registered name with async-signal-safe calls, then lets the signal end the
// process as it would have). A signal the process was started with ignored
// stays ignored.
//
// Thread safety: none; the tool is single-threaded.
#ifndef TQMSG_TOOL_TEMPORARY_FILES_H
#define TQMSG_TOOL_TEMPORARY_FILES_H

#include <string>

class TemporaryFile {
public:
    // Creates ".NAME.XXXXXX" (mode 0600) in the directory of `target`. Throws
    // CommandFailure "cannot write TARGET: REASON" when it cannot.
    explicit TemporaryFile(const std::string& target);
    // Removes the file unless it was renamed; closes the descriptor.
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // The open descriptor, -1 after `close`.
    int descriptor() const { return descriptor_; }
    // Closes the descriptor; 0, or the errno of a late write failure.
    int close();
    // Renames the file onto its target; 0, or the errno of the failure.
    int renameOntoTarget();

private:
    std::string target_, path_;
    int descriptor_ = -1;
    bool renamed_ = false;
};

#endif  // TQMSG_TOOL_TEMPORARY_FILES_H
