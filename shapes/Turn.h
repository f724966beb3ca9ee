#pragma once

#include <cmath>

#include "image/KVector2.h"

namespace ombrelune {

/// Turn from one direction to another in radians, -pi to pi, positive to the left; 0 where a direction has
/// no length. Of the cross product, in doubles: an arc cosine near 1 would see bends of 3e-4 in straight
/// lines.
inline double TurnOf(KVector2 const& from, KVector2 const& to)
{
    double const fx = from.x, fy = from.y, tx = to.x, ty = to.y;
    return std::atan2(fx * ty - fy * tx, fx * tx + fy * ty);
}

} // namespace ombrelune
