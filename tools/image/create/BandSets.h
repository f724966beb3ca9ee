#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <type_traits>
#include <vector>

#include "framework/Registration.h"
#include "framework/RowForms.h"
#include "image/ColorVectors.h"

namespace ombrelune {

/// Bands across one direction: lines, or the dots that cut them. All but the spacing are parts of the
/// spacing.
struct BandShape {
    float spacing, thickness, thicknessIncrease, softness, softnessIncrease;

    BandShape Mix(float t, BandShape const& last) const
    {
        auto const mix = [t](float a, float b) { return (1.0F - t) * a + t * b; };
        return {mix(spacing, last.spacing), mix(thickness, last.thickness),
                mix(thicknessIncrease, last.thicknessIncrease), mix(softness, last.softness),
                mix(softnessIncrease, last.softnessIncrease)};
    }
};

inline UInt4 ScaledProduct(UInt4 a, UInt4 b)
{
    UInt4 const t = a * b + 32768U;
    return (t + (t >> 16)) >> 16;
}

constexpr int kMostSets = 1024; // each is drawn over the whole picture

/// Bands in the unit of the distances that are measured, ready for the inner loop.
class Bands {
public:
    Bands() = default;
    /// @param unit  units of the distance in a spacing of 1
    Bands(BandShape const& shape, float unit)
        : inUse(shape.thickness < 0.5F || shape.thicknessIncrease < 0.0F), spacing_(shape.spacing * unit),
          half_(shape.spacing * shape.thickness * unit),
          increase_(shape.spacing * shape.thicknessIncrease * unit),
          softness_(shape.spacing * shape.softness * unit),
          softnessIncrease_(shape.spacing * shape.softnessIncrease * unit)
    {}

    /// 65535 within half the thickness of the nearest band's centre line, falling to 0 over the softness; for
    /// four distances. Both grow with the number of spacings from the first band.
    UInt4 Value(Float4 distance) const
    {
        Float4 const zero{}, one = zero + 1.0F;
        Float4 const parts = distance / spacing_, whole = WholePart(parts);
        Float4 const f = Absolute((parts - whole) * spacing_), d = Smaller(f, spacing_ - f);
        Float4 const half = Grown(half_, whole, increase_), soft = Grown(softness_, whole, softnessIncrease_);
        Int4 const inside = d < half;
        // Nothing also where there is no spacing and d is not a number. A softness may have sunk below 0.
        Int4 const reached = inside | (d <= half + soft);
        if (IsZero(reinterpret_cast<UInt4>(reached))) return UInt4{}; // as of most places
        Float4 const ramp = Select(inside | (soft <= zero), one, 1.0F - (d - half) / soft);
        Float4 const part = Select(reached, ramp, zero);
        return reinterpret_cast<UInt4>(Truncate16(part));
    }

    bool inUse = false; ///< bands that fill their whole spacing are not

private:
    static Float4 Grown(float base, Float4 const& whole, float increase)
    {
        if (increase == 0.0F) return Float4{} + base;
        Sum4 const start = ToSum4(Float4{} + base);
        return ToFloat4(start + static_cast<double>(increase) * ToSum4(Absolute(whole)));
    }

