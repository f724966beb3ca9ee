#pragma once

#include <algorithm>
#include <concepts>
#include <cstdint>

#include "image/KColor.h"
#include "image/PixelMath.h"

namespace ombrelune {

/// Colour with integers, nominally 0 to 65535; sums and differences may leave that until Limit.
class KColor32 {
public:
    int red = 0, green = 0, blue = 0, alpha = 0;

    KColor32() = default;
    KColor32(int r, int g, int b, int a) : red(r), green(g), blue(b), alpha(a) {}
    explicit KColor32(Pixel const& p)
        : KColor32(static_cast<int>(p.red), static_cast<int>(p.green), static_cast<int>(p.blue),
                   static_cast<int>(p.alpha))
    {}
    /// Limited to 0 to 1 and truncated.
    explicit KColor32(KColor const& c) : KColor32(To16(c.red), To16(c.green), To16(c.blue), To16(c.alpha)) {}
    template <std::same_as<KColor> Floats> KColor32& operator=(Floats const& c)
    {
        return *this = KColor32(c);
    }

    bool operator==(KColor32 const&) const = default;

    void Set(int r, int g, int b, int a) { *this = {r, g, b, a}; }

    KColor32 operator+(KColor32 const& c) const
    {
        return Zip(c, [](int a, int b) { return a + b; });
    }
    KColor32 operator-(KColor32 const& c) const
    {
        return Zip(c, [](int a, int b) { return a - b; });
    }
    KColor32 operator-() const { return {-red, -green, -blue, -alpha}; }
    KColor32& operator+=(KColor32 const& c) { return *this = *this + c; }
    KColor32& operator-=(KColor32 const& c) { return *this = *this - c; }
    /// a b / 65535, truncated.
    KColor32 operator*(KColor32 const& c) const
    {
        return Zip(c, [](int a, int b) { return static_cast<int>(std::int64_t{a} * b / 65535); });
    }
    /// a / b, truncated and not scaled: 65535 by 3 is 21845. A divisor of 0 leaves its channel.
    KColor32 operator/(KColor32 const& c) const
    {
        return Zip(c, [](int a, int b) { return TruncateToInt(static_cast<double>(a) / (b == 0 ? 1 : b)); });
    }
    KColor32& operator*=(KColor32 const& c) { return *this = *this * c; }
    KColor32& operator/=(KColor32 const& c) { return *this = *this / c; }
    KColor32& operator*=(float f)
    {
        return *this = Each([f](int v) { return TruncateToInt(static_cast<float>(v) * f); });
    }
    KColor32& operator/=(float f)
    {
        return *this = Each([f](int v) { return TruncateToInt(static_cast<float>(v) / f); });
    }

    void Limit(int low, int high)
    {
        *this = Each([=](int v) { return std::min(std::max(v, low), high); });
    }

    int Luminance() const
    {
        return TruncateToInt(0.299F * static_cast<float>(red) + 0.587F * static_cast<float>(green) +
                             0.114F * static_cast<float>(blue) + 0.5F);
    }

    /// As KColor::Inverse, each channel limited to 0 to 65535.
    KColor32 Inverse(int mode) const
    {
        auto const limited = [this](int r, int g, int b) {
            KColor32 c{r, g, b, 0};
            c.Limit(0, 65535);
            c.alpha = alpha;
            return c;
        };
        if (mode != 1 && mode != 2) return limited(65535 - red, 65535 - green, 65535 - blue);
        int const mirror = 2 * (red + green + blue) / 3;
        if (mode == 2) return limited(mirror - red, mirror - green, mirror - blue);
        int const shift = 65535 - mirror;
        return limited(red + shift, green + shift, blue + shift);
    }

    /// As KColor::CorrectHLS.
    KColor32 CorrectHLS(float hue, float saturation, float lightness, float saturationGain,
                        float lightnessGain, int mode) const
    {
        KColor32 corrected(
            KColor(*this).CorrectHLS(hue, saturation, lightness, saturationGain, lightnessGain, mode));
        corrected.alpha = alpha; // the way through floats may lose 1
        return corrected;
    }

    /// Multiplies red, green and blue by a gain. What a channel's gain has above 1 is lent to all three
    /// instead: the mean excess times 65535 is added to each. Limits all four channels to 0 to 65535.
    void CalcColor(KColor gain);

private:
    static int To16(float v) { return static_cast<int>(Truncate16(v)); }
    template <class Function> KColor32 Each(Function f) const
    {
        return {f(red), f(green), f(blue), f(alpha)};
    }
    template <class Function> KColor32 Zip(KColor32 const& c, Function f) const
    {
        return {f(red, c.red), f(green, c.green), f(blue, c.blue), f(alpha, c.alpha)};
    }
};

inline KColor32 operator*(float f, KColor32 c) { return c *= f; }

/// Colour words of a record from a colour: limited to 0 to 1 and truncated.
inline void PixelFromColor(Pixel& p, KColor const& c)
{
    p.red = Truncate16(c.red);
    p.green = Truncate16(c.green);
    p.blue = Truncate16(c.blue);
    p.alpha = Truncate16(c.alpha);
}

/// The same of floats, which keep what lies beyond 0 to 1.
inline void PixelFromColor(FltPixel& p, KColor const& c)
{
    p.red = c.red;
    p.green = c.green;
    p.blue = c.blue;
    p.alpha = c.alpha;
}

inline KColor::KColor(KColor32 const& c)
    : KColor(static_cast<float>(c.red) / 65535.0F, static_cast<float>(c.green) / 65535.0F,
             static_cast<float>(c.blue) / 65535.0F, static_cast<float>(c.alpha) / 65535.0F)
{}

inline void KColor32::CalcColor(KColor gain)
{
    int excess = 0, channels = 0;
    for (float* g : {&gain.red, &gain.green, &gain.blue}) {
        if (*g <= 1.0F) continue;
        excess += TruncateToInt((*g - 1.0F) * 65535.0F);
        *g = 1.0F;
        ++channels;
    }
    int const overflow = channels ? excess / channels : 0;
    auto const apply = [&](float g, int v) {
        return TruncateToInt(g * static_cast<float>(v) + 0.5F + static_cast<float>(overflow));
    };
    *this = {apply(gain.red, red), apply(gain.green, green), apply(gain.blue, blue), alpha};
    Limit(0, 65535);
}

} // namespace ombrelune
