#pragma once

#include <cstdint>
#include <vector>

#include "image/KRange.h"
#include "image/KVector2.h"

namespace ombrelune {

class KImage;

/// What a KImageMapFlt is made of. A plain record: the parameters of tools are bound to its members.
struct KImageMapFltData {
    static constexpr int kPoints = 128;

    int type = 0; ///< 1 blobs, any other seed points
    int channel = 0;
    KRange range{0.0F, 1.0F};
    int pointCount = 0;
    KVector2 points[kPoints];  ///< pixels
    float radii[kPoints] = {}; ///< distance at which a seed starts, in widths of the image
};

/// Distances grown over the pixels whose channel is in range: from seed points, or over each connected blob
/// from its first pixel. A way goes from pixel to pixel, 1 across an edge and the root of 2 across a corner.
/// A pixel's distance is that of the first ways that reach it, not always of the shortest.
class KImageMapFlt {
public:
    KImageMapFlt(KImage const* image, KImageMapFltData const& data);

    int Width() const { return width_; }
    int Height() const { return height_; }
    float GetFlt(int x, int y) const { return distances[Index(x, y)]; }
    void SetFlt(int x, int y, float value, int blob);
    void Fill(float value) { distances.assign(distances.size(), value); }
    /// Number of blobs.
    int GetIndexCount() const { return blobCount_; }

    std::vector<float> distances; ///< in pixels, row by row; -1 for pixels that were not reached
    std::vector<int> blobs; ///< number of each pixel's blob from 0 on, -1 without one; empty for seed points

private:
    std::size_t Index(int x, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }
    /// A listed pixel; the sides of pictures end at 65536.
    struct Point {
        std::uint16_t x, y;
    };

    void Reach(Point p, float distance, int blob);
    template <bool kBlobs> void PointsScan(int blob);

    int width_, height_;
    int blobCount_ = 0;
    // While the distances grow: the pixels that have yet to reach their neighbours come first.
    std::vector<Point> points_;
    std::size_t count_ = 0;
};

} // namespace ombrelune
