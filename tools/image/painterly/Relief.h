#pragma once

#include <algorithm>
#include <memory>
#include <vector>

#include "host/value/Parallel.h"
#include "image/HeightNormal.h"
#include "image/KImage.h"

namespace ombrelune {

/// Heights of a blurred picture, once for each pixel: a normal reads nine of them.
class Relief {
public:
    /// Null when memory is out; `filter` is a row of buttons "Box", "Soften", "Bartlett", "Gaussian".
    /// @param x, y      720ths of the width
    /// @param channels  as KImage::BlurOf
    /// @param selector, table  as KImage::Shape
    static std::unique_ptr<Relief> Make(KImage const& source, float x, float y, int filter, bool quick,
                                        int channels, int selector, KLookUpTable const* table)
    {
        static constexpr int filters[] = {0, 1, 2, 4}; // the host's numbers
        int const chosen = quick ? 0 : filters[std::clamp(filter, 0, 3)];
        std::unique_ptr<KImage> const blurred(source.BlurOf(x, y, chosen, channels, 1.0, 1.0));
        return blurred ? std::unique_ptr<Relief>(new Relief(*blurred, selector, table)) : nullptr;
    }

    /// As KImage::GetNormal of the blurred picture.
    KVector3 Normal(int x, int y, float strength) const
    {
        int const columns[] = {std::max(x - 1, 0), x, std::min(x + 1, width_ - 1)};
        int const* const rows[] = {Row(std::max(y - 1, 0)), Row(y), Row(std::min(y + 1, height_ - 1))};
        return HeightNormal(width_, strength, [&](int dx, int dy) { return rows[dy + 1][columns[dx + 1]]; });
    }

private:
    Relief(KImage const& picture, int selector, KLookUpTable const* table)
        : width_(picture.Width()), height_(picture.Height()),
          heights_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_))
    {
        ParallelFor(height_, [&](int y) {
            PixPtr in(picture.FImage(), 0, y);
            Pixel pixel;
            int* out = const_cast<int*>(Row(y));
            for (int x = 0; x < width_; ++x) {
                pixel >>= in;
                *out++ = KImage::Shape(table, pixel, selector);
            }
        });
    }
    int const* Row(int y) const
    {
        return &heights_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_)];
    }

    int width_, height_;
    std::vector<int> heights_;
};

} // namespace ombrelune
