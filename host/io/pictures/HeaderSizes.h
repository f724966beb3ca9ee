#pragma once

#include <string>

#include "host/io/PictureFormat.h"

namespace ombrelune {

/// Whether the header of a file (DPX, EXR, PNG) announces more bytes than the file holds. The library
/// believes such a header: it ends the process, clears gigabytes for a text that is not there, or adds up
/// their checksum.
bool AnnouncesMoreThanItHolds(std::string const& path, PictureFormat format);

} // namespace ombrelune
