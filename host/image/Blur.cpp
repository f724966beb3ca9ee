#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstring>

#include "host/image/BoxFilter.h"
#include "host/image/StoredPixel.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

constexpr int kRowsPerTask = 8;
constexpr int kColumnsPerTask = 4; // 64 bytes of a float row: a whole memory line

/// What becomes of the filtered picture: how much of it replaces the picture, per channel.
struct Mix {
    Float4 amount;
    bool whole; ///< everything, so that the picture need not be read again

    Float4 operator()(Float4 picture, Float4 filtered) const
    {
        Float4 const mixed = picture * (1.0F - amount) + filtered * amount;
        return amount == 0.0F ? picture
                              : mixed; // a channel that is off stays, whatever the filter made of it
    }
};

Mix MixFor(TagList const& tags, BlurFilter filter)
{
    auto const of = static_cast<float>(tags.GetFloat(Blur_Blend, 1.0)) * (filter == kBlurSoften    ? 0.5F
                                                                          : filter == kBlurSharpen ? -1.0F
                                                                                                   : 1.0F);
    Mix mix{{}, true};
    std::uint32_t const switches[] = {Blur_Blue, Blur_Green, Blur_Red, Blur_Alpha};
    for (int i = 0; i < 4; ++i) {
        mix.amount[i] = tags.GetBool(switches[i], true) ? of : 0.0F;
        mix.whole = mix.whole && mix.amount[i] == 1.0F;
    }
    return mix;
}

/// Lines of pixels that are filtered side by side, with room for the filter's reach.
class Lines {
public:
    Lines(int lines, int count, BoxFilter const& filter)
        : count_(count), reach_(filter.Reach()), length_(count + 2 * reach_), filter_(filter),
          scale_(filter.Scale()), buffer_(TakeBuffer(sizeof(Sum4) * static_cast<std::size_t>(length_) *
                                                     static_cast<std::size_t>(lines)))
    {}

    explicit operator bool() const { return buffer_ != nullptr; }
    void Set(int line, int i, Float4 pixel) { Line(line)[reach_ + i] = ToSum4(pixel); }
    void Filter(int line)
    {
        Sum4* const all = Line(line);
        std::fill_n(all, reach_, all[reach_]);
        std::fill_n(all + reach_ + count_, reach_, all[reach_ + count_ - 1]);
        filter_.Run(all, count_);
    }
    /// A pixel after Filter.
    Float4 Get(int line, int i) { return ToFloat4(scale_ * Line(line)[i]); }

private:
    Sum4* Line(int line)
    {
        return reinterpret_cast<Sum4*>(buffer_.get()) + static_cast<std::ptrdiff_t>(line) * length_;
    }

    int count_, reach_, length_;
    BoxFilter const& filter_;
    double scale_;
    PooledBuffer buffer_;
};

/// Filters along x into `middle`, a float picture, which may be `result`, then along y into `result`.
template <class Stored>
bool Filter(Image const& source, Image& middle, Image& result, BoxFilter const& along, BoxFilter const& up,
            Mix const& mix)
{
    int const width = source.Width(), height = source.Height();
    auto const middleRow = [&](int y) { return reinterpret_cast<float*>(middle.MainRow(y)); };
    std::atomic<bool> done = true;

    ParallelFor((height + kRowsPerTask - 1) / kRowsPerTask, [&](int task) {
        Lines lines(1, width, along);
        if (!lines) return done.store(false);
        int const from = task * kRowsPerTask, to = std::min(from + kRowsPerTask, height);
        for (int y = from; y < to; ++y) {
            auto const* in = reinterpret_cast<Stored const*>(source.MainRow(y));
            for (int x = 0; x < width; ++x) lines.Set(0, x, LoadPixel(in + 4 * x));
            lines.Filter(0);
            for (int x = 0; x < width; ++x) Store(lines.Get(0, x), middleRow(y) + 4 * x);
        }
    });

    ParallelFor((width + kColumnsPerTask - 1) / kColumnsPerTask, [&](int task) {
        int const from = task * kColumnsPerTask, count = std::min(kColumnsPerTask, width - from);
        Lines lines(count, height, up);
        if (!lines) return done.store(false);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < count; ++x) lines.Set(x, y, LoadPixel(middleRow(y) + 4 * (from + x)));
        for (int x = 0; x < count; ++x) lines.Filter(x);
        for (int y = 0; y < height; ++y) {
            auto const* in = reinterpret_cast<Stored const*>(source.MainRow(y)) + 4 * from;
            auto* out = reinterpret_cast<Stored*>(result.MainRow(y)) + 4 * from;
            for (int x = 0; x < count; ++x) {
                Float4 const filtered = lines.Get(x, y);
                StorePixel(mix.whole ? filtered : mix(LoadPixel(in + 4 * x), filtered), out + 4 * x);
            }
        }
    });
    return done;
}

} // namespace

Ref<Image> Image::BlurOfImageTagList(TagList const& tags) const
{
    int const code = tags.GetInt(Blur_Type, kBlurGaussian);
    auto const filter =
        code >= kBlurBox && code < kBlurGaussian ? static_cast<BlurFilter>(code) : kBlurGaussian;
    double const x = tags.GetFloat(Blur_XSize), y = tags.GetFloat(Blur_YSize, x);
    double const passes = std::clamp(tags.GetFloat(Blur_Passes, 1.0), 0.0, 16.0);
    // Beyond twice the longer side nothing is left to blur.
    auto const radius = [&](double size) { return std::min(size * width_, 2.0 * std::max(width_, height_)); };
    BoxFilter const along(filter, radius(x), passes), up(filter, radius(y), passes);

    Ref<Image> result = CopyOfImage(true);
    Ref<Image> middle =
        depth_ == kDepthFloat
            ? result
            : NewImageTagList({{Img_Width, width_}, {Img_Height, height_}, {Img_Depth, kDepthFloat}});
    if (!result || !middle) return nullptr;
    if (!IsPlain())
        std::memcpy(result->AuxRow(0), AuxRow(0),
                    static_cast<std::size_t>(auxRowBytes_) * static_cast<std::size_t>(height_));
    bool const done = [&] {
        Mix const mix = MixFor(tags, filter);
        switch (depth_) {
        case kDepthInt8: return Filter<std::uint8_t>(*this, *middle, *result, along, up, mix);
        case kDepthInt16: return Filter<std::uint16_t>(*this, *middle, *result, along, up, mix);
        case kDepthHalf: return Filter<Imath::half>(*this, *middle, *result, along, up, mix);
        default: return Filter<float>(*this, *middle, *result, along, up, mix);
        }
    }();
    return done ? result : nullptr;
}

} // namespace ombrelune
