#pragma once

#include <string>

#include "host/io/PictureFormat.h"

namespace ombrelune {

/// Whether the header of a file (DPX, EXR) announces more bytes than the file holds. The library believes
/// such a header: it ends the process, or clears gigabytes for a text that is not there.
bool AnnouncesMoreThanItHolds(std::string const& path, PictureFormat format);

} // namespace ombrelune
