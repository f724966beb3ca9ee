#pragma once

#include <cstdint>

namespace ombrelune {

/// Colour of a host's own drawing, 0 to 255.
struct FuColor {
    std::uint8_t red = 0, green = 0, blue = 0, alpha = 255;
};

/// Colours of a tile in the graph, at its top and at its bottom: what Reg_TileColor points to.
struct ResColor {
    FuColor upper, lower;
};

} // namespace ombrelune
