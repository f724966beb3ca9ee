#pragma once

#include <algorithm>
#include <cmath>

namespace ombrelune {

struct KRange {
    float low = 0.0F, high = 0.0F;

    constexpr KRange() = default;
    constexpr KRange(float from, float to) : low(from), high(to) {}

    void Set(float from, float to) { *this = {from, to}; }
    float Range() const { return std::abs(high - low); }
    /// Clamps both ends into a to b.
    void Limit(float a, float b)
    {
        low = std::min(std::max(low, a), b);
        high = std::min(std::max(high, a), b);
    }

    bool IsIn(float v) const { return low <= v && v <= high; }

    /// Membership in 0 to 1, with ramps of width `soft` centred on both ends. Ramps that would overlap meet
    /// at the centre of the range. Not above 0 means hard ends.
    float IsIn(float v, float soft) const
    {
        if (!(soft > 0.0F)) return IsIn(v) ? 1.0F : 0.0F;
        float const half = soft / 2.0F;
        float const first = low - half, last = high + half;
        if (v <= first || v >= last) return 0.0F;
        float const rising = (v - first) / soft, falling = (last - v) / soft;
        if (Range() < soft) return v < (low + high) / 2.0F ? rising : falling;
        if (v < low + half) return rising;
        return v > high - half ? falling : 1.0F;
    }

    /// Membership with 1 between the two fractions `inner` of the range. With `soft` it falls linearly to 0
    /// at the ends of the range and goes on below 0 beyond them, else it is 0 outside the inner range. An
    /// inner range of 0 to 1 or wider gives 1 everywhere.
    float IsIn(float v, KRange const& inner, bool soft) const
    {
        if (inner.low <= 0.0F && inner.high >= 1.0F) return 1.0F;
        KRange const full{low + inner.low * Range(), low + inner.high * Range()};
        if (!soft) return full.IsIn(v) ? 1.0F : 0.0F;
        if (v < full.low) return (v - low) / (full.low - low);
        if (v > full.high) return (high - v) / (high - full.high);
        return 1.0F;
    }
};

/// Empty when low is above high.
struct KRangeInt {
    int low = 0, high = 0;

    constexpr KRangeInt() = default;
    constexpr KRangeInt(int from, int to) : low(from), high(to) {}
};

} // namespace ombrelune
