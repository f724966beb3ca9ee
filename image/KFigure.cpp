#include "image/KFigure.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ombrelune {

KVector2 KFigure::Point(int i, int count) const
{
    if (count < 2) return {};
    int const n = std::clamp(corners, 2, kMostCorners);
    double const steps = n == 2 ? count - 1 : count;
    double const along = i / steps * (n == 2 ? 1 : n); // in sides
    double const side = std::floor(along), rest = along - side;
    auto const corner = [&](double k) {
        double const turn = angle + 2.0 * std::numbers::pi * k / n;
        return std::pair(radius * std::cos(turn), radius * std::sin(turn));
    };
    auto const [x0, y0] = corner(side);
    auto const [x1, y1] = corner(side + 1.0);
    return {static_cast<float>(x0 + rest * (x1 - x0)), static_cast<float>(y0 + rest * (y1 - y0))};
}

} // namespace ombrelune