    float spacing_ = 1.0F, half_ = 0.0F, increase_ = 0.0F, softness_ = 0.0F, softnessIncrease_ = 0.0F;
};

/// The parameters of the first or of the last set.
struct BandSetShape {
    KVector2 center;
    float angle;
    BandShape band, dots;
    KColor color;
};

/// A stack of sets of bands between a first and a last one, merged where they overlap. Pixels are worked out
/// by fours. What a set measures is the derived effect's, at four places in the set's axes:
///     Float4 BandDistance(Float4 x, Float4 y) const    from the first band
///     Float4 DotDistance(Float4 x, Float4 y) const     along the band
///     static constexpr bool kDotsInPixels              unit of DotDistance: pixels, or else of its own
template <class Kind> class KEffectBandSets : public KEffectPixel {
public:
    static constexpr bool kOwnRow = true;
    static char const* Category() { return "Ombrelune\\Image Create"; }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Source; }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        auto const w = static_cast<float>(width), h = static_cast<float>(height) / pixelAspect;
        step = 1.0F / static_cast<float>(superSample);
        firstSample = -(static_cast<float>(superSample - 1) / 2.0F) * step;
        sets.clear();
        int const count = std::min(setCount, kMostSets);
        for (int i = 0; i < count; ++i) {
            float const t = count > 1 ? static_cast<float>(i) / static_cast<float>(count - 1) : 0.0F;
            auto const mix = [t](float a, float b) { return (1.0F - t) * a + t * b; };
            float const angle = mix(first.angle, last.angle);
            float const sine = std::sin(angle), cosine = std::cos(angle);
            Set& set = sets.emplace_back();
            set.center = {mix(first.center.x, last.center.x) * w, mix(first.center.y, last.center.y) * h};
            set.along = {cosine, -sine};
            set.across = {sine, cosine};
            set.band = Bands(first.band.Mix(t, last.band), w);
            set.dots = Bands(first.dots.Mix(t, last.dots), Kind::kDotsInPixels ? w : 1.0F);
            KColor const &a = first.color, &b = last.color;
            KColor32 const color(
                KColor(mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), mix(a.alpha, b.alpha)));
            set.color = reinterpret_cast<UInt4>(Int4{color.blue, color.green, color.red, color.alpha});
        }
        return true;
    }

    Pixel F(int x, int y, KImage*) override
    {
        UInt4 four[4];
        FourPixels(x, y, four);
        return RecordOf<Pixel>(four[0]);
    }
    FltPixel FFlt(int x, int y, KImage*) override
    {
        UInt4 four[4];
        FourPixels(x, y, four);
        return RecordOf<FltPixel>(four[0]);
    }
    void Row(KPixelRow const& row) override
    {
        if (row.data->depth == 2) RowByFours<FltPixel>(row);
        else RowByFours<Pixel>(row);
    }

    BandSetShape first, last;
    int setCount;
    int overlap;
    int superSample; // samples per axis

protected:
    enum Overlap { kMaximum, kAdd, kMultiply, kScreen };

    /// Identifiers of a set in the order of its parameters.
    using SetIds = std::uint32_t[13];

    /// Ranges that differ from set to set.
    struct SetRanges {
        unsigned dotLengthFlags;
        double dotSoftness; // to both sides
    };

    void AddSet(BandSetShape& set, SetIds const& ids, std::string const& suffix, float angle, unsigned flags,
                SetRanges const& ranges, char const* dotSoftnessLabel)
    {
        auto const label = [&](char const* text) { return std::string(text).append(suffix); };
        unsigned const soft = KF_SoftMax, free = KF_SoftMin | KF_SoftMax;
        BandShape &band = set.band, &dots = set.dots;
        // clang-format off
        parameters.AddPoint (&set.center, {0.5F, 0.5F}, label("Center").c_str(), ids[0], flags, KPoint_Normal);
        parameters.AddAngle (&set.angle, angle, label("Angle").c_str(), ids[1], flags | KF_PreviewCentered, KAngle_Radians);
        parameters.AddSlider(&band.spacing,           0.1F,  label("Spacing").c_str(),                          ids[2],  soft, 0.0,  0.5);
        parameters.AddSlider(&band.thickness,         0.1F,  label("Thickness").c_str(),                        ids[3],  soft, 0.0,  0.5);
        parameters.AddSlider(&band.thicknessIncrease, 0.0F,  label("Thickness Increase With Distance").c_str(), ids[4],  free, -0.1, 0.1);
        parameters.AddSlider(&band.softness,          0.05F, label("Softness").c_str(),                         ids[5],  soft, 0.0,  0.25);
        parameters.AddSlider(&band.softnessIncrease,  0.0F,  label("Softness Increase").c_str(),                ids[6],  free, -0.1, 0.1);
        parameters.AddSlider(&dots.spacing,           0.1F,  label("Dot Spacing").c_str(),                      ids[7],  soft, 0.0,  0.5);
        parameters.AddSlider(&dots.thickness,         0.5F,  label("Dot Length").c_str(),                       ids[8],  soft, 0.0,  0.5);
        parameters.AddSlider(&dots.thicknessIncrease, 0.0F,  label("Dot Length Increase With Distance").c_str(), ids[9], ranges.dotLengthFlags, -0.1, 0.1);
        parameters.AddSlider(&dots.softness,          0.0F,  dotSoftnessLabel,                                  ids[10], soft, 0.0,  0.25);
        parameters.AddSlider(&dots.softnessIncrease,  0.0F,  label("Dot Softness Increase").c_str(),            ids[11], free, -ranges.dotSoftness, ranges.dotSoftness);
        parameters.AddColor (&set.color, {1.0F, 1.0F, 1.0F, 1.0F}, label("Color").c_str(), ids[12], 0);
        // clang-format on
    }

    void AddSets(char const* firstChapter, SetIds const& firstIds, char const* lastChapter,
                 SetIds const& lastIds, char const* lastDotSoftness)
    {
        unsigned const soft = KF_SoftMax;
        parameters.AddChapter(firstChapter);
        AddSet(first, firstIds, " 1", 0.0F, KF_Preview | KF_MainInput, {KF_SoftMin | soft, 0.1},
               "Dot Softness 1");
        parameters.AddChapter(lastChapter);
        AddSet(last, lastIds, " 2", 90.0F, KF_Preview, {soft, 1.0}, lastDotSoftness);
    }

