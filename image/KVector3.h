#pragma once

#include <cmath>

#include "image/KRandom.h"
#include "image/KVector2.h"

namespace ombrelune {

struct KVector3 {
    float x = 0.0F, y = 0.0F, z = 0.0F;

    constexpr KVector3() = default;
    constexpr KVector3(float px, float py, float pz) : x(px), y(py), z(pz) {}
    constexpr explicit KVector3(KVector2 const& v) : x(v.x), y(v.y) {}
    constexpr explicit KVector3(float const* v) : x(v[0]), y(v[1]), z(v[2]) {}

    constexpr bool operator==(KVector3 const&) const = default; ///< exact, component by component

    /// Component 0 to 2.
    constexpr float& operator[](int i) { return i == 0 ? x : i == 1 ? y : z; }
    constexpr float operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }

    constexpr KVector3 operator+(KVector3 const& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr KVector3 operator-(KVector3 const& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr KVector3 operator-() const { return {-x, -y, -z}; }
    constexpr KVector3& operator+=(KVector3 const& v) { return *this = *this + v; }
    constexpr KVector3& operator-=(KVector3 const& v) { return *this = *this - v; }
    constexpr KVector3& operator+=(float f) { return *this = {x + f, y + f, z + f}; }
    constexpr KVector3& operator*=(float f) { return *this = {x * f, y * f, z * f}; }
    constexpr KVector3& operator/=(float f) { return *this = {x / f, y / f, z / f}; }
    constexpr float operator*(KVector3 const& v) const
    {
        return x * v.x + y * v.y + z * v.z;
    } ///< dot product
    constexpr KVector3 Cross(KVector3 const& v) const
    {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    constexpr KVector3 operator^(KVector3 const& v) const { return Cross(v); }

    constexpr void Set(float px, float py, float pz) { *this = {px, py, pz}; }
    constexpr void Zero() { *this = {}; }

    float Length() const { return std::sqrt(*this * *this); }
    float Distance(KVector3 const& v) const { return (*this - v).Length(); }
    constexpr float DistanceSquared(KVector3 const& v) const { return (*this - v) * (*this - v); }
    /// Copy of length 1; a zero vector stays as it is.
    KVector3 Normalize() const
    {
        float const length = Length();
        if (!(length > 0.0F)) return *this;
        float const inverse = 1.0F / length;
        return {x * inverse, y * inverse, z * inverse};
    }

    /// Length in some axes: 1 x and y, 2 y and z, 3 x and z, 4 x, 5 y, 6 z; any other number all three.
    float LengthSelective(int axes) const
    {
        switch (axes) {
        case 1: return std::sqrt(x * x + y * y);
        case 2: return std::sqrt(y * y + z * z);
        case 3: return std::sqrt(x * x + z * z);
        case 4: return std::abs(x);
        case 5: return std::abs(y);
        case 6: return std::abs(z);
        default: return Length();
        }
    }
    float DistanceSelective(KVector3 const& v, int axes) const { return (*this - v).LengthSelective(axes); }

    /// Where the line from here to `to` meets z = 0; here itself when it runs level.
    constexpr KVector3 CutZ(KVector3 const& to) const
    {
        if (z == to.z) return *this;
        float const t = z / (z - to.z);
        return {x + t * (to.x - x), y + t * (to.y - y), 0.0F};
    }

    /// Each component random in 0 to its size, drawn in the order x, y, z.
    KVector3 RandomizePos() const
    {
        return {KRandom(std::abs(x)), KRandom(std::abs(y)), KRandom(std::abs(z))};
    }
    /// Each component random between minus and plus its size, drawn in the order x, y, z.
    KVector3 RandomizeNegPos() const
    {
        return {KRandom(-std::abs(x), std::abs(x)), KRandom(-std::abs(y), std::abs(y)),
                KRandom(-std::abs(z), std::abs(z))};
    }

    /// Catmull-Rom spline from p1 (t 0) to p2 (t 1); this is the point before p1.
    constexpr KVector3 CatmullRom(KVector3 const& p1, KVector3 const& p2, KVector3 const& p3, float t) const;
};

constexpr KVector3 operator*(float f, KVector3 const& v) { return {f * v.x, f * v.y, f * v.z}; }

constexpr KVector3 KVector3::CatmullRom(KVector3 const& p1, KVector3 const& p2, KVector3 const& p3,
                                        float t) const
{
    KVector3 const& p0 = *this;
    return 0.5F * (2.0F * p1 + t * (p2 - p0) + t * t * (2.0F * p0 - 5.0F * p1 + 4.0F * p2 - p3) +
                   t * t * t * (3.0F * p1 - p0 - 3.0F * p2 + p3));
}

} // namespace ombrelune
