#pragma once

#include <cstdio>

#include "host/io/PictureFormat.h"
#include "host/io/Pictures.h"

namespace ombrelune {

/// Writes a picture to a stream; returns what went wrong, empty when nothing did. May throw what the picture
/// library throws. See WritePicture.
std::string WriteFile(Image const& image, PictureFormat format, std::FILE* stream,
                      WriteOptions const& options);

} // namespace ombrelune
