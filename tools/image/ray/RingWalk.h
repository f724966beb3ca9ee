#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "image/KImage.h"
#include "image/KVector2.h"

namespace ombrelune {

/// Where the ray from the centre to a pixel crosses the square ring before the pixel's own: two pixels beside
/// each other, the second with weight `part`, and how far across the ray goes in this step.
struct RingCrossing {
    int x, y;
    int nextX, nextY;
    float part;  // 0 to 1
    float shift; // pixels

    /// A channel at the crossing, from the colour words of the two pixels.
    template <class Record> float Mix(Record const& at, Record const& next, int channel) const
    {
        return (1.0F - part) * static_cast<float>(at.word[channel]) +
               part * static_cast<float>(next.word[channel]);
    }
};

/// How much of the ring before goes into a pixel.
struct RingFalloff {
    bool isSquare;
    float straight; // of rays that go along an axis
    float exponent;

    float At(float shift) const
    {
        return isSquare ? straight : straight / std::pow(shift * shift + 1.0F, exponent);
    }
};

/// Calls visit(x, y, crossing) for every pixel but the centre, ring by ring outward; what a ring reads was
/// all visited before. The centre may lie outside the picture, and then crossings may do so too.
template <class Visit>
void WalkRings(int width, int height, std::int64_t cx, std::int64_t cy, Visit const& visit)
{
    // Rings that do not reach the picture are passed over, so that a far centre costs nothing.
    std::int64_t const first = std::max({std::int64_t{1}, -cx, cx - width + 1, -cy, cy - height + 1});
    std::int64_t const end = std::max({width - cx, cx + 1, height - cy, cy + 1});
    // The crossing in the row or column one step nearer to the centre.
    auto const place = [](std::int64_t centre, std::int64_t across, std::int64_t r) {
        return static_cast<double>(centre) +
               static_cast<double>(across) * static_cast<double>(r - 1) / static_cast<double>(r);
    };
    auto const inRow = [&](std::int64_t x, std::int64_t y, std::int64_t r) {
        double const sx = place(cx, x - cx, r), whole = std::floor(sx);
        int const inner = static_cast<int>(y < cy ? y + 1 : y - 1), i = static_cast<int>(whole);
        visit(static_cast<int>(x), static_cast<int>(y),
              RingCrossing{i, inner, i + 1, inner, static_cast<float>(sx - whole),
                           static_cast<float>(static_cast<double>(x) - sx)});
    };
    auto const inColumn = [&](std::int64_t x, std::int64_t y, std::int64_t r) {
        double const sy = place(cy, y - cy, r), whole = std::floor(sy);
        int const inner = static_cast<int>(x < cx ? x + 1 : x - 1), i = static_cast<int>(whole);
        visit(static_cast<int>(x), static_cast<int>(y),
              RingCrossing{inner, i, inner, i + 1, static_cast<float>(sy - whole),
                           static_cast<float>(static_cast<double>(y) - sy)});
    };
    auto const isColumn = [&](std::int64_t x) { return x >= 0 && x < width; };
    auto const isRow = [&](std::int64_t y) { return y >= 0 && y < height; };
    for (std::int64_t r = first; r < end; ++r) {
        for (std::int64_t const y : {cy - r, cy + r}) {
            if (!isRow(y)) continue;
            std::int64_t const last = std::min<std::int64_t>(width, cx + r);
            for (std::int64_t x = std::max<std::int64_t>(0, cx - r + 1); x < last; ++x) inRow(x, y, r);
        }
        for (std::int64_t const x : {cx - r, cx + r}) {
            if (!isColumn(x)) continue;
            std::int64_t const last = std::min<std::int64_t>(height, cy + r);
            for (std::int64_t y = std::max<std::int64_t>(0, cy - r + 1); y < last; ++y) inColumn(x, y, r);
        }
        for (std::int64_t const x : {cx - r, cx + r})
            for (std::int64_t const y : {cy - r, cy + r})
                if (isColumn(x) && isRow(y)) r % 2 == 0 ? inRow(x, y, r) : inColumn(x, y, r);
    }
}

} // namespace ombrelune
