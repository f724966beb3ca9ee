#pragma once

#include <polyclipping/clipper.hpp>

namespace ombrelune {

/// What a second or two of the clipping library is in the units below.
inline constexpr double kMostClippingWork = 2e8;

/// What clipping closed paths will cost: Vatti's sweep looks at all sides that lie on the sweep line, for
/// each side once (a unit a side), and mends each crossing (100 units, by measurement). Nothing that the
/// sweep does is worse. Stops soon after `most`, which may be passed by.
double ClippingWork(ClipperLib::Paths const& paths, double most);

/// The loops that an offset of closed paths has before they are clipped: corners are bevels where the path
/// turns away from the offset, and reach back to the path's point where it turns towards it. Positive is
/// outwards.
ClipperLib::Paths UnclippedOffset(ClipperLib::Paths const& paths, double distance);

/// Of the corners of paths, in full turns: 0 to a half.
double MeanTurn(ClipperLib::Paths const& paths);

} // namespace ombrelune
