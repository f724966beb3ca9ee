#pragma once

#include <bit>
#include <cstdint>
#include <limits>

#include "host/image/Vector4.h"
#include "image/ColorModels.h"

namespace ombrelune {

// The whole numbers that go with a float or a vector of floats.
inline std::int32_t Truncated(float v) { return static_cast<std::int32_t>(v); }
inline Int4 Truncated(Float4 v) { return __builtin_convertvector(v, Int4); }
inline float Floats(std::int32_t v) { return static_cast<float>(v); }
inline Float4 Floats(Int4 v) { return __builtin_convertvector(v, Float4); }

/// base^exponent for an exponent above 0, of a float or of each lane of a vector, the same bytes in both. A
/// base that is not above 0 counts as 1. Results below the least normal float are 0; the others are within
/// 2e-6 of the true value, relative, for exponents up to 16, and the error grows with the exponent beyond.
/// Method: with base = 2^n m, m around 1, log2 m from the series of atanh((m - 1) / (m + 1)); exponent n is
/// taken from its own upper bits, which is exact, so that digits are not lost to large n; 2 to what is left
/// of the whole part from the series of exp.
template <class F> F Power(F base, float exponent)
{
    F const zero{}, one = zero + 1.0F;
    float const least = std::numeric_limits<float>::min(), most = std::numeric_limits<float>::max();
    using I = decltype(Truncated(base));

    F positive = Select(base > zero, base, one);
    F const lift = Select(positive < zero + least, zero + 24.0F, zero); // out of the subnormal numbers
    positive = Select(positive < zero + least, positive * 16777216.0F, positive);
    I const bits = std::bit_cast<I>(positive);
    I const n = (bits - 0x3f3504f3) >> 23; // m from sqrt(1/2)
    F const m = std::bit_cast<F>(bits - n * (1 << 23));

    F const s = (m - 1.0F) / (m + 1.0F), q = s * s;
    // Polynomials are summed in pairs: one after the other, each step would wait for the last.
    F const odd = (q * 0.2F + 0.33333334F) + (q * q) * (q * 0.11111111F + 0.14285715F);
    F const series = (odd * q) * s + s;
    F const logM = series * 2.88539008F; // 2 / ln 2

    float const upper = std::bit_cast<float>(std::bit_cast<std::uint32_t>(exponent) & 0xfffff000U);
    F const turns = Floats(n) - lift;
    F const exact = turns * upper, rest = turns * (exponent - upper) + logM * exponent;
    F const power = exact + rest;
    F const limited = Smaller(Larger(power, zero - 126.0F), zero + 127.0F);
    I const k = Truncated(limited + 128.5F) - 128;
    F const whole = Floats(k);
    F const t = ((exact - whole) + rest) * 0.69314718F;
    F const t2 = t * t;
    F const tail = (t * 0.16666667F + 0.5F) +
                   t2 * ((t * 8.3333333e-3F + 0.041666667F) + t2 * (t * 1.9841270e-4F + 1.3888889e-3F));
    F const fraction = tail * t2 + t + 1.0F;
    F const result = fraction * std::bit_cast<F>((k + 127) * (1 << 23));

    F const infinite = zero + std::numeric_limits<float>::infinity();
    F const high = Select(power < zero + 128.0F, result, infinite);
    F const normal = Select(power < zero - 126.0F, zero, high);
    return Select(base > zero + most, infinite, normal);
}

} // namespace ombrelune
