#include "image/CombineImages.h"

#include <algorithm>

#include "host/value/Parallel.h"
#include "image/KImage.h"

namespace ombrelune {

namespace {

/// Reads both pictures from the region's corner on, in each row that both have, and writes the target.
template <class Record, class Change>
void ForRegion(KImage* target, KImage* source, KImagePixelRegion const& region, Change const& change)
{
    int const left = std::max(region.x, 0), low = std::max(region.y, 0);
    int const right = std::min({region.x + region.width, region.x + source->Width(), target->Width()});
    int const high = std::min({region.y + region.height, region.y + source->Height(), target->Height()});
    ParallelFor(std::max(high - low, 0), [&](int row) {
        PixPtr in(source->FImage(), left - region.x, low + row - region.y);
        PixPtr out(target->FImage(), left, low + row);
        Record from, to;
        for (int x = left; x < right; ++x) {
            from >>= in;
            out.GetPixel(to);
            change(from, to);
            out >>= to;
        }
    });
}

} // namespace

void CombineImages(KImage* target, KImage* source, KImagePixelRegion const& region, CombineMode mode,
                   ChannelStyle const& style)
{
    bool const merge = mode == kCombineMerge;
    if (!target->IsFloat() && !style.IsColorBeyondRange()) {
        std::uint32_t const opacity = Truncate16(style.opacity), alpha = style.color.alpha;
        ForRegion<Pixel>(target, source, region, [=](Pixel& from, Pixel& to) {
            // What the source covers is its alpha before the colour's thins it.
            std::uint32_t const kept = merge ? 65535U - ScaledProduct(opacity, from.alpha) : 0U;
            from.alpha = ScaledProduct(from.alpha, alpha);
            for (int i = 0; i < 4; ++i)
                to.word[i] =
                    std::min(ScaledProduct(kept, to.word[i]) + ScaledProduct(opacity, from.word[i]), 65535U);
        });
        return;
    }
    float const opacity = style.opacity, alpha = style.floatColor.alpha;
    bool const limit = !target->IsFloat();
    ForRegion<FltPixel>(target, source, region, [=](FltPixel& from, FltPixel& to) {
        from.alpha *= alpha;
        float const kept = merge ? 1.0F - opacity * from.alpha : 0.0F;
        for (int i = 0; i < 4; ++i) {
            float const added = opacity * from.word[i];
            to.word[i] = merge ? kept * to.word[i] + added : added;
            if (limit) to.word[i] = std::min(std::max(to.word[i], 0.0F), 1.0F);
        }
    });
}

} // namespace ombrelune
