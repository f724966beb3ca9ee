#pragma once

namespace ombrelune {

// Colour models on floats, every component in 0 to 1; hues are fractions of a turn and 0 for greys.
//
// Hue, lightness and saturation are templates over the number: a float, or any vector of floats with the
// arithmetic operators and a Select, whose lanes then give the same bytes as single floats. They choose
// between values instead of jumping, since neighbouring pixels seldom agree on a sextant.

template <class C, class F> F Select(C const& condition, F const& a, F const& b) { return condition ? a : b; }

template <class F> F Larger(F const& a, F const& b) { return Select(a < b, b, a); }
template <class F> F Smaller(F const& a, F const& b) { return Select(b < a, b, a); }

/// One channel of HLStoRGB: the trapezium over the turn that lies between m1 and m2.
template <class F> F toRGB(F const& m1, F const& m2, F h)
{
    F const rising = F{} + 0.16666667F, full = F{} + 0.5F, falling = F{} + 0.6666667F;
    h = Select(h > F{} + 1.0F, h - 1.0F, h);
    h = Select(h < F{}, h + 1.0F, h);
    F const slope = m1 + (m2 - m1) * Select(h < rising, h, falling - h) * 6.0F;
    F const inside = Select(h < rising, slope, Select(h < full, m2, slope));
    return Select(h < falling, inside, m1);
}

/// Method: J. Foley, A. van Dam, Computer Graphics, the double hexcone.
template <class F> void RGBtoHLS(F const& r, F const& g, F const& b, F& h, F& l, F& s)
{
    F const zero{}, one = zero + 1.0F;
    F const most = Larger(Larger(r, g), b), least = Smaller(Smaller(r, g), b);
    F const sum = most + least, spread = most - least;
    l = sum * 0.5F;
    F const ratio = spread / Select(l > one * 0.5F, 2.0F - most - least, sum);
    s = Select(spread == zero, zero, ratio);
    F const difference = Select(most == r, g - b, Select(most == g, b - r, r - g));
    F const sextant = Select(most == r, zero, Select(most == g, one + one, one * 4.0F));
    h = (difference / Select(spread == zero, one, spread) + sextant) / 6.0F;
    h = Select(h < zero, h + 1.0F, h);
}

/// A saturation of 0 makes all three equal to l.
template <class F> void HLStoRGB(F const& h, F const& l, F const& s, F& r, F& g, F& b)
{
    F const m2 = Select(l > F{} + 0.5F, l + s - l * s, l * (s + 1.0F));
    F const m1 = l * 2.0F - m2;
    r = toRGB(m1, m2, h + 0.33333334F);
    g = toRGB(m1, m2, h);
    b = toRGB(m1, m2, h - 0.33333334F);
}

/// What CorrectHLS does with a colour: hue (in turns) is added, or set; saturation and lightness become gain
/// times old plus an offset, within 0 to 1.
struct HLSCorrection {
    float hue, saturation, lightness, saturationGain, lightnessGain;
    bool setHue;
};

template <class F> void CorrectHLS(HLSCorrection const& c, F& r, F& g, F& b)
{
    F const zero{}, one = zero + 1.0F;
    // Written so that a saturation that is not a number, of colours far beyond 1, becomes 0.
    auto const limit = [&](F const& v) { return Select(v > zero, Smaller(v, one), zero); };
    F h, l, s;
    RGBtoHLS(r, g, b, h, l, s);
    h = c.setHue ? zero + c.hue : h + c.hue;
    h = Select(h < one, Select(h < zero, h + 1.0F, h), h - 1.0F);
    HLStoRGB(h, limit(l * c.lightnessGain + c.lightness), limit(s * c.saturationGain + c.saturation), r, g,
             b);
}

/// The hue takes a third of a turn for each smallest channel, and not evenly within it, unlike the hexcone's.
inline void RGBtoHSV(float r, float g, float b, float& h, float& s, float& v)
{
    float const most = Larger(Larger(r, g), b), least = Smaller(Smaller(r, g), b);
    v = most;
    if (most == least) {
        h = s = 0.0F;
        return;
    }
    s = (most - least) / most;
    if (least == r) h = (b - r) / (b + g - 2.0F * r) + 1.0F;
    else if (least == g) h = (r - g) / (r + b - 2.0F * g) + 2.0F;
    else h = (g - b) / (r + g - 2.0F * b);
    h /= 3.0F;
}

/// Inverse of RGBtoHSV.
inline void HSVtoRGB(float h, float s, float v, float& r, float& g, float& b)
{
    float const p = v * (1.0F - s), spread = v - p;
    auto const set = [&](float red, float green, float blue) {
        r = red;
        g = green;
        b = blue;
    };
    if (h <= 0.16666667F) set(v, p + h * spread / (0.33333334F - h), p);
    else if (h <= 0.33333334F) set(p + (0.33333334F - h) * spread / h, v, p);
    else if (h <= 0.5F) set(p, v, p + (h - 0.33333334F) * spread / (0.6666667F - h));
    else if (h < 0.6666667F) set(p, p + (0.6666667F - h) * spread / (h - 0.33333334F), v);
    else if (h <= 0.8333333F) set(p + (h - 0.6666667F) * spread / (1.0F - h), p, v);
    else set(v, p, p + (1.0F - h) * spread / (h - 0.6666667F));
}

} // namespace ombrelune
