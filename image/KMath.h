#pragma once

#include <cmath>
#include <utility>

namespace ombrelune {

template <class T> void KSwap(T& a, T& b) { std::swap(a, b); }

/// What is left of v beyond whole multiples of m, 0 to m; m is above 0.
inline float KMod(float v, float m)
{
    float const rest = std::fmod(v, m);
    return rest < 0.0F ? rest + m : rest;
}

/// Real roots of a x^2 + b x + c, the one with the added root first; false when there is none. a is not 0.
inline bool SolveQuadratic(float a, float b, float c, float& x1, float& x2)
{
    float const discriminant = b * b - 4.0F * a * c;
    if (discriminant < 0.0F) return false;
    float const root = std::sqrt(discriminant);
    x1 = (-b + root) / (2.0F * a);
    x2 = (-b - root) / (2.0F * a);
    return true;
}

} // namespace ombrelune
