#pragma once

#include <cmath>

#include "image/KVector2.h"

namespace ombrelune {

/// Turn from one direction to another in radians, -pi to pi, positive to the left; 0 where a direction has
/// no length. A way straight back turns to the left. Of the cross product, in doubles: an arc cosine near 1
/// would see bends of 3e-4 in straight lines.
inline double TurnOf(KVector2 const& from, KVector2 const& to)
{
    double const fx = from.x, fy = from.y, tx = to.x, ty = to.y;
    // Adding 0 makes a -0 positive, which would turn a way straight back to the right.
    return std::atan2(fx * ty - fy * tx + 0.0, fx * tx + fy * ty);
}

} // namespace ombrelune
