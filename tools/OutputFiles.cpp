// Writing a command's outputs: temporary files renamed into place, direct
// writes for everything that is not a regular file.
#include "OutputFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <iostream>
#include <sstream>
#include <utility>

#include "Catalogue.h"
#include "CheckedOutput.h"
#include "TemporaryFiles.h"

struct OutputFiles::Output {
    explicit Output(OutputTarget examined) : target(std::move(examined)) {}

    bool isFile() const {
        return target.kind == TargetKind::NEW_FILE || target.kind == TargetKind::REGULAR_FILE;
    }
    // Completes the temporary file: written out, synced, given its mode, closed.
    void finishFile();

    OutputTarget target;
    std::unique_ptr<TemporaryFile> temporary;   // for a file
    std::unique_ptr<CheckedOutput> fileBuffer;  // writes into `temporary`
    std::stringbuf memory;                      // for a direct write
    std::ostream stream{nullptr};
};

namespace {

[[noreturn]] void cannotWrite(const OutputTarget& target, int error) {
    std::string name = target.descriptor == STDOUT_FILENO ? "standard output" : target.path;
    throw CommandFailure{"cannot write " + name + ": " + std::strerror(error)};
}

mode_t currentUmask() {
    mode_t mask = umask(0);
    umask(mask);
    return mask;
}

// Gives the temporary file `descriptor` the mode (and owner) the target
// should end with. 0, or the errno of the failure.
int applyModeAndOwner(int descriptor, const OutputTarget& target) {
    if (target.kind == TargetKind::NEW_FILE) {
        return fchmod(descriptor, 0666 & ~currentUmask()) == 0 ? 0 : errno;
    }
    const struct stat& old = target.existing;
    // The owner first, as changing it clears the set-ID bits. Only root may
    // give a file away; others keep at least the group when they belong to it.
    if (fchown(descriptor, old.st_uid, old.st_gid) != 0 &&
        fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) != 0) {
        // the file becomes the process's own: nothing else can be done
    }
    return fchmod(descriptor, old.st_mode & 07777) == 0 ? 0 : errno;
}

void writeDirectly(const OutputTarget& target, const std::string& text) {
    int descriptor = target.descriptor;
    if (target.kind == TargetKind::DEVICE) {
        descriptor = open(target.finalPath.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
        if (descriptor < 0) cannotWrite(target, errno);
    } else {
        std::cout.flush();  // what the command printed before comes first
    }
    CheckedOutput out(descriptor);
    out.sputn(text.data(), static_cast<std::streamsize>(text.size()));
    int error = out.finish();
    if (target.kind == TargetKind::DEVICE && close(descriptor) != 0 && error == 0) error = errno;
    if (error != 0) cannotWrite(target, error);
}

}  // namespace

OutputFiles::OutputFiles() = default;
OutputFiles::~OutputFiles() = default;

void OutputFiles::addInput(const std::string& path, InPlace inPlace) {
    inputs_.push_back({path, examineInput(path), inPlace});
}

void OutputFiles::checkNamesAnotherFile(const OutputTarget& target) const {
    for (const Input& input : inputs_) {
        if (input.inPlace == InPlace::REFUSED && input.identity.sameFileAs(target.identity)) {
            throw UsageError{"the output " + target.path + " would overwrite the input " +
                             input.path};
        }
    }
    for (const std::unique_ptr<Output>& other : outputs_) {
        if (other->target.identity.sameFileAs(target.identity)) {
            throw UsageError{"two outputs name the same file: " + other->target.path + " and " +
                             target.path};
        }
    }
}

std::ostream& OutputFiles::add(const std::string& path) {
    OutputTarget target = examineOutput(path);
    checkNamesAnotherFile(target);
    outputs_.push_back(std::make_unique<Output>(std::move(target)));
    Output& output = *outputs_.back();
    if (output.isFile()) {
        output.temporary = std::make_unique<TemporaryFile>(output.target.finalPath);
        output.fileBuffer = std::make_unique<CheckedOutput>(output.temporary->descriptor());
        output.stream.rdbuf(output.fileBuffer.get());
    } else {
        output.stream.rdbuf(&output.memory);
    }
    return output.stream;
}

void OutputFiles::Output::finishFile() {
    stream.flush();
    int descriptor = temporary->descriptor();
    int error = fileBuffer->finish();
    if (error == 0 && fsync(descriptor) != 0) error = errno;
    if (error == 0) error = applyModeAndOwner(descriptor, target);
    int closeError = temporary->close();  // some file systems report failures only here
    if (error == 0) error = closeError;
    if (error != 0) cannotWrite(target, error);
}

void OutputFiles::commitAll() {
    for (std::unique_ptr<Output>& output : outputs_) {
        if (output->isFile()) output->finishFile();
    }
    for (std::unique_ptr<Output>& output : outputs_) {
        if (!output->isFile()) writeDirectly(output->target, output->memory.str());
    }
    for (std::unique_ptr<Output>& output : outputs_) {
        if (!output->isFile()) continue;
        int error = output->temporary->renameOntoTarget();
        if (error != 0) cannotWrite(output->target, error);
    }
}

void reserveStandardDescriptors() {
    for (int descriptor = 0; descriptor <= 2; ++descriptor) {
        if (fcntl(descriptor, F_GETFD) != -1 || errno != EBADF) continue;
        // open takes the lowest free number: this one, as the lower ones are open.
        if (open("/dev/null", O_RDONLY) < 0) return;
    }
}
