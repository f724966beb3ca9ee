#pragma once

#include <algorithm>

namespace ombrelune {

// Colour models on floats, every component in 0 to 1; hues are fractions of a turn and 0 for greys. Inline,
// and written as choices between values, so that a loop over pixels needs no jumps.

/// One channel of HLStoRGB: the trapezium over the turn that lies between m1 and m2.
inline float toRGB(float m1, float m2, float h)
{
    h = h > 1.0F ? h - 1.0F : h;
    h = h < 0.0F ? h + 1.0F : h;
    float const rising = 0.16666667F, full = 0.5F, falling = 0.6666667F;
    float const slope = m1 + (m2 - m1) * (h < rising ? h : falling - h) * 6.0F;
    float const top = h < full ? m2 : slope;
    float const inside = h < rising ? slope : top;
    return h < falling ? inside : m1;
}

/// Method: J. Foley, A. van Dam, Computer Graphics, the double hexcone.
inline void RGBtoHLS(float r, float g, float b, float& h, float& l, float& s)
{
    float const most = std::max({r, g, b}), least = std::min({r, g, b});
    float const sum = most + least, spread = most - least;
    l = sum / 2.0F;
    if (spread == 0.0F) {
        h = s = 0.0F;
        return;
    }
    s = spread / (l <= 0.5F ? sum : 2.0F - most - least);
    float const difference = most == r ? g - b : most == g ? b - r : r - g;
    float const sextant = most == r ? 0.0F : most == g ? 2.0F : 4.0F;
    h = (difference / spread + sextant) / 6.0F;
    h = h < 0.0F ? h + 1.0F : h;
}

inline void HLStoRGB(float h, float l, float s, float& r, float& g, float& b)
{
    if (s == 0.0F) {
        r = g = b = l;
        return;
    }
    float const m2 = l <= 0.5F ? l * (s + 1.0F) : l + s - l * s;
    float const m1 = 2.0F * l - m2;
    r = toRGB(m1, m2, h + 0.33333334F);
    g = toRGB(m1, m2, h);
    b = toRGB(m1, m2, h - 0.33333334F);
}

/// The hue takes a third of a turn for each smallest channel, and not evenly within it, unlike the hexcone's.
inline void RGBtoHSV(float r, float g, float b, float& h, float& s, float& v)
{
    float const most = std::max({r, g, b}), least = std::min({r, g, b});
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
