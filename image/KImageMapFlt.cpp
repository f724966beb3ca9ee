#include "image/KImageMapFlt.h"

#include <algorithm>
#include <limits>

#include "image/KImage.h"
#include "image/PixelMath.h"
#include "image/RowLoop.h"

namespace ombrelune {

namespace {

// While the distances grow, a pixel in range that was not reached is infinitely far: the smaller distance is
// then right for every pixel, since those out of range stay below any distance.
constexpr float kUnreached = std::numeric_limits<float>::infinity();
constexpr float kOutside = -1.0F;
constexpr float kFarthestStart = 1e30F;

struct Step {
    int dx, dy;
    float length;
};
constexpr float kDiagonal = 1.41421356F;
constexpr Step kSteps[] = {{-1, 0, 1.0F}, {-1, 1, kDiagonal}, {-1, -1, kDiagonal}, {0, 1, 1.0F},
                           {0, -1, 1.0F}, {1, 0, 1.0F},       {1, 1, kDiagonal},   {1, -1, kDiagonal}};

} // namespace

KImageMapFlt::KImageMapFlt(KImage const* image, KImageMapFltData const& data)
    : width_(image->Width()), height_(image->Height())
{
    distances.resize(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
    ParallelFor(height_, [&](int y) {
        VisitRow<FltPixel>(
            y,
            [&](int width, auto in) {
                FltPixel pixel;
                float* const row = &distances[Index(0, y)];
                for (int x = 0; x < width; ++x) {
                    pixel >>= in;
                    row[x] = data.range.IsIn(PixelGetChannel(pixel, data.channel)) ? kUnreached : kOutside;
                }
            },
            image->FImage());
    });
    if (data.type == 1) {
        blobs.assign(distances.size(), -1);
        for (int y = 0; y < height_; ++y)
            for (int x = 0; x < width_; ++x) {
                if (GetFlt(x, y) != kUnreached) continue;
                int const blob = blobCount_;
                Reach({static_cast<std::uint16_t>(x), static_cast<std::uint16_t>(y)}, 0.0F, blob);
                PointsScan<true>(blob);
            }
    } else {
        for (int i = 0; i < std::min(data.pointCount, KImageMapFltData::kPoints); ++i) {
            KVector2 const& p = data.points[i];
            if (!(p.x > -1.0F && p.y > -1.0F)) continue; // not a number, or left of or below the image
            int const x = TruncateToInt(p.x), y = TruncateToInt(p.y);
            float const start = std::max(0.0F, data.radii[i]) * static_cast<float>(width_);
            if (x < width_ && y < height_)
                Reach({static_cast<std::uint16_t>(x), static_cast<std::uint16_t>(y)},
                      std::min(start, kFarthestStart), -1);
        }
        PointsScan<false>(-1);
        ParallelFor(height_, [&](int y) {
            float* const row = &distances[Index(0, y)];
            for (int x = 0; x < width_; ++x) row[x] = row[x] == kUnreached ? kOutside : row[x];
        });
    }
    points_ = {};
}

void KImageMapFlt::SetFlt(int x, int y, float value, int blob)
{
    distances[Index(x, y)] = value;
    if (!blobs.empty()) blobs[Index(x, y)] = blob;
    blobCount_ = std::max(blobCount_, blob + 1);
}

void KImageMapFlt::Reach(Point p, float distance, int blob)
{
    SetFlt(p.x, p.y, distance, blob);
    if (count_ + 1 > points_.size()) points_.resize(2 * count_ + 64);
    points_[count_++] = p;
}

template <bool kBlobs> void KImageMapFlt::PointsScan(int blob)
{
    while (count_ > 0)
        // New points come to the end of the list and wait for the next round, except those that take the
        // place of one that is done.
        for (std::size_t i = count_; i-- > 0;) {
            if (count_ + std::size(kSteps) > points_.size()) points_.resize(2 * count_ + 64);
            Point* const list = points_.data();
            Point const p = list[i];
            std::size_t count = count_ - 1;
            list[i] = list[count];
            float* const centre = &distances[Index(p.x, p.y)];
            float const distance = *centre;
            auto const reach = [&](Step const& step) {
                float& old = centre[step.dy * std::ptrdiff_t{width_} + step.dx];
                bool const isNew = old == kUnreached;
                old = std::min(old, distance + step.length);
                // Written in any case: which pixels are new is hard to foretell.
                list[count] = {static_cast<std::uint16_t>(p.x + step.dx),
                               static_cast<std::uint16_t>(p.y + step.dy)};
                count += isNew;
                if constexpr (kBlobs)
                    if (isNew) blobs[Index(p.x + step.dx, p.y + step.dy)] = blob;
            };
            if (p.x > 0 && p.y > 0 && p.x + 1 < width_ && p.y + 1 < height_) {
                for (Step const& step : kSteps) reach(step);
            } else {
                for (Step const& step : kSteps) {
                    int const x = p.x + step.dx, y = p.y + step.dy;
                    if (x >= 0 && y >= 0 && x < width_ && y < height_) reach(step);
                }
            }
            count_ = count;
        }
}

} // namespace ombrelune
