#pragma once

#include <algorithm>

#include "host/image/Image.h"

namespace ombrelune {

/// Pixel number along a side of `size` pixels under an edge rule; -1 for black.
template <EdgeModes Edges> int EdgeIndex(int i, int size)
{
    if (static_cast<unsigned>(i) < static_cast<unsigned>(size)) return i;
    if constexpr (Edges == kEdgeBlack) return -1;
    else if constexpr (Edges == kEdgeWrap) return i % size < 0 ? i % size + size : i % size;
    else return std::clamp(i, 0, size - 1);
}

} // namespace ombrelune
