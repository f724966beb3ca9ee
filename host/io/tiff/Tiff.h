#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

#include <tiffio.h>

#include "host/io/Pictures.h"

namespace ombrelune {

struct CloseTiff {
    void operator()(TIFF* file) const { TIFFClose(file); }
};
using TiffFile = std::unique_ptr<TIFF, CloseTiff>;

/// Opens a stream, which stays the caller's, for "r" or "w". Messages of the library go nowhere: what it
/// cannot do is left to the general picture library, whose messages are told.
TiffFile OpenTiff(std::FILE* stream, char const* mode);

/// Reads the usual kinds of TIFF: strips of grey or colour with or without alpha, 8, 16 bits or float,
/// upright, in any compression of libtiff. No picture and no problem for all others and for what is damaged.
ReadResult ReadTiff(std::string const& path);

/// True when the file's directory of fields can be read; no value leaves it to the general picture library.
std::optional<bool> ReadsTiffHeader(std::string const& path);

/// Writes a picture as TIFF, red, green, blue and premultiplied alpha, not compressed. Returns what went
/// wrong, empty when nothing did, and no value, with nothing written, for what is left to the general picture
/// library: more than 4 GB and pixels that are not square.
std::optional<std::string> WriteTiff(Image const& image, std::FILE* stream, WriteOptions const& options);

} // namespace ombrelune
