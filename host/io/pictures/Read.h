#pragma once

#include "host/io/PictureFormat.h"
#include "host/io/Pictures.h"

namespace ombrelune {

/// Reads a file of a known kind; may throw what the picture library throws. See ReadPicture.
ReadResult ReadFile(std::string const& path, PictureFormat format);

} // namespace ombrelune
