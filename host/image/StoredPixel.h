#pragma once

#include <cstdint>
#include <limits>
#include <type_traits>

#include <Imath/half.h>

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
    } else if constexpr (std::is_integral_v<Stored>) {
        Float4 const zero{}, most = zero + std::numeric_limits<Stored>::max();
        value = value > zero ? value : zero;
        value = value < most ? value : most;
        Int4 const rounded = __builtin_convertvector(value + 0.5F, Int4);
        if constexpr (std::is_same_v<Stored, std::uint16_t>) Store(reinterpret_cast<UInt4>(rounded), words);
        else
            for (int i = 0; i < 4; ++i) words[i] = static_cast<Stored>(rounded[i]);
    } else {
        for (int i = 0; i < 4; ++i) words[i] = Stored(value[i]);
    }
}

} // namespace ombrelune
