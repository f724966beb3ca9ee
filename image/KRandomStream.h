#pragma once

#include <algorithm>
#include <cstdint>

#include "host/image/Vector4.h"
#include "image/ColorModels.h"

namespace ombrelune {

// The numbers of KRandom.h from state of one's own, so that threads do not disturb each other: the same seed
// gives the same stream as the C library's srandom and random.

inline constexpr float kDrawRange = 2147483648.0F;
inline constexpr float kLargestDraw =
    2147483520.0F; // the float before, which the largest draws would round up to

/// A draw as a part of 1, below 1.
inline float RandomPart(long draw) { return std::min(static_cast<float>(draw), kLargestDraw) / kDrawRange; }
inline Float4 RandomParts(UInt4 draws)
{
    Float4 const floats = __builtin_convertvector(reinterpret_cast<Int4>(draws), Float4);
    return Smaller(floats, Float4{} + kLargestDraw) / kDrawRange;
}

/// A stream that starts as after KRandomSeed(seed).
class KRandomStream {
public:
    explicit KRandomStream(unsigned seed);

    /// As Krand: 0 to 2147483647.
    long Next();
    /// As KRandom(a).
    float Random(float a) { return a * RandomPart(Next()); }
    /// As KRandom(a, b).
    float Random(float a, float b) { return a + Random(b - a); }
    /// As KRandomInt(n), for any n above 0.
    long RandomInt(std::int64_t n) { return Next() % n; }

private:
    static constexpr int kLag = 31;
    std::uint32_t state_[kLag];
    int next_ = 0; // the oldest number, which the next one replaces
};

/// The first four numbers of each of the streams that start at seed, seed + 1, ... , without running them
/// through their warm-up: about a hundred operations a stream where there are many.
/// Method: the generator (r[i] = r[i - 3] + r[i - 31], additive feedback of degree 31) is linear modulo 2^32,
/// so each number is a fixed combination of the 31 that the seed gives. Those are a linear congruential
/// sequence modulo 2^31 - 1, so they grow by constants from one seed to another, less the modulus where they
/// pass it.
void FirstDraws(unsigned seed, int count, UInt4* draws);

} // namespace ombrelune
