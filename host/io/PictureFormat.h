#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ombrelune {

/// The kinds of picture files.
enum class PictureFormat { kPng, kTiff, kJpeg, kExr, kDpx };

/// "PNG", "OpenEXR": for messages.
char const* FormatLabel(PictureFormat format);
/// "png", "openexr": what the picture library calls it.
char const* LibraryName(PictureFormat format);

/// Kind by the file's first bytes, whatever it is called; 8 are enough.
std::optional<PictureFormat> FormatOfBytes(std::string_view start);

/// Kind by the extension, in any case of letters.
std::optional<PictureFormat> FormatOfPath(std::string_view path);

/// ".png, .tif, ..." and "PNG, TIFF, ...": what there is, for messages.
std::string KnownExtensions();
std::string KnownFormats();

} // namespace ombrelune
