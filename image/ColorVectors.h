#pragma once

#include "host/image/Vector4.h"
#include "image/KColor.h"
#include "image/KColor32.h"

namespace ombrelune {

/// Four neighbouring colours, a vector for each channel: what is written for one float then serves four.
template <class Vector> struct FourColors {
    Vector red, green, blue, alpha;
};

/// Rows to columns of 4 by 4 numbers, and back.
template <class Vector> FourColors<Vector> Transposed(FourColors<Vector> const& c)
{
    Vector const rgLow = __builtin_shufflevector(c.red, c.green, 0, 4, 1, 5);
    Vector const rgHigh = __builtin_shufflevector(c.red, c.green, 2, 6, 3, 7);
    Vector const baLow = __builtin_shufflevector(c.blue, c.alpha, 0, 4, 1, 5);
    Vector const baHigh = __builtin_shufflevector(c.blue, c.alpha, 2, 6, 3, 7);
    return {__builtin_shufflevector(rgLow, baLow, 0, 1, 4, 5),
            __builtin_shufflevector(rgLow, baLow, 2, 3, 6, 7),
            __builtin_shufflevector(rgHigh, baHigh, 0, 1, 4, 5),
            __builtin_shufflevector(rgHigh, baHigh, 2, 3, 6, 7)};
}

static_assert(sizeof(KColor) == sizeof(Float4) && sizeof(KColor32) == sizeof(Int4));

inline FourColors<Float4> LoadFour(KColor const* colors)
{
    FourColors<Float4> rows;
    std::memcpy(&rows, colors, sizeof rows);
    return Transposed(rows);
}
inline FourColors<Int4> LoadFour(KColor32 const* colors)
{
    FourColors<Int4> rows;
    std::memcpy(&rows, colors, sizeof rows);
    return Transposed(rows);
}
template <class Vector, class Color> void StoreFour(FourColors<Vector> const& four, Color* colors)
{
    FourColors<Vector> const rows = Transposed(four);
    for (int i = 0; i < 4; ++i) std::memcpy(static_cast<void*>(colors + i), &rows.red + i, sizeof(Vector));
}

/// As KColor from KColor32: 0 to 65535 becomes 0 to 1.
inline Float4 FloatsFrom16(Int4 words) { return __builtin_convertvector(words, Float4) / 65535.0F; }

/// As Truncate16, in floats alone: 65536 v and its fraction are exact, and 65535 v = 65536 v - v is below the
/// whole part when the fraction is below v.
inline Int4 Truncate16(Float4 v)
{
    Float4 const zero{}, one = zero + 1.0F;
    v = v > zero ? v : zero;
    v = v < one ? v : one;
    Float4 const scaled = v * 65536.0F;
    Int4 const whole = __builtin_convertvector(scaled, Int4);
    return whole + (scaled - __builtin_convertvector(whole, Float4) < v);
}

/// A run of colours by fours through `four`, which changes a FourColors, and its rest one by one through
/// `one`, which returns a colour. Both give the same bytes.
template <class Color, class Four, class One>
void ForFours(Color* colors, int count, Four const& four, One const& one)
{
    int i = 0;
    for (; i + 4 <= count; i += 4) {
        auto channels = LoadFour(colors + i);
        four(channels);
        StoreFour(channels, colors + i);
    }
    for (; i < count; ++i) colors[i] = one(colors[i]);
}

} // namespace ombrelune
