#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "framework/PixelConversion.h"
#include "framework/Registration.h"

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

    /// 65535 within half the thickness of the nearest band's centre line, falling to 0 over the softness.
    /// Both grow with the number of spacings from the first band.
    std::uint32_t Value(float distance) const
    {
        float const parts = distance / spacing_;
        float const whole = std::trunc(parts), f = std::abs((parts - whole) * spacing_);
        float const d = std::min(f, spacing_ - f);
        double const far = std::abs(whole);
        auto const half = static_cast<float>(half_ + far * increase_);
        auto const soft = static_cast<float>(softness_ + far * softnessIncrease_);
        if (d < half) return 65535;
        if (!(d <= half + soft)) return 0; // also where there is no spacing
        if (!(soft > 0.0F)) return 65535;
        return static_cast<std::uint32_t>(static_cast<int>((1.0F - (d - half) / soft) * 65535.0));
    }

    bool inUse = false; ///< bands that fill their whole spacing are not

private:
    float spacing_ = 1.0F;
    double half_ = 0.0, increase_ = 0.0, softness_ = 0.0, softnessIncrease_ = 0.0;
};

/// The parameters of the first or of the last set.
struct BandSetShape {
    KVector2 center;
    float angle;
    BandShape band, dots;
    KColor color;
};

/// A stack of sets of bands between a first and a last one, merged where they overlap. What a set measures is
/// the derived effect's:
///     float BandDistance(KVector2 const& v) const    from the first band; v is turned into the set's axes
///     float DotDistance(KVector2 const& v) const     along the band
///     static bool kDotsInPixels                      unit of DotDistance: pixels, or else of its own
template <class Kind> class KEffectBandSets : public KEffectPixel {
public:
    static char const* Category() { return "Ombrelune\\Image Create"; }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Source; }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        auto const w = static_cast<float>(width), h = static_cast<float>(height) / pixelAspect;
        step = 1.0F / static_cast<float>(superSample);
        firstSample = -(static_cast<float>(superSample - 1) / 2.0F) * step;
        sets.clear();
        for (int i = 0; i < setCount; ++i) {
            float const t = setCount > 1 ? static_cast<float>(i) / static_cast<float>(setCount - 1) : 0.0F;
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
            set.color = KColor32(
                KColor(mix(a.red, b.red), mix(a.green, b.green), mix(a.blue, b.blue), mix(a.alpha, b.alpha)));
        }
        return true;
    }

    Pixel F(int x, int y, KImage*) override
    {
        Pixel result;
        ProcessPixelSuperSample(x, y, sets[0], result);
        for (std::size_t i = 1; i < sets.size(); ++i) {
            Pixel other;
            if (ProcessPixelSuperSample(x, y, sets[i], other) == 0) continue;
            for (int c = 0; c < 4; ++c) result.word[c] = Merged(result.word[c], other.word[c]);
        }
        return result;
    }

    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel result;
        ColorWordsFrom(result, KEffectBandSets::F(x, y, source));
        return result;
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
        auto const label = [&](char const* text) { return text + suffix; };
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
        KColor32 color;
    };

    /// What a set gives at a place; 0 and no colour where it has nothing.
    std::uint32_t ProcessPixel(float x, float y, Set const& set, Pixel& out) const
    {
        KVector2 const v = KVector2(x, y / pixelAspect) - set.center;
        KVector2 const w(v * set.along, v * set.across);
        auto const& kind = static_cast<Kind const&>(*this);
        std::uint32_t m = set.band.inUse ? set.band.Value(kind.BandDistance(w)) : 65535;
        if (m != 0 && set.dots.inUse) m = ScaledProduct(m, set.dots.Value(kind.DotDistance(w)));
        auto const scaled = [m](int word) { return ScaledProduct(static_cast<std::uint32_t>(word), m); };
        out.blue = scaled(set.color.blue);
        out.green = scaled(set.color.green);
        out.red = scaled(set.color.red);
        out.alpha = scaled(set.color.alpha);
        return m;
    }

    std::uint32_t ProcessPixelSuperSample(int x, int y, Set const& set, Pixel& out) const
    {
        auto const left = static_cast<float>(x), low = static_cast<float>(y);
        if (superSample == 1) return ProcessPixel(left, low, set, out);
        auto const n = static_cast<std::uint32_t>(superSample);
        std::uint32_t sum[4] = {}, total = 0;
        for (std::uint32_t i = 0; i < n; ++i)
            for (std::uint32_t j = 0; j < n; ++j) {
                Pixel sample;
                std::uint32_t const m =
                    ProcessPixel(left + firstSample + static_cast<float>(i) * step,
                                 low + firstSample + static_cast<float>(j) * step, set, sample);
                if (m == 0) continue;
                total += m;
                for (int c = 0; c < 4; ++c) sum[c] += sample.word[c];
            }
        for (int c = 0; c < 4; ++c) out.word[c] = sum[c] / (n * n);
        return total;
    }

    std::uint32_t Merged(std::uint32_t a, std::uint32_t b) const
    {
        switch (overlap) {
        case kMaximum: return std::max(a, b);
        case kAdd: return std::min(a + b, 65535U);
        case kMultiply: return ScaledProduct(a, b);
        default: return 65535 - ScaledProduct(65535 - a, 65535 - b);
        }
    }

    float step = 1.0F, firstSample = 0.0F;
    std::vector<Set> sets;
};

} // namespace ombrelune
