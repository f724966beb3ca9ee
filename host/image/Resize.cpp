#include "host/image/Image.h"

#include <algorithm>
#include <vector>

#include "host/image/PixelCodec.h"
#include "host/image/StoredType.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

/// Which source places make up each target place along one axis, and how much of each.
struct Axis {
    struct Taps {
        int first, count;
        std::size_t weights; // where this place's weights begin
    };
    std::vector<Taps> taps;
    std::vector<float> weights;
};

/// Shrinking: the mean over the interval that the target pixel covers, parts of pixels by their part.
/// Growing: linear between the centres of the two nearest pixels, the border repeated.
Axis MakeAxis(int source, int target)
{
    Axis axis;
    std::int64_t const s = source, t = target;
    for (std::int64_t i = 0; i < t; ++i) {
        std::size_t const begin = axis.weights.size();
        if (t < s) {
            // In units of 1 / target: pixel j covers j t to (j + 1) t, this place i s to (i + 1) s.
            std::int64_t const low = i * s, high = low + s, first = low / t, last = (high - 1) / t;
            for (std::int64_t j = first; j <= last; ++j) {
                std::int64_t const part = std::min(high, (j + 1) * t) - std::max(low, j * t);
                axis.weights.push_back(
                    static_cast<float>(static_cast<double>(part) / static_cast<double>(s)));
            }
            axis.taps.push_back({static_cast<int>(first), static_cast<int>(last - first + 1), begin});
        } else {
            // The centre in units of 1 / (2 target) behind the first pixel's centre.
            std::int64_t const centre = std::clamp((2 * i + 1) * s - t, std::int64_t{0}, 2 * t * (s - 1)),
                               first = centre / (2 * t);
            double const part = static_cast<double>(centre % (2 * t)) / static_cast<double>(2 * t);
            axis.weights.push_back(static_cast<float>(1.0 - part));
            // A weight of 0 is left out, or an infinite neighbour would make NaN of it.
            if (part > 0.0) axis.weights.push_back(static_cast<float>(part));
            axis.taps.push_back({static_cast<int>(first), part > 0.0 ? 2 : 1, begin});
        }
    }
    return axis;
}

/// Target rows in blocks: each row first gathers its source rows into one row of floats, then gathers that
/// row's pixels. `channels` is a compile-time constant where it can be.
template <class Stored, class Channels, class SourceRow, class TargetRow>
void ResizeRows(Axis const& across, Axis const& down, int sourceWidth, Channels channels, SourceRow sourceRow,
                TargetRow targetRow)
{
    constexpr int kBlock = 16;
    int const height = static_cast<int>(down.taps.size());
    ParallelFor((height + kBlock - 1) / kBlock, [&](int block) {
        std::vector<float> gathered(static_cast<std::size_t>(sourceWidth) *
                                    static_cast<std::size_t>(channels));
        for (int y = block * kBlock; y < std::min(height, (block + 1) * kBlock); ++y) {
            Axis::Taps const& rows = down.taps[static_cast<std::size_t>(y)];
            std::fill(gathered.begin(), gathered.end(), 0.0F);
            for (int k = 0; k < rows.count; ++k) {
                float const weight = down.weights[rows.weights + static_cast<std::size_t>(k)];
                Stored const* const row = sourceRow(rows.first + k);
                for (std::size_t i = 0; i < gathered.size(); ++i)
                    gathered[i] += weight * PixelCodec<Stored>::ToFloat(row[i]);
            }
            Stored* out = targetRow(y);
            for (Axis::Taps const& pixels : across.taps) {
                float const* const weights = &across.weights[pixels.weights];
                for (int c = 0; c < channels; ++c) {
                    float const* in = gathered.data() + std::ptrdiff_t{pixels.first} * channels + c;
                    float sum = 0.0F;
                    for (int k = 0; k < pixels.count; ++k) sum += weights[k] * in[k * channels];
                    *out++ = PixelCodec<Stored>::FromFloat(sum);
                }
            }
        }
    });
}

} // namespace

Ref<Image> Image::ResizeOfImage(int width, int height) const
{
    Ref<Image> resized = NewImageTagList({{Img_Like, this}, {Img_Width, width}, {Img_Height, height}});
    if (!resized) return nullptr;
    Axis const across = MakeAxis(width_, width), down = MakeAxis(height_, height);
    WithStoredType(depth_, [&]<class Stored>(std::type_identity<Stored>) {
        ResizeRows<Stored>(
            across, down, width_, std::integral_constant<int, 4>{},
            [&](int y) { return reinterpret_cast<Stored const*>(MainRow(y)); },
            [&](int y) { return reinterpret_cast<Stored*>(resized->MainRow(y)); });
    });
    if (!IsPlain())
        ResizeRows<float>(
            across, down, width_, AuxFloats(), [&](int y) { return AuxRow(y); },
            [&](int y) { return resized->AuxRow(y); });
    return resized;
}

} // namespace ombrelune
