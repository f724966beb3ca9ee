#pragma once

#include <cstdio>
#include <optional>
#include <string>

#include "host/io/PictureFormat.h"
#include "host/io/Pictures.h"

namespace ombrelune {

/// A way to read and write picture files, in a shared object of its own that is loaded on first use.
/// libombrelune-pictures.so knows every format and brings in the picture library with some 260 shared
/// objects, which take 300 ms of work to load. libombrelune-tiff.so knows the usual kinds of TIFF, and what
/// it does not know it leaves to the other.
struct PictureModule {
    /// Neither a picture nor a problem for a file that is left to the other module.
    ReadResult (*read)(std::string const& path, PictureFormat format);
    /// Whether the file begins with a header of that format; no value leaves it to the other module.
    std::optional<bool> (*readsHeader)(std::string const& path, PictureFormat format);
    /// Returns what went wrong, empty when nothing did; no value, with nothing written, leaves the picture to
    /// the other module.
    std::optional<std::string> (*write)(Image const& image, PictureFormat format, std::FILE* stream,
                                        WriteOptions const& options);
};

inline constexpr char const* kPictureModuleFile = "libombrelune-pictures.so";
inline constexpr char const* kTiffModuleFile = "libombrelune-tiff.so";
inline constexpr char const* kPictureModuleEntry = "OmbrelunePictures"; ///< PictureModule const* (*)()

} // namespace ombrelune
