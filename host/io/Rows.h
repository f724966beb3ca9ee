#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <type_traits>

#include <Imath/half.h>

#include "host/image/PixelCodec.h"

namespace ombrelune {

/// The number that stands for 1.
template <class Stored> Stored One()
{
    if constexpr (std::is_integral_v<Stored>) return std::numeric_limits<Stored>::max();
    else return Stored(1.0F);
}

/// Colour times alpha in a depth's own numbers; for integers the correctly rounded product.
inline std::uint8_t Premultiplied(std::uint8_t colour, std::uint8_t alpha)
{
    std::uint32_t const t = std::uint32_t{colour} * alpha + 128U;
    return static_cast<std::uint8_t>((t + (t >> 8)) >> 8);
}
inline std::uint16_t Premultiplied(std::uint16_t colour, std::uint16_t alpha)
{
    std::uint32_t const t = std::uint32_t{colour} * alpha + 32768U;
    return static_cast<std::uint16_t>((t + (t >> 16)) >> 16);
}
template <class Float> Float Premultiplied(Float colour, Float alpha)
{
    return static_cast<Float>(static_cast<float>(colour) * static_cast<float>(alpha));
}

/// Colour divided by alpha; integers rounded and limited, so that Premultiplied gives the colour back where
/// it is not above alpha. Alpha 0 gives 0: straight colour cannot tell what shines without covering.
template <class Stored> Stored Straight(Stored colour, Stored alpha)
{
    if constexpr (std::is_integral_v<Stored>) {
        std::uint32_t const one = One<Stored>();
        if (alpha == one || alpha == 0) return alpha == 0 ? Stored{0} : colour;
        return static_cast<Stored>(std::min(one, (std::uint32_t{colour} * one + alpha / 2U) / alpha));
    } else {
        float const a = alpha;
        return PixelCodec<Stored>::FromFloat(a == 0.0F ? 0.0F : static_cast<float>(colour) / a);
    }
}

/// A stored number in another depth.
template <class To, class From> To Converted(From value)
{
    if constexpr (std::is_same_v<To, From>) return value;
    else if constexpr (std::is_integral_v<To> && std::is_integral_v<From>)
        return PixelCodec<To>::FromInt(PixelCodec<From>::ToInt(value));
    else return PixelCodec<To>::FromFloat(PixelCodec<From>::ToFloat(value));
}

} // namespace ombrelune
