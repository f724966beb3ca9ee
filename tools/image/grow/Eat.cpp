// Eat: eats pixels in range that lie within a given run of a place out of range, along the chosen directions,
// with a frayed end.

#include <algorithm>
#include <numeric>
#include <vector>

#include "framework/Registration.h"
#include "framework/RowForms.h"
#include "host/image/BufferPool.h"
#include "image/ColorVectors.h"
#include "image/KRandomStream.h"
#include "image/RowLoop.h"

namespace ombrelune {

namespace {

/// Distances stop counting here, and every pixel starts with it.
constexpr std::uint16_t kFar = 0xffff;

/// One more step of a scan: 0 out of range, where the distance is 0, else one up.
inline void Count(std::uint16_t& counter, std::uint16_t& distance)
{
    auto const next = static_cast<std::uint16_t>(std::min(counter + 1, int{kFar}));
    counter = distance == 0 ? std::uint16_t{0} : next;
    distance = std::min(distance, counter);
}

/// The words in 16 bits; floats are rounded, as pictures are converted.
Float4 To16(Pixel const& p)
{
    return __builtin_convertvector(reinterpret_cast<Int4>(LoadUInt4(p.word)), Float4);
}
Float4 To16(FltPixel const& p)
{
    Float4 const zero{}, v = LoadFloat4(p.word);
    Float4 const limited = Smaller(Select(v > zero, v, zero), zero + 1.0F);
    return __builtin_convertvector(__builtin_convertvector(limited * 65535.0F + 0.5F, Int4), Float4);
}

/// As PixelGetChannel32.
int Channel32(Float4 const& words, int channel)
{
    if (channel < 4) return static_cast<int>(words[WordOf(channel)]);
    return static_cast<int>(0.299F * words[kChannelRed] + 0.587F * words[kChannelGreen] +
                            0.114F * words[kChannelBlue]);
}

/// A plane of numbers in picture memory; no rows when memory is out.
template <class T> class Plane {
public:
    bool Make(std::ptrdiff_t planeWidth, int height)
    {
        width_ = static_cast<std::size_t>(planeWidth);
        buffer_ = TakeBuffer(width_ * static_cast<std::size_t>(height) * sizeof(T));
        return buffer_ != nullptr;
    }
    void Free() { buffer_.reset(); }
    T* Row(int y) const { return reinterpret_cast<T*>(buffer_.get()) + static_cast<std::size_t>(y) * width_; }

private:
    std::size_t width_ = 0;
    PooledBuffer buffer_;
};

} // namespace

class KEffectEat : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Eat", "Eat", "Eats out the edges of an image");
    }
    static char const* Category() { return KEffectImage::Category(); }

    KEffectEat()
    {
        // clang-format off
        parameters.AddChapter("Eat");
        parameters.AddSlider(&length,      0.01F, "Length",       "EaLe"_id, KF_SoftMax, 0.0, 0.2);
        parameters.AddSlider(&noiseLength, 0.5F,  "Noise length", "EaNL"_id, 0,          0.0, 1.0);
        parameters.AddButtonsChannel(&channel, 4, "Base channel", "EaCh"_id, 0);
        parameters.AddRange(&range, {0.01F, 1.0F}, "Eat range low", "high", "EaRL"_id, "EaRH"_id, 0, 0.0, 1.0);
        parameters.AddCheckbox(&fromLeft,   false, "Left",   "EaSL"_id, 0, 4);
        parameters.AddCheckbox(&fromRight,  false, "Right",  "EaSR"_id, 0, 4);
        parameters.AddCheckbox(&fromTop,    true,  "Top",    "EaST"_id, 0, 4);
        parameters.AddCheckbox(&fromBottom, false, "Bottom", "EaSB"_id, 0, 4);
        parameters.AddColor(&color, {0.0F, 0.0F, 0.0F, 0.0F}, "Color", "EaCR"_id, 0);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        eaten = static_cast<unsigned>(std::max(TruncateToInt(length * static_cast<float>(width)), 0));
        noise = static_cast<unsigned>(std::max(TruncateToInt(noiseLength * static_cast<float>(eaten)), 0));
        PixelFromColor(solid, color);
        PixelFromColor(solidFlt, color);
        if (!distances.Make(width, height) || !parts.Make(width, height)) return false;
        SetDistances(*source);
        bool const isSet = SetParts();
        distances.Free();
        return isSet;
    }

    Pixel F(int x, int y, KImage* source) override { return Eaten(x, y, source, solid); }
    FltPixel FFlt(int x, int y, KImage* source) override { return Eaten(x, y, source, solidFlt); }

    void Done(KImage** destination) override
    {
        parts.Free();
        distances.Free();
        KEffectPixel::Done(destination);
    }

    float length;      // widths of the picture
    float noiseLength; // part of the length
    int channel;
    KRange range;
    bool fromLeft, fromRight, fromTop, fromBottom;
    KColor color;

