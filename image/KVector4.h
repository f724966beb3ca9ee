#pragma once

#include <cmath>

namespace ombrelune {

struct KVector4 {
    float x = 0.0F, y = 0.0F, z = 0.0F, w = 0.0F;

    constexpr KVector4() = default;
    constexpr KVector4(float px, float py, float pz, float pw) : x(px), y(py), z(pz), w(pw) {}

    constexpr bool operator==(KVector4 const&) const = default; ///< exact, component by component

    float Length() const { return std::sqrt(x * x + y * y + z * z + w * w); }
    constexpr void Zero() { *this = {}; }
    constexpr KVector4& operator+=(KVector4 const& v) { return *this = {x + v.x, y + v.y, z + v.z, w + v.w}; }
};

constexpr KVector4 operator*(float f, KVector4 const& v) { return {f * v.x, f * v.y, f * v.z, f * v.w}; }

} // namespace ombrelune
