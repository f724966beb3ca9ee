#pragma once

#include <algorithm>
#include <memory>

#include "image/KImage.h"

namespace ombrelune {

/// The picture blurred into a relief; `filter` is a row of buttons "Box", "Soften", "Bartlett", "Gaussian".
/// @param x, y      720ths of the width
/// @param channels  as KImage::BlurOf
inline std::unique_ptr<KImage> MakeRelief(KImage const& source, float x, float y, int filter, bool quick,
                                          int channels)
{
    static constexpr int filters[] = {0, 1, 2, 4}; // the host's numbers
    int const chosen = quick ? 0 : filters[std::clamp(filter, 0, 3)];
    return std::unique_ptr<KImage>(source.BlurOf(x, y, chosen, channels, 1.0, 1.0));
}

} // namespace ombrelune
