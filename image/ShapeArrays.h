#pragma once

#include <cstdint>
#include <vector>

namespace ombrelune {

/// Vertex of a flat outline in the coordinates of the scan converter.
struct ShapeArrayPoint {
    double x = 0.0, y = 0.0;
    int row = 0; ///< y rounded down
    std::uint8_t winding = 0;
};

/// A vertex in the order of rows, with its neighbours on the outline. The ends of an open outline have the
/// neighbouring records as neighbours.
struct ShapeArrayPointIndex {
    int row = 0;
    int point = 0, previous = 0, next = 0; ///< numbers of points
};

/// Edge of an outline in the scan converter, upward.
struct ShapeArrayEdge {
    double x = 0.0, dx = 0.0; ///< at a row, and what it changes by from row to row
    int line = 0;             ///< that row
    int last = 0;             ///< last row
    std::int8_t direction = 0;
    std::uint8_t winding = 0;
};

/// Outlines made for scan conversion.
struct ShapeArrays {
    std::vector<ShapeArrayPoint> points;
    std::vector<ShapeArrayPointIndex> indices; ///< sorted by row
};

} // namespace ombrelune
