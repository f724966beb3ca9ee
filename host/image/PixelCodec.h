#pragma once

#include <algorithm>
#include <cstdint>

#include <Imath/half.h>

#include "host/image/ByteWord.h"

namespace ombrelune {

/// What a stored word is worth as a record word and back. Integers are presented as 0 to 65535 and floats as
/// they are; a conversion that crosses over rounds to the nearest and limits, so 16 bits survive a trip
/// through floats.
template <class Stored> struct PixelCodec;

inline std::uint32_t IntFromFloat(float value)
{
    // The comparison is written so that NaN becomes 0.
    return value > 0.0F ? static_cast<std::uint32_t>(std::min(value, 1.0F) * 65535.0F + 0.5F) : 0U;
}

template <> struct PixelCodec<std::uint8_t> {
    static std::uint32_t ToInt(std::uint8_t s) { return IntFromByte(s); }
    static float ToFloat(std::uint8_t s) { return static_cast<float>(s) / 255.0F; }
    static std::uint8_t FromInt(std::uint32_t v) { return ByteFromInt(v); }
    static std::uint8_t FromFloat(float v)
    {
        return v > 0.0F ? static_cast<std::uint8_t>(std::min(v, 1.0F) * 255.0F + 0.5F) : std::uint8_t{0};
    }
};

template <> struct PixelCodec<std::uint16_t> {
    static std::uint32_t ToInt(std::uint16_t s) { return s; }
    static float ToFloat(std::uint16_t s) { return static_cast<float>(s) / 65535.0F; }
    static std::uint16_t FromInt(std::uint32_t v) { return static_cast<std::uint16_t>(std::min(v, 65535U)); }
    static std::uint16_t FromFloat(float v) { return static_cast<std::uint16_t>(IntFromFloat(v)); }
};

template <> struct PixelCodec<float> {
    static std::uint32_t ToInt(float s) { return IntFromFloat(s); }
    static float ToFloat(float s) { return s; }
    static float FromInt(std::uint32_t v) { return static_cast<float>(v) / 65535.0F; }
    static float FromFloat(float v) { return v; }
};

/// Limited to what a half holds, so that no large number becomes an infinity by being stored; NaN stays.
inline float HalfRange(float v) { return std::clamp(v, -65504.0F, 65504.0F); }

template <> struct PixelCodec<Imath::half> {
    static std::uint32_t ToInt(Imath::half s) { return IntFromFloat(static_cast<float>(s)); }
    static float ToFloat(Imath::half s) { return s; }
    static Imath::half FromInt(std::uint32_t v) { return {PixelCodec<float>::FromInt(v)}; }
    static Imath::half FromFloat(float v) { return {HalfRange(v)}; }
};

} // namespace ombrelune
