#pragma once

#include <algorithm>
#include <cmath>
#include <concepts>

#include "host/image/Pixel.h"
#include "image/ColorModels.h"

namespace ombrelune {

class KColor32;

/// Colour with floats, nominally 0 to 1, which may exceed that.
class KColor {
public:
    float red = 0.0F, green = 0.0F, blue = 0.0F, alpha = 0.0F;

    KColor() = default;
    KColor(float r, float g, float b, float a) : red(r), green(g), blue(b), alpha(a) {}
    explicit KColor(Pixel const& p) : KColor(From16(p.red), From16(p.green), From16(p.blue), From16(p.alpha))
    {}
    explicit KColor(FltPixel const& p) : KColor(p.red, p.green, p.blue, p.alpha) {}
    explicit KColor(KColor32 const& c); // defined in KColor32.h
    /// A template, so that a list of channels assigns a KColor.
    template <std::same_as<KColor32> Integers> KColor& operator=(Integers const& c)
    {
        return *this = KColor(c);
    }

    bool operator==(KColor const&) const = default; ///< exact, channel by channel

    void Set(float r, float g, float b, float a) { *this = {r, g, b, a}; }
    void Set(FltPixel const& p) { *this = KColor(p); }

    KColor operator+(KColor const& c) const
    {
        return Zip(c, [](float a, float b) { return a + b; });
    }
    KColor operator-(KColor const& c) const
    {
        return Zip(c, [](float a, float b) { return a - b; });
    }
    KColor& operator+=(KColor const& c) { return *this = *this + c; }
    KColor& operator-=(KColor const& c) { return *this = *this - c; }
    KColor& operator*=(float f) { return *this = {red * f, green * f, blue * f, alpha * f}; }
    KColor& operator/=(float f) { return *this = {red / f, green / f, blue / f, alpha / f}; }
    KColor& operator*=(KColor const& c)
    {
        return *this = Zip(c, [](float a, float b) { return a * b; });
    }
    /// A divisor of 0 leaves its channel.
    KColor& operator/=(KColor const& c)
    {
        return *this = Zip(c, [](float a, float b) { return a / (b == 0.0F ? 1.0F : b); });
    }

    // Channel by channel, alpha included.
    KColor Maximum(KColor const& c) const
    {
        return Zip(c, [](float a, float b) { return std::max(a, b); });
    }
    KColor Minimum(KColor const& c) const
    {
        return Zip(c, [](float a, float b) { return std::min(a, b); });
    }
    KColor Difference(KColor const& c) const
    {
        return Zip(c, [](float a, float b) { return std::abs(a - b); });
    }
    void Limit(float low, float high)
    {
        auto const limit = [=](float v) { return std::min(std::max(v, low), high); };
        *this = {limit(red), limit(green), limit(blue), limit(alpha)};
    }

    /// 0 red, 1 green, 2 blue, 3 alpha, any other number the luminance.
    float GetChannel(int channel) const
    {
        switch (channel) {
        case 0: return red;
        case 1: return green;
        case 2: return blue;
        case 3: return alpha;
        default: return Luminance();
        }
    }
    float Difference(KColor const& c, int channel) const
    {
        return std::abs(GetChannel(channel) - c.GetChannel(channel));
    }

    float Luminance() const { return 0.299F * red + 0.587F * green + 0.114F * blue; }
    float Lightness() const { return (red + green + blue) / 3.0F; }
    float Brightness() const { return (Largest() + Smallest()) / 2.0F; }
    float Saturation() const
    {
        float const most = Largest(), least = Smallest();
        if (most == least) return 0.0F;
        return (most - least) / ((most + least) / 2.0F <= 0.5F ? most + least : 2.0F - most - least);
    }
    /// Degrees, 0 to 360; -1 for a grey.
    float Hue() const
    {
        float const most = Largest(), spread = most - Smallest();
        if (spread == 0.0F) return -1.0F;
        float sextant = (red - green) / spread + 4.0F;
        if (most == red) sextant = (green - blue) / spread;
        else if (most == green) sextant = (blue - red) / spread + 2.0F;
        float const degrees = sextant * 60.0F;
        return degrees < 0.0F ? degrees + 360.0F : degrees;
    }

    /// Complement of the lightness (mode 1), of the hue (2) or of each channel (any other); alpha is kept.
    KColor Inverse(int mode) const
    {
        if (mode != 1 && mode != 2) return {1.0F - red, 1.0F - green, 1.0F - blue, alpha};
        float const mirror = 2.0F * (red + green + blue) / 3.0F;
        if (mode == 2) return {mirror - red, mirror - green, mirror - blue, alpha};
        float const shift = 1.0F - mirror;
        return {red + shift, green + shift, blue + shift, alpha};
    }

    /// Hue (in turns) is added, or set when mode is not 0; saturation and lightness become gain times old
    /// plus an offset, within 0 to 1. Alpha is kept.
    KColor CorrectHLS(float hue, float saturation, float lightness, float saturationGain, float lightnessGain,
                      int mode) const
    {
        float r = red, g = green, b = blue;
        ombrelune::CorrectHLS({hue, saturation, lightness, saturationGain, lightnessGain, mode != 0}, r, g,
                              b);
        return {r, g, b, alpha};
    }

private:
    static float From16(std::uint32_t word) { return static_cast<float>(static_cast<int>(word)) / 65535.0F; }
    float Largest() const { return std::max({red, green, blue}); }
    float Smallest() const { return std::min({red, green, blue}); }
    template <class Function> KColor Zip(KColor const& c, Function f) const
    {
        return {f(red, c.red), f(green, c.green), f(blue, c.blue), f(alpha, c.alpha)};
    }
};

} // namespace ombrelune
