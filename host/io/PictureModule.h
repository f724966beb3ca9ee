#pragma once

#include <cstdio>

#include "host/io/PictureFormat.h"
#include "host/io/Pictures.h"

namespace ombrelune {

/// What libombrelune-pictures.so offers. It brings in the picture library with some 260 shared objects, which
/// take about 150 ms to load, so only programs that touch a picture file load it.
struct PictureModule {
    ReadResult (*read)(std::string const& path, PictureFormat format);
    /// Returns what went wrong, empty when nothing did.
    std::string (*write)(Image const& image, PictureFormat format, std::FILE* stream,
                         WriteOptions const& options);
};

inline constexpr char const* kPictureModuleFile = "libombrelune-pictures.so";
inline constexpr char const* kPictureModuleEntry = "OmbrelunePictures"; ///< PictureModule const* (*)()

} // namespace ombrelune
