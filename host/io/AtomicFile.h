#pragma once

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "host/value/Problem.h"

namespace ombrelune {

/// A file that appears whole or not at all: bytes go to a temporary file in its folder, which takes its name
/// at Commit. Without Commit what stood there before stays. Where the file system can, the temporary has no
/// name until it is whole, so that a process that is killed leaves nothing behind. Bytes are on the disk
/// before the name is. A link to a file stays, its file is replaced and keeps its permissions.
class AtomicFile {
public:
    /// When the temporary gets its name: kAtOnce does as where files without one cannot be.
    enum class Naming { kLate, kAtOnce };

    explicit AtomicFile(std::string path, Naming naming = Naming::kLate)
        : path_(std::move(path)), naming_(naming)
    {}
    AtomicFile(AtomicFile const&) = delete;
    AtomicFile& operator=(AtomicFile const&) = delete;
    ~AtomicFile();

    /// Makes the folder when it is missing, and the temporary file.
    std::optional<Problem> Open();
    /// To write to after Open. Errors of writing may be ignored: Commit finds them.
    std::FILE* Stream() const { return stream_; }
    std::optional<Problem> Commit();

private:
    Problem Failed(std::string const& what, int error) const;

    std::string path_; ///< as told
    Naming naming_;
    std::string target_;    ///< where links lead
    std::string temporary_; ///< name beside the target
    bool isNamed_ = false;  ///< the temporary has that name already
    int slot_ = -1;         ///< of the temporary's name among those that a signal removes
    std::FILE* stream_ = nullptr;
};

/// Removes the temporary files of this process that have names. May be called in a signal handler.
void RemoveTemporaries();

/// From now on SIGINT, SIGTERM and SIGHUP remove them before they end the process.
void RemoveTemporariesOnSignals();

/// Temporary files in a folder whose process ran on this machine and does not any more.
std::vector<std::string> StaleTemporaries(std::string const& folder);

} // namespace ombrelune
