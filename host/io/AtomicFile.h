#pragma once

#include <cstdio>
#include <optional>
#include <string>

#include "host/value/Problem.h"

namespace ombrelune {

/// A file that appears whole or not at all: bytes go to a temporary file in its folder, which takes its name
/// at Commit. Without Commit what stood there before stays. Where the file system can, the temporary has no
/// name until it is whole, so that a process that is killed leaves nothing behind.
class AtomicFile {
public:
    explicit AtomicFile(std::string path) : path_(std::move(path)) {}
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

    std::string path_;
    std::string temporary_; ///< name beside the file
    bool isNamed_ = false;  ///< the temporary has that name already
    std::FILE* stream_ = nullptr;
};

} // namespace ombrelune
