#include "host/value/BezierCurve.h"

#include <algorithm>

namespace ombrelune {

namespace {

double Cubic(double p0, double p1, double p2, double p3, double t)
{
    double const s = 1.0 - t;
    return s * s * s * p0 + 3.0 * s * s * t * p1 + 3.0 * s * t * t * p2 + t * t * t * p3;
}

} // namespace

BezierCurve BezierCurve::Identity()
{
    return {{{.x = 0.0, .y = 0.0, .linear = true}, {.x = 1.0, .y = 1.0, .linear = true}}};
}

double BezierCurve::Evaluate(double x) const
{
    if (keys.empty()) return 0.0;
    if (x <= keys.front().x) return keys.front().y;
    if (x >= keys.back().x) return keys.back().y;

    auto const next = std::upper_bound(keys.begin(), keys.end(), x,
                                       [](double value, Key const& key) { return value < key.x; });
    Key const& a = *(next - 1);
    Key const& b = *next;
    if (a.linear) return a.y + (b.y - a.y) * (x - a.x) / (b.x - a.x);

    double const handleA = std::clamp(a.rightX, a.x, b.x);
    double const handleB = std::clamp(b.leftX, a.x, b.x);
    double low = 0.0, high = 1.0;
    for (int i = 0; i < 52; ++i) {
        double const middle = 0.5 * (low + high);
        (Cubic(a.x, handleA, handleB, b.x, middle) < x ? low : high) = middle;
    }
    return Cubic(a.y, a.rightY, b.leftY, b.y, 0.5 * (low + high));
}

} // namespace ombrelune