private:
    template <class Record> Record Eaten(int x, int y, KImage const* source, Record const& fill) const
    {
        Record pixel;
        source->GetPixel(x, y, pixel);
        float const f = parts.Row(y)[x];
        if (f >= 1.0F) return pixel;
        for (int c = 0; c < 4; ++c) {
            auto& word = pixel.word[c];
            using Word = std::remove_reference_t<decltype(word)>;
            if (f > 0.0F)
                word = static_cast<Word>(f * static_cast<float>(word) +
                                         (1.0F - f) * static_cast<float>(fill.word[c]));
            else word = fill.word[c];
        }
        return pixel;
    }

    /// Steps from each pixel to the last one out of range that a scan from a chosen side has met before it.
    void SetDistances(KImage const& source)
    {
        // Rows count from the bottom: what the user calls the top is where they end.
        bool const fromRow0 = data.bottomUp ? fromBottom : fromTop;
        bool const fromLastRow = data.bottomUp ? fromTop : fromBottom;
        bool const isAny = fromLeft || fromRight || fromRow0 || fromLastRow;
        ParallelFor(height, [&](int y) {
            std::uint16_t* const row = distances.Row(y);
            if (!isAny) std::fill_n(row, width, kFar);
            else if (source.IsFloat()) MarkRow<FltPixel>(source, y, row);
            else MarkRow<Pixel>(source, y, row);
            std::uint16_t counter = kFar;
            if (fromLeft)
                for (int x = 0; x < width; ++x) Count(counter, row[x]);
            counter = kFar;
            if (fromRight)
                for (int x = width; x-- > 0;) Count(counter, row[x]);
        });
        // Columns go side by side, in strips that stay in a core's cache.
        constexpr int kStrip = 512;
        ParallelFor((width + kStrip - 1) / kStrip, [&](int strip) {
            int const first = strip * kStrip, count = std::min(kStrip, width - first);
            std::uint16_t counters[kStrip];
            auto const countRow = [&](int y) {
                std::uint16_t* const row = distances.Row(y) + first;
                for (int i = 0; i < count; ++i) Count(counters[i], row[i]);
            };
            std::fill_n(counters, kStrip, kFar);
            if (fromRow0)
                for (int y = 0; y < height; ++y) countRow(y);
            std::fill_n(counters, kStrip, kFar);
            if (fromLastRow)
                for (int y = height; y-- > 0;) countRow(y);
        });
    }

    /// 0 for pixels out of range.
    template <class Record> void MarkRow(KImage const& source, int y, std::uint16_t* row) const
    {
        int const low = TruncateToInt(range.low * 65535.0), high = TruncateToInt(range.high * 65535.0);
        VisitRow<Record>(
            y,
            [&](int count, auto in) {
                Record pixel;
                for (int x = 0; x < count; ++x) {
                    pixel >>= in;
                    int const v = Channel32(To16(pixel), channel);
                    row[x] = low <= v && v <= high ? kFar : std::uint16_t{0};
                }
            },
            source.FImage());
    }

    bool IsNoisy(unsigned distance) const { return distance < eaten && distance > eaten - noise; }

    /// How much stays of each pixel. The noise is one stream that runs through the picture row by row, so it
    /// does not depend on threads. False when memory is out.
    bool SetParts()
    {
        auto const counts = MeasureRows(0, height, [&](int y) {
            std::uint16_t const* const row = distances.Row(y);
            return std::count_if(row, row + width, [&](unsigned d) { return IsNoisy(d); });
        });
        std::vector<std::ptrdiff_t> starts(counts.size() + 1, 0);
        std::partial_sum(counts.begin(), counts.end(), starts.begin() + 1);
        Plane<float> draws;
        if (starts.back() > 0 && !draws.Make(starts.back(), 1)) return false;
        KRandomStream random(1234);
        for (std::ptrdiff_t i = 0; i < starts.back(); ++i) draws.Row(0)[i] = random.Random(1.0F);
        ParallelFor(height, [&](int y) {
            float const* draw = draws.Row(0) + starts[static_cast<std::size_t>(y)];
            std::uint16_t const* const row = distances.Row(y);
            float* const out = parts.Row(y);
            for (int x = 0; x < width; ++x) {
                unsigned const d = row[x];
                out[x] = d >= eaten ? 1.0F : 0.0F;
                if (IsNoisy(d))
                    out[x] = *draw++ * static_cast<float>(d + noise - eaten) / static_cast<float>(noise);
            }
        });
        return true;
    }

    unsigned eaten = 0, noise = 0; // pixels
    Pixel solid;
    FltPixel solidFlt;
    Plane<std::uint16_t> distances;
    Plane<float> parts;
};

OMBRELUNE_TOOL(BF_Eat, BF_ThreadedOperator, KEffectEat);

} // namespace ombrelune
