#pragma once

#include <algorithm>
#include <cstdint>

#include "host/image/Pixel.h"

namespace ombrelune {

/// Truncates toward zero and limits to what an int holds; not a number gives 0.
inline int TruncateToInt(double v)
{
    if (!(v > -2147483648.0)) return v <= -2147483648.0 ? -2147483647 - 1 : 0;
    return v < 2147483647.0 ? static_cast<int>(v) : 2147483647;
}

/// Place in 16.16 pixels from pixels, truncated and limited as TruncateToInt. The product is exact in floats,
/// and choices instead of jumps let a loop go by lanes.
inline int ToFixed16(float v)
{
    float const scaled = v == v ? v * 65536.0F : 0.0F;
    float const limited = std::min(std::max(scaled, -2147483648.0F), 2147483520.0F);
    int const whole = static_cast<int>(limited);
    return scaled >= 2147483648.0F ? 2147483647 : whole;
}

/// Word of a 16-bit pixel from any integer.
inline std::uint32_t LimitTo16(int v) { return static_cast<std::uint32_t>(std::clamp(v, 0, 65535)); }

/// Word of a 16-bit pixel from a float: limited to 0 to 1 and truncated. In doubles, since a float product
/// may round up to the next whole number.
inline std::uint32_t Truncate16(float v)
{
    return v > 0.0F ? static_cast<std::uint32_t>(static_cast<int>(65535.0 * std::min(v, 1.0F))) : 0U;
}

/// a b / 65535, correctly rounded; both at most 65535, so that 32 bits are enough. A factor of 65535 gives
/// the other one back.
inline std::uint32_t ScaledProduct(std::uint32_t a, std::uint32_t b)
{
    std::uint32_t const t = a * b + 32768U;
    return (t + (t >> 16)) >> 16;
}

// Channel selectors: 0 red, 1 green, 2 blue, 3 alpha, any other number the luminance. They are not the host's
// channel numbers.

inline float PixelGetChannel(FltPixel const& p, int channel)
{
    switch (channel) {
    case 0: return p.red;
    case 1: return p.green;
    case 2: return p.blue;
    case 3: return p.alpha;
    default: return 0.299F * p.red + 0.587F * p.green + 0.114F * p.blue;
    }
}

/// 0 to 65535; the luminance is truncated.
inline std::uint32_t PixelGetChannel32(Pixel const& p, int channel)
{
    switch (channel) {
    case 0: return p.red;
    case 1: return p.green;
    case 2: return p.blue;
    case 3: return p.alpha;
    default:
        return static_cast<std::uint32_t>(0.299F * static_cast<float>(p.red) +
                                          0.587F * static_cast<float>(p.green) +
                                          0.114F * static_cast<float>(p.blue));
    }
}

/// 0 to 1.
inline float PixelGetChannel(Pixel const& p, int channel)
{
    return static_cast<float>(PixelGetChannel32(p, channel)) / 65535.0F;
}

/// Straight colour from premultiplied: divides by alpha, which is stored for PixelPostMultiply. Alpha 0 gives
/// white.
inline void PixelPreDivide(Pixel& p, std::uint32_t& alpha)
{
    alpha = p.alpha;
    for (int i = 0; i < 3; ++i) p.word[i] = alpha == 0 ? 65535U : p.word[i] * 65535U / alpha;
}
inline void PixelPreDivide(FltPixel& p, float& alpha)
{
    alpha = p.alpha;
    for (int i = 0; i < 3; ++i) p.word[i] = alpha == 0.0F ? 1.0F : p.word[i] / alpha;
}

/// Multiplies the colour by an alpha; the pixel's own is not touched.
inline void PixelPostMultiply(Pixel& p, std::uint32_t const& alpha)
{
    for (int i = 0; i < 3; ++i) p.word[i] = ScaledProduct(p.word[i], alpha);
}
inline void PixelPostMultiply(FltPixel& p, float const& alpha)
{
    for (int i = 0; i < 3; ++i) p.word[i] *= alpha;
}

} // namespace ombrelune
