#pragma once

#include "host/image/Image.h"

namespace ombrelune {

/// Hooks for a depth (5 to 8), with or without auxiliary channels.
PixelHooks const& HooksFor(int depth, bool hasAux);

} // namespace ombrelune
