#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrelune {

/// The whole part of a number, the nearest end of `int` for one beyond it, 0 for one that is none. A plain
/// cast of such a number gives anything.
inline int SaturatedInt(double number)
{
    if (std::isnan(number)) return 0;
    return static_cast<int>(std::clamp(number, static_cast<double>(std::numeric_limits<int>::min()),
                                       static_cast<double>(std::numeric_limits<int>::max())));
}

/// The nearest single float; the largest finite one for a number beyond it.
inline float SaturatedFloat(double number)
{
    constexpr double most = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(number, -most, most));
}

} // namespace ombrelune
