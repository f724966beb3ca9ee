#pragma once

#include <algorithm>
#include <cmath>

namespace ombrelune {

struct KVector2 {
    float x = 0.0F, y = 0.0F;

    constexpr KVector2() = default;
    constexpr KVector2(float px, float py) : x(px), y(py) {}
    constexpr explicit KVector2(float const* v) : x(v[0]), y(v[1]) {}

    constexpr bool operator==(KVector2 const&) const = default; ///< exact, component by component

    constexpr KVector2 operator+(KVector2 const& v) const { return {x + v.x, y + v.y}; }
    constexpr KVector2 operator-(KVector2 const& v) const { return {x - v.x, y - v.y}; }
    constexpr KVector2 operator-() const { return {-x, -y}; }
    constexpr KVector2& operator+=(KVector2 const& v) { return *this = *this + v; }
    constexpr KVector2& operator-=(KVector2 const& v) { return *this = *this - v; }
    constexpr KVector2& operator*=(float f) { return *this = {x * f, y * f}; }
    constexpr KVector2& operator/=(float f) { return *this = {x / f, y / f}; }
    constexpr float operator*(KVector2 const& v) const { return x * v.x + y * v.y; } ///< dot product
    constexpr float operator^(KVector2 const& v) const { return x * v.y - y * v.x; } ///< signed doubled area

    constexpr void Set(float px, float py) { *this = {px, py}; }
    constexpr void Zero() { *this = {}; }

    float Length() const { return std::sqrt(x * x + y * y); }
    float Distance(KVector2 const& v) const { return (*this - v).Length(); }
    /// Copy of length 1; a zero vector stays as it is.
    KVector2 Normalize() const
    {
        float const length = Length();
        if (!(length > 0.0F)) return *this;
        float const inverse = 1.0F / length;
        return {x * inverse, y * inverse};
    }
    /// Rescales; a zero vector becomes (length, 0).
    void SetLength(float length)
    {
        float const old = Length();
        if (old > 0.0F) *this *= length / old;
        else *this = {length, 0.0F};
    }
    void SetByAngle(float angle, float length)
    {
        *this = {length * std::cos(angle), length * std::sin(angle)};
    }

    /// Radians in -pi to pi. The negative x axis is -pi, since its y is not above 0; a zero vector gives
    /// -pi/2.
    float Angle() const
    {
        KVector2 const unit = Normalize();
        float const angle = std::acos(std::clamp(unit.x, -1.0F, 1.0F));
        return unit.y > 0.0F ? angle : -angle;
    }
    /// Angle of the way from here to `to`.
    float Angle(KVector2 const& to) const { return (to - *this).Angle(); }
    /// The angle, and the length as well; both 0 for a zero vector.
    float AngleLength(float& length) const
    {
        length = Length();
        return length > 0.0F ? Angle() : 0.0F;
    }
    float AngleLength(KVector2 const& to, float& length) const { return (to - *this).AngleLength(length); }

    /// A quarter turn to the left, of length 1 when asked for.
    KVector2 Ortho(bool normalise) const
    {
        KVector2 const left{-y, x};
        return normalise ? left.Normalize() : left;
    }
    /// True when here, a, b turn to the left.
    constexpr bool Orientation(KVector2 const& a, KVector2 const& b) const
    {
        return ((a - *this) ^ (b - *this)) > 0.0F;
    }

    /// Sum of the left normals of the two unit edges of the way a, here, b; of length 1 when asked for. It
    /// vanishes only where the way turns back on itself.
    KVector2 Normal(KVector2 const& a, KVector2 const& b, bool normalise) const
    {
        KVector2 const sum = (*this - a).Ortho(true) + (b - *this).Ortho(true);
        return normalise ? sum.Normalize() : sum;
    }
    /// Mitre point of the corner a, here, b at the distance d to the right of the way; here itself where the
    /// way turns back on itself.
    KVector2 Offset(KVector2 const& a, KVector2 const& b, float d) const
    {
        KVector2 const unit = Normal(a, b, true);
        float const k = (b - *this).Ortho(true) * unit;
        if (k == 0.0F) return *this;
        float const f = d / k;
        return {x - f * unit.x, y - f * unit.y};
    }

    /// Crossing of the line from here to a with the line through b and c; false when they are parallel. With
    /// `segment` it must lie strictly between here and a.
    bool Intersect(KVector2 const& a, KVector2 const& b, KVector2 const& c, KVector2& out, bool segment) const
    {
        KVector2 const r = a - *this, s = c - b;
        float const area = r ^ s;
        if (area == 0.0F) return false;
        float const t = ((b - *this) ^ s) / area;
        if (segment && !(t > 0.0F && t < 1.0F)) return false;
        out = {x + t * r.x, y + t * r.y};
        return true;
    }
    /// True when this is to the left of no edge of a convex polygon, so the corners go clockwise.
    bool InPolygon(KVector2 const* corners, int count) const
    {
        for (int i = 0; i < count; ++i) {
            KVector2 const edge = corners[i + 1 < count ? i + 1 : 0] - corners[i];
            if ((edge ^ (*this - corners[i])) > 0.0F) return false;
        }
        return true;
    }

    /// Catmull-Rom spline from p1 (t 0) to p2 (t 1); this is the point before p1.
    constexpr KVector2 CatmullRom(KVector2 const& p1, KVector2 const& p2, KVector2 const& p3, float t) const;
};

constexpr KVector2 operator*(float f, KVector2 const& v) { return {f * v.x, f * v.y}; }

constexpr KVector2 KVector2::CatmullRom(KVector2 const& p1, KVector2 const& p2, KVector2 const& p3,
                                        float t) const
{
    KVector2 const& p0 = *this;
    return 0.5F * (2.0F * p1 + t * (p2 - p0) + t * t * (2.0F * p0 - 5.0F * p1 + 4.0F * p2 - p3) +
                   t * t * t * (3.0F * p1 - p0 - 3.0F * p2 + p3));
}

struct KVector2i {
    int x = 0, y = 0;

    constexpr KVector2i() = default;
    constexpr KVector2i(int px, int py) : x(px), y(py) {}

    constexpr bool operator==(KVector2i const&) const = default;
};

} // namespace ombrelune
