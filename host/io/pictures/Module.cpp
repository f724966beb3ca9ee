#include <exception>
#include <mutex>

#include <OpenImageIO/imageio.h>
#include <fmt/format.h>

#include "host/io/PictureModule.h"
#include "host/io/pictures/Read.h"
#include "host/io/pictures/Write.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

/// The library has threads of its own; they follow ours in number.
void FollowThreadCount()
{
    static std::mutex lock;
    static int count = 0;
    std::lock_guard guard(lock);
    if (count == ThreadCount()) return;
    count = ThreadCount();
    OIIO::attribute("threads", count);
    OIIO::attribute("exr_threads", count);
}

// The library reports by return values, but what it builds on may throw, above all when memory is out.

ReadResult Read(std::string const& path, PictureFormat format)
{
    try {
        FollowThreadCount();
        return ReadFile(path, format);
    } catch (std::exception const& error) {
        return {nullptr, Problem{path, 0, fmt::format("cannot be read: {}", error.what())}};
    }
}

std::optional<bool> TryHeader(std::string const& path, PictureFormat format)
{
    try {
        return ReadsHeader(path, format);
    } catch (std::exception const&) {
        return false;
    }
}

std::optional<std::string> Write(Image const& image, PictureFormat format, std::FILE* stream,
                                 WriteOptions const& options)
{
    try {
        FollowThreadCount();
        return WriteFile(image, format, stream, options);
    } catch (std::exception const& error) {
        return fmt::format("cannot be written: {}", error.what());
    }
}

} // namespace

} // namespace ombrelune

extern "C" ombrelune::PictureModule const* OmbrelunePictures()
{
    static constexpr ombrelune::PictureModule module = {&ombrelune::Read, &ombrelune::TryHeader,
                                                        &ombrelune::Write};
    return &module;
}
