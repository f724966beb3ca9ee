#pragma once

#include <cstdio>
#include <optional>
#include <string>

#include "host/value/Problem.h"

namespace ombrelune {

/// A file that appears whole or not at all: bytes go to a temporary file beside it, which takes its name at
/// Commit. Without Commit the temporary is removed and what stood there before stays.
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

    std::string path_, temporary_;
    std::FILE* stream_ = nullptr;
};

} // namespace ombrelune
