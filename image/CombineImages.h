#pragma once

#include "image/ChannelStyle.h"
#include "image/KImageRegion.h"

namespace ombrelune {

/// Lays the source, of the region's size, on that region of the target: mode copy replaces its four colour
/// words, mode merge puts the source over them, both with the style's opacity. The source's alpha is
/// multiplied by the alpha of the style's colour. Integer pictures are limited to 0 to 1; they are worked in
/// floats when the style's float colour is beyond that. What lies outside the target is left out.
void CombineImages(KImage* target, KImage* source, KImagePixelRegion const& region, CombineMode mode,
                   ChannelStyle const& style);

} // namespace ombrelune
