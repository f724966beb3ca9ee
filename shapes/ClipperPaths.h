#pragma once

#include <polyclipping/clipper.hpp>

namespace ombrelune {

class KShape;
class KShapeGroup;

/// Integers of the clipping library for one unit of shapes.
inline constexpr float kClipperScale = 1e6F;

// Between shapes and the clipping library. Coordinates are truncated. A subpath with a coordinate that is not
// a number or beyond 1e12 is left out, so that nothing overflows. Control points count as corners.

void PathsFromShape(ClipperLib::Paths& paths, KShape const* shape, float scale);
void PathsFromShapeGroup(ClipperLib::Paths& paths, KShapeGroup const* group, float scale);
/// One closed subpath for each path.
KShape* ShapeFromPaths(ClipperLib::Paths const& paths, float scale);

// Any other number means the first choice.

ClipperLib::ClipType ToClipType(int type);
ClipperLib::PolyFillType ToPolyFillType(int fill);
ClipperLib::JoinType ToJoinType(int type);

// What the library does, and no paths where it gives up. Its time grows with the square of the sides where
// they cross each other: what would take more than a second or two is given up before it begins.

/// `copies`: offsets made together, which share that time.
ClipperLib::Paths OffsetPaths(ClipperLib::Paths const& paths, ClipperLib::JoinType join, double distance,
                              int copies = 1);
ClipperLib::Paths CombinePaths(ClipperLib::Paths const& subject, ClipperLib::Paths const& clip,
                               ClipperLib::ClipType type, ClipperLib::PolyFillType fill);

} // namespace ombrelune
