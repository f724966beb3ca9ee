#pragma once

#include <algorithm>

#include "image/KVector3.h"

namespace ombrelune {

/// Normal of a surface of heights 0 to 65535 over pixels, from the eight around one; of length 1, z towards
/// the viewer. Calls height(dx, dy) with steps of -1 to 1.
/// @param width     of the picture, in pixels
/// @param strength  how high 65535 is
template <class Height> KVector3 HeightNormal(int width, float strength, Height const& height)
{
    auto const z = static_cast<float>(7.2 / width / std::max(strength, 1.1920929e-07F));
    int const centre = height(0, 0);
    KVector3 sum;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            if (dx == 0 && dy == 0) continue;
            double const distance = dx != 0 && dy != 0 ? 92000.0 : 65535.0;
            auto const d = static_cast<float>((height(dx, dy) - centre) / distance);
            sum += KVector3(static_cast<float>(-dx) * d, static_cast<float>(-dy) * d, z);
        }
    }
    return sum.Normalize();
}

} // namespace ombrelune
