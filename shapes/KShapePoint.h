#pragma once

#include "image/KMatrix4.h"

namespace ombrelune {

/// What a point of a path is. A curve is a run of points of its type, control points first, the end point
/// last; it starts at the point before the run.
enum ShapePointType : int {
    kShapeMove = 0,   ///< starts a subpath
    kShapeLine = 1,   ///< end of a straight segment
    kShapeConic = 2,  ///< one of two points of a quadratic segment
    kShapeBezier = 3, ///< one of three points of a cubic segment
};

/// Label that a point carries into the scan converter.
using ShapeWindingMode = int;
inline constexpr ShapeWindingMode kWindingKeep = -1;   ///< as an argument: what the point has
inline constexpr ShapeWindingMode kWindingOutline = 2; ///< a pen's outline: always filled

/// One point of a path, in shape units: the frame is 1 wide. Owned by the shape whose chain it is in.
struct KShapePoint {
    KVector2 position;
    ShapePointType type = kShapeMove;
    bool closed = false; ///< last point of a subpath that goes back to its first one
    ShapeWindingMode winding = 0;
    KShapePoint* previous = nullptr;
    KShapePoint* next = nullptr;

    KShapePoint(KVector2 const& at, ShapePointType pointType, bool isClosed)
        : position(at), type(pointType), closed(isClosed)
    {}
    /// A copy in no chain.
    KShapePoint(KShapePoint const& p)
        : position(p.position), type(p.type), closed(p.closed), winding(p.winding)
    {}
    KShapePoint(KShapePoint const& p, float dx, float dy) : KShapePoint(p) { position += {dx, dy}; }
    KShapePoint(KShapePoint const& p, KMatrix4 const& m) : KShapePoint(p) { position = m * position; }
    KShapePoint& operator=(KShapePoint const&) = delete;
};

} // namespace ombrelune
