#include "host/value/BezierCurve.h"

#include <algorithm>
#include <cmath>

namespace ombrelune {

namespace {

double Cubic(double p0, double p1, double p2, double p3, double t)
{
    double const s = 1.0 - t;
    return s * s * s * p0 + 3.0 * s * s * t * p1 + 3.0 * s * t * t * p2 + t * t * t * p3;
}

/// Parameter at which the cubic through 0, h1, h2, 1 has the value u; all of them lie in 0 to 1.
double ParameterAt(double u, double h1, double h2)
{
    // ((a t + b) t + c) t
    double const a = 3.0 * (h1 - h2) + 1.0, b = 3.0 * (h2 - 2.0 * h1), c = 3.0 * h1;
    double low = 0.0, high = 1.0, t = u;
    for (int i = 0; i < 100; ++i) {
        double const error = ((a * t + b) * t + c) * t - u;
        if (error == 0.0) break;
        (error < 0.0 ? low : high) = t;
        double next = t - error / ((3.0 * a * t + 2.0 * b) * t + c);
        if (!(next > low && next < high)) next = 0.5 * (low + high); // also where the curve stands still
        double const step = std::abs(next - t);
        t = next;
        if (step < 1e-15) break;
    }
    return t;
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

    double const width = b.x - a.x;
    double const handleA = std::clamp((a.rightX - a.x) / width, 0.0, 1.0);
    double const handleB = std::clamp((b.leftX - a.x) / width, 0.0, 1.0);
    return Cubic(a.y, a.rightY, b.leftY, b.y, ParameterAt((x - a.x) / width, handleA, handleB));
}

} // namespace ombrelune
