#include <cmath>

#include "image/KImage.h"
#include "image/RowLoop.h"

namespace ombrelune {

KImage* KImage::OffsetOf(KVector2 const& offset, int mode) const
{
    KImage* const result = LikeOf(-1, -1, -1.0F, -1.0F);
    if (!result) return nullptr;
    float const dx = (0.5F - offset.x) * static_cast<float>(width_);
    float const dy = (0.5F - offset.y) * static_cast<float>(height_);
    ParallelFor(height_, [&](int y) {
        PixPtr out(result->image_, 0, y);
        FltPixel pixel;
        pixel.DropAux();
        for (int x = 0; x < width_; ++x) {
            GetSamplePixel(static_cast<float>(x) + dx, static_cast<float>(y) + dy, pixel, mode);
            out >>= pixel;
        }
    });
    return result;
}

KImage* KImage::SobelOf() const
{
    KImage* const result = LikeOf(-1, -1, -1.0F, -1.0F);
    if (!result) return nullptr;
    auto const row = [&](int y) {
        PixPtr out(result->image_, 0, y);
        // Rows y + 1, y, y - 1 of the columns left, here and right of x; `in` reads the column after the
        // last.
        Pixel window[3][3];
        PixPtr in[] = {PixPtr(image_, 0, std::min(y + 1, height_ - 1)), PixPtr(image_, 0, y),
                       PixPtr(image_, 0, std::max(y - 1, 0))};
        for (int r = 0; r < 3; ++r) {
            window[r][2] >>= in[r];
            window[r][1] = window[r][2];
        }
        for (int x = 0; x < width_; ++x) {
            for (int r = 0; r < 3; ++r) {
                window[r][0] = window[r][1];
                window[r][1] = window[r][2];
                if (x + 1 < width_) window[r][2] >>= in[r];
            }
            Pixel pixel = window[1][1];
            for (int i = 0; i < 4; ++i) {
                auto const at = [&](int r, int c) { return static_cast<int>(window[r][c].word[i]); };
                int const up = at(0, 0) + 2 * at(0, 1) + at(0, 2) - at(2, 0) - 2 * at(2, 1) - at(2, 2);
                int const right = at(0, 2) - at(0, 0) + 2 * at(1, 2) - 2 * at(1, 0) + at(2, 2) - at(2, 0);
                auto const u = static_cast<float>(up), v = static_cast<float>(right);
                pixel.word[i] = LimitTo16(static_cast<int>(std::sqrt(u * u + v * v)));
            }
            out >>= pixel;
        }
    };
    ParallelFor(height_, row);
    return result;
}

} // namespace ombrelune
