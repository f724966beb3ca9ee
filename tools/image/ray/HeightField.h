#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "host/value/Parallel.h"
#include "image/KImage.h"

namespace ombrelune {

/// A picture's alpha, limited to 0 to 1, as heights over its pixels. Heights outside are those of the edge.
class BF_HeightField {
public:
    /// @param smoothing  blurs the heights, in 720ths of the width. Without memory all is level.
    BF_HeightField(KImage const& picture, float smoothing)
        : width_(picture.Width()), height_(picture.Height()),
          heights_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_))
    {
        constexpr int kAlpha = 8;
        std::unique_ptr<KImage> const smooth(
            smoothing > 0.0F ? picture.BlurOf(smoothing, -1.0, kBlurGaussian, kAlpha, 1.0, 1.0) : nullptr);
        KImage const& from = smooth ? *smooth : picture;
        ParallelFor(height_, [&](int y) {
            FltPixel pixel;
            PixPtr in(from.FImage(), 0, y);
            float* out = &heights_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_)];
            for (int x = 0; x < width_; ++x) {
                pixel >>= in;
                *out++ = pixel.alpha > 0.0F ? std::min(pixel.alpha, 1.0F) : 0.0F; // nor NaN
            }
        });
    }

    float At(int x, int y) const
    {
        auto const column = static_cast<std::size_t>(std::clamp(x, 0, width_ - 1));
        auto const row = static_cast<std::size_t>(std::clamp(y, 0, height_ - 1));
        return heights_[row * static_cast<std::size_t>(width_) + column];
    }
    /// Steepest way down, of length 1; zero where it is level. Over 3 by 3 pixels (I. Sobel).
    KVector2 Down(int x, int y) const
    {
        auto const across = [&](int row) { return At(x - 1, row) - At(x + 1, row); };
        auto const up = [&](int column) { return At(column, y - 1) - At(column, y + 1); };
        return KVector2(across(y - 1) + 2.0F * across(y) + across(y + 1),
                        up(x - 1) + 2.0F * up(x) + up(x + 1))
            .Normalize();
    }

private:
    int width_, height_;
    std::vector<float> heights_;
};

} // namespace ombrelune
