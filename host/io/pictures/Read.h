#pragma once

#include "host/io/PictureFormat.h"
#include "host/io/Pictures.h"

namespace ombrelune {

/// Reads a file of a known kind; may throw what the picture library throws. See ReadPicture.
ReadResult ReadFile(std::string const& path, PictureFormat format);

/// Whether a file's header reads as that of a picture; pixels are left alone. May throw like ReadFile.
bool ReadsHeader(std::string const& path, PictureFormat format);

} // namespace ombrelune