private:
    struct Set {
        KVector2 center; // pixels
        KVector2 along, across;
        Bands band, dots;
        UInt4 color; // by word
    };

    template <class Record> static Record RecordOf(UInt4 words)
    {
        Record record;
        if constexpr (std::is_same_v<Record, Pixel>) Store(words, record.word);
        else Store(__builtin_convertvector(reinterpret_cast<Int4>(words), Float4) / 65535.0F, record.word);
        return record;
    }

    template <class Record> void RowByFours(KPixelRow const& row) const
    {
        UInt4 four[4];
        PixelRow<Record>(row, [&](int x, int y, KImage*) {
            if (x % 4 == 0) FourPixels(x, y, four);
            return RecordOf<Record>(four[x % 4]);
        });
    }

    /// The pixels from x to x + 3.
    void FourPixels(int x, int y, UInt4 (&out)[4]) const
    {
        Float4 const left = Float4{0.0F, 1.0F, 2.0F, 3.0F} + static_cast<float>(x);
        for (std::size_t i = 0; i < sets.size(); ++i) {
            UInt4 colors[4];
            UInt4 const total = SampledPixels(left, static_cast<float>(y), sets[i], colors);
            if (i == 0) std::copy_n(colors, 4, out);
            else if (!IsZero(total))
                for (int lane = 0; lane < 4; ++lane)
                    if (total[lane] != 0) out[lane] = Merged(out[lane], colors[lane]);
        }
    }

    /// Colours of four pixels, and the sums of their masks.
    UInt4 SampledPixels(Float4 const& x, float y, Set const& set, UInt4 (&colors)[4]) const
    {
        if (superSample == 1) {
            UInt4 const mask = Mask(x, y, set);
            for (UInt4& color : colors) color = UInt4{};
            if (!IsZero(mask))
                for (int lane = 0; lane < 4; ++lane)
                    colors[lane] = ScaledProduct(set.color, UInt4{} + mask[lane]);
            return mask;
        }
        UInt4 total{}, sums[4] = {};
        for (int i = 0; i < superSample; ++i)
            for (int j = 0; j < superSample; ++j) {
                UInt4 const mask = Mask(x + firstSample + static_cast<float>(i) * step,
                                        y + firstSample + static_cast<float>(j) * step, set);
                if (IsZero(mask)) continue;
                total += mask;
                for (int lane = 0; lane < 4; ++lane)
                    sums[lane] += ScaledProduct(set.color, UInt4{} + mask[lane]);
            }
        auto const samples = static_cast<std::uint32_t>(superSample * superSample);
        for (int lane = 0; lane < 4; ++lane) colors[lane] = sums[lane] / samples;
        return total;
    }

    /// How much of a set there is at four places, 0 to 65535.
    UInt4 Mask(Float4 const& x, float y, Set const& set) const
    {
        Float4 const dx = x - set.center.x;
        float const dy = y / pixelAspect - set.center.y;
        Float4 const along = dx * set.along.x + dy * set.along.y,
                     across = dx * set.across.x + dy * set.across.y;
        auto const& kind = static_cast<Kind const&>(*this);
        UInt4 mask = set.band.inUse ? set.band.Value(kind.BandDistance(along, across)) : UInt4{} + 65535U;
        if (set.dots.inUse && !IsZero(mask))
            mask = ScaledProduct(mask, set.dots.Value(kind.DotDistance(along, across)));
        return mask;
    }

    UInt4 Merged(UInt4 a, UInt4 b) const
    {
        switch (overlap) {
        case kMaximum: return Larger(a, b);
        case kAdd: return Smaller(a + b, UInt4{} + 65535U);
        case kMultiply: return ScaledProduct(a, b);
        default: return 65535U - ScaledProduct(65535U - a, 65535U - b);
        }
    }

    float step = 1.0F, firstSample = 0.0F;
    std::vector<Set> sets;
};

} // namespace ombrelune
