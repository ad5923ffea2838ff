// The outputs of one command run, committed all together or not at all. Every
// command that writes files uses it the same way:
//
//     OutputFiles outputs;
//     outputs.addInput(input);                     // every input, first
//     std::ostream& out = outputs.add(outputPath);  // "-": standard output
//     out << text;                                 // as the command produces it
//     outputs.commitAll();                         // once everything succeeded
//
// The rules:
// - A regular file, new or existing, is written to a temporary file in its own
//   directory, and commitAll syncs it and renames it onto the file. A new file
//   gets the mode the umask gives; a replaced file keeps its mode, and its owner
//   and group where the process may keep them. An existing file the process may
//   not write is refused.
// - A symbolic link is followed: the file it leads to is written (a dangling
//   link's file is created), and the link stays a link.
// - Anything else (a device such as /dev/null, a FIFO, `-`, /dev/stdout) is
//   kept in memory and written directly by commitAll, before any rename, so a
//   write error there (a full device, a closed standard output) leaves every
//   file untouched.
// - An output naming an input of the command, or naming another output, is a
//   UsageError; an input added with InPlace::ALLOWED may be rewritten.
// - A directory, as an input or an output, is a CommandFailure.
// - Without commitAll (an error, an exception) or when a signal ends the
//   process, no temporary file and no new output is left.
//
// Thread safety: none; one OutputFiles per command run.
#ifndef TQMSG_TOOL_OUTPUT_FILES_H
#define TQMSG_TOOL_OUTPUT_FILES_H

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "OutputTarget.h"

class OutputFiles {
public:
    enum class InPlace { REFUSED, ALLOWED };

    OutputFiles();
    ~OutputFiles();  // removes whatever was not committed
    OutputFiles(const OutputFiles&) = delete;
    OutputFiles& operator=(const OutputFiles&) = delete;

    // Records an input, for the checks of `add`. Throws CommandFailure for a
    // directory; a missing file is left to the command's reader to report.
    void addInput(const std::string& path, InPlace inPlace = InPlace::REFUSED);

    // Declares an output and returns the stream its text is written to, valid
    // until this object is destroyed. Throws UsageError when `path` names an
    // input or an earlier output, CommandFailure when it cannot be written
    // (a directory, a read-only file or directory).
    std::ostream& add(const std::string& path);

    // Writes the direct outputs, then renames every file into place. Throws
    // CommandFailure "cannot write PATH: REASON" at the first failure.
    void commitAll();

private:
    struct Input {
        std::string path;
        FileIdentity identity;
        InPlace inPlace;
    };
    struct Output;

    void checkNamesAnotherFile(const OutputTarget& target) const;

    std::vector<Input> inputs_;
    std::vector<std::unique_ptr<Output>> outputs_;
};

// Opens /dev/null, read-only, on any of descriptors 0, 1 and 2 that is closed:
// a file the tool opens can then never take a standard stream's number, and a
// write to a closed standard output still fails (EBADF). Called once, first.
void reserveStandardDescriptors();

#endif  // TQMSG_TOOL_OUTPUT_FILES_H
