#pragma once

#include "image/KVector2.h"

namespace ombrelune {

/// Outline of a regular polygon around the origin, in a unit of one's own; two corners make a line.
struct KFigure {
    int corners = 2;     ///< 2 to kMostCorners; others are limited
    float radius = 0.0F; ///< of the corners
    float angle = 0.0F;  ///< radians; 0 puts the first corner on the positive x axis

    static constexpr int kMostCorners = 1024;

    /// Point i of `count`, evenly spaced: round a polygon from the first corner on, along a line from one end
    /// to the other. The first of one alone is the middle.
    KVector2 Point(int i, int count) const;
};

} // namespace ombrelune
