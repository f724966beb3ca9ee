#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

#include <Imath/half.h>

#include "host/image/PixelCodec.h"
#include "host/image/Vector4.h"

namespace ombrelune {

/// A stored pixel as four floats in the unit of its depth: 0 to 255, 0 to 65535, or floats as they are.
template <class Stored> Float4 LoadPixel(Stored const* words)
{
    if constexpr (std::is_same_v<Stored, float> || std::is_same_v<Stored, std::uint16_t>)
        return LoadFloat4(words);
    else
        return Float4{static_cast<float>(words[0]), static_cast<float>(words[1]),
                      static_cast<float>(words[2]), static_cast<float>(words[3])};
}

/// The way back: integers are rounded to the nearest and limited, with 0 for what is not a number.
template <class Stored> void StorePixel(Float4 value, Stored* words)
{
    if constexpr (std::is_same_v<Stored, float>) {
        Store(value, words);
#ifdef __SSE4_1__
    } else if constexpr (std::is_same_v<Stored, std::uint16_t>) {
        // Packing limits by itself, but for numbers beyond 32 bits. The minimum's second operand wins when it
        // is not a number, and what that converts to is packed to 0.
        __m128 const limited = _mm_min_ps(_mm_set1_ps(65535.0F), value);
        __m128i const rounded = _mm_cvttps_epi32(limited + 0.5F);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(words), _mm_packus_epi32(rounded, rounded));
#endif
    } else if constexpr (std::is_integral_v<Stored>) {
        Float4 const zero{}, most = zero + std::numeric_limits<Stored>::max();
        value = value > zero ? value : zero;
        value = value < most ? value : most;
        Int4 const rounded = __builtin_convertvector(value + 0.5F, Int4);
        if constexpr (std::is_same_v<Stored, std::uint16_t>) Store(reinterpret_cast<UInt4>(rounded), words);
        else
            for (int i = 0; i < 4; ++i) words[i] = static_cast<Stored>(rounded[i]);
    } else {
        for (int i = 0; i < 4; ++i) words[i] = PixelCodec<Stored>::FromFloat(value[i]);
    }
}

/// What stands for 1 in the unit of LoadPixel.
template <class Stored>
constexpr float kUnit = std::is_integral_v<Stored> ? static_cast<float>(std::numeric_limits<Stored>::max())
                                                   : 1.0F;

/// A stored pixel in the unit of another depth.
template <class Unit, class Stored> Float4 LoadPixelIn(Stored const* words)
{
    if constexpr (kUnit<Unit> == kUnit<Stored>) return LoadPixel(words);
    else return LoadPixel(words) * (kUnit<Unit> / kUnit<Stored>);
}

} // namespace ombrelune
