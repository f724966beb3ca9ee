#pragma once

#include <optional>
#include <string>

#include "host/image/Image.h"
#include "host/value/Problem.h"

namespace ombrelune {

struct ReadOptions {
    int proxy = 1; ///< the picture is made this many times smaller in width and height
};

/// A picture, or what is wrong with its file.
struct ReadResult {
    Ref<Image> image;
    std::optional<Problem> problem;
};

/// Reads a PNG, TIFF, JPEG, OpenEXR or DPX file, known by its first bytes. Values are taken as they are
/// stored, without colour conversion.
/// - Depth: 8-bit files give Int8, other integers up to 16 bits Int16, half Half, all else Float.
/// - Colour is premultiplied when the file says that it is not; alpha is 1 when the file has none.
/// - Grey goes to red, green and blue. OpenEXR: channels R, G, B, A or Y, and Z, N.X to N.Z,
///   velocity.X and velocity.Y as auxiliary ones; others are left out. The picture is the display window, 0
///   outside the data window.
/// - A turned or mirrored camera picture is put upright.
/// - With a proxy N the size is rounded down, so that the original size divided by this one gives N, and the
///   attributes Img_OriginalWidth and Img_OriginalHeight tell the original.
/// A file that is not whole is a problem, never half a picture. Thread-safe.
ReadResult ReadPicture(std::string const& path, ReadOptions const& options = {});

struct WriteOptions {
    int depth = 0; ///< a picture depth to convert to; 0 keeps the picture's own
    /// PNG: the smallest file rather than the quickest, without the alpha of an opaque picture.
    bool isSmall = false;
};

/// Writes a picture in the format of its extension, whole or not at all (see AtomicFile).
/// - Depth: the picture's or the one asked for, where the format has it: PNG 8 and 16 bits (16 for floats),
///   JPEG 8, TIFF 8, 16 and float, OpenEXR half (for Int8 and Half) and float, DPX 16.
/// - PNG has straight colour, so it is divided by alpha; the others keep it premultiplied. JPEG drops alpha.
/// - OpenEXR keeps the auxiliary channels that ReadPicture knows; the others have no place for them.
/// The same picture gives the same bytes, always: no dates, no names. Thread-safe.
std::optional<Problem> WritePicture(Image const& image, std::string const& path,
                                    WriteOptions const& options = {});

/// What is wrong with the extension of a picture to write.
std::optional<Problem> CheckExtension(std::string const& path);

/// Whether there is a whole-looking file: a regular one that is not empty and, where its extension is that of
/// a picture, one of that format whose header reads.
bool IsWrittenFile(std::string const& path);

} // namespace ombrelune
