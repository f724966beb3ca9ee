#include "host/io/AtomicFile.h"

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

namespace ombrelune {

namespace fs = std::filesystem;

namespace {

std::string PathOfDescriptor(int descriptor) { return fmt::format("/proc/self/fd/{}", descriptor); }

} // namespace

AtomicFile::~AtomicFile()
{
    if (stream_) std::fclose(stream_);
    if (isNamed_) unlink(temporary_.c_str());
}

Problem AtomicFile::Failed(std::string const& what, int error) const
{
    return {path_, 0, fmt::format("{}: {}", what, std::generic_category().message(error))};
}

std::optional<Problem> AtomicFile::Open()
{
    if (path_.find('\0') != std::string::npos)
        return Problem{path_, 0, "a file name cannot hold a zero byte"};
    fs::path const path(path_);
    std::error_code error;
    auto const status = fs::status(path, error);
    if (fs::is_directory(status)) return Problem{path_, 0, "is a folder; give the name of a file"};
    // Renaming over a device or a pipe would replace it.
    if (fs::exists(status) && !fs::is_regular_file(status))
        return Problem{path_, 0, "is no regular file; give another name"};
    if (path.has_parent_path() && !fs::is_directory(path.parent_path(), error)) {
        fs::create_directories(path.parent_path(), error);
        if (error)
            return Failed(fmt::format("cannot make the folder {}", Quoted(path.parent_path().string())),
                          error.value());
    }

    // The process and a count keep writers of the same file apart; the name is cut to stay a legal one.
    static std::atomic<int> count{0};
    std::string const name =
        fmt::format(".{}.{}-{}.tmp", path.filename().string().substr(0, 200), getpid(), ++count);
    temporary_ = (path.parent_path() / name).string();
    std::string const folder = path.has_parent_path() ? path.parent_path().string() : ".";
    // A name is given to it through /proc, so that has to be there.
    int descriptor = -1;
    if (access("/proc/self/fd", X_OK) == 0)
        descriptor = open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        descriptor = open(temporary_.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, 0666);
        if (descriptor < 0) return Failed("cannot be written", errno);
        isNamed_ = true;
    }
    stream_ = fdopen(descriptor, "wb");
    return {};
}

std::optional<Problem> AtomicFile::Commit()
{
    bool const failed = std::ferror(stream_) != 0;
    int code = std::fflush(stream_) == 0 ? 0 : errno;
    if (!failed && code == 0 && !isNamed_) {
        isNamed_ = linkat(AT_FDCWD, PathOfDescriptor(fileno(stream_)).c_str(), AT_FDCWD, temporary_.c_str(),
                          AT_SYMLINK_FOLLOW) == 0;
        if (!isNamed_) code = errno;
    }
    if (std::fclose(stream_) != 0 && code == 0) code = errno;
    stream_ = nullptr;
    if (failed) return Problem{path_, 0, "could not be written whole; is the disk full?"};
    if (code != 0) return Failed("could not be written whole", code);
    if (std::rename(temporary_.c_str(), path_.c_str()) != 0) return Failed("cannot be replaced", errno);
    isNamed_ = false;
    return {};
}

} // namespace ombrelune
