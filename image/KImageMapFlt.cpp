#include "image/KImageMapFlt.h"

#include <algorithm>

#include "image/KImage.h"
#include "image/PixelMath.h"

namespace ombrelune {

KImageMapFlt::KImageMapFlt(KImage const* image, KImageMapFltData const& data)
    : width_(image->Width()), height_(image->Height())
{
    std::size_t const pixels = static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    distances.assign(pixels, -1.0F);
    blobs.assign(pixels, -1);
    mask_.SetImage(image, data.channel, data.range);
    if (data.type == 1) {
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x) {
                if (!mask_.GetBit(x, y) || GetFlt(x, y) >= 0.0F) continue;
                int const blob = blobCount_;
                PointAdd(x, y, 0.0F, blob);
                PointsScan(blob);
            }
    } else {
        for (int i = 0; i < std::min(data.pointCount, KImageMapFltData::kPoints); ++i) {
            KVector2 const& p = data.points[i];
            if (!(p.x > -1.0F && p.y > -1.0F)) continue; // not a number, or left of or below the image
            int const x = TruncateToInt(p.x), y = TruncateToInt(p.y);
            if (x < width_ && y < height_)
                PointAdd(x, y, std::max(0.0F, data.radii[i]) * static_cast<float>(width_), -1);
        }
        PointsScan(-1);
    }
    mask_.SetSize(0, 0);
    points_ = {};
}

void KImageMapFlt::SetFlt(int x, int y, float value, int blob)
{
    distances[Index(x, y)] = value;
    blobs[Index(x, y)] = blob;
    blobCount_ = std::max(blobCount_, blob + 1);
}

void KImageMapFlt::PointAdd(int x, int y, float distance, int blob)
{
    points_.emplace_back(x, y);
    SetFlt(x, y, distance, blob);
}

void KImageMapFlt::PointsScan(int blob)
{
    struct Step {
        int dx, dy;
        float length;
    };
    constexpr float kDiagonal = 1.41421356F;
    static constexpr Step kSteps[] = {{-1, 0, 1.0F},     {-1, 1, kDiagonal}, {-1, -1, kDiagonal},
                                      {0, 1, 1.0F},      {0, -1, 1.0F},      {1, 0, 1.0F},
                                      {1, 1, kDiagonal}, {1, -1, kDiagonal}};
    while (!points_.empty())
        // New points come to the end of the list and wait for the next round, except those that take the
        // place of one that is done.
        for (std::size_t i = points_.size(); i-- > 0;) {
            KVector2i const p = points_[i];
            points_[i] = points_.back();
            points_.pop_back();
            float const distance = GetFlt(p.x, p.y);
            for (Step const& step : kSteps)
                DoPoint(p.x + step.dx, p.y + step.dy, distance + step.length, blob);
        }
}

void KImageMapFlt::DoPoint(int x, int y, float distance, int blob)
{
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
    float& old = distances[Index(x, y)];
    if (old >= 0.0F) old = std::min(old, distance);
    else if (mask_.GetBit(x, y)) PointAdd(x, y, distance, blob);
}

} // namespace ombrelune
