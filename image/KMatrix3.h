#pragma once

#include "image/KMatrix4.h"
#include "image/KVector2.h"
#include "image/KVector3.h"

namespace ombrelune {

/// 3 by 3 matrix, row-major, acting on row vectors, unlike KMatrix4: x' = x m[0] + y m[3] + m[6]; the
/// translation lies in elements 6 and 7. Starts as the identity. Every transforming member multiplies on the
/// right and returns a copy of this matrix, so the first call acts first on a point.
class KMatrix3 {
public:
    float m[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};

    KMatrix3() = default;
    KMatrix3(float m0, float m1, float m2, float m3, float m4, float m5, float m6, float m7, float m8)
        : m{m0, m1, m2, m3, m4, m5, m6, m7, m8}
    {}
    /// Drops the row and the column of z; rows stay rows.
    KMatrix3& operator=(KMatrix4 const& t)
    {
        return *this = {t[0], t[1], t[3], t[4], t[5], t[7], t[12], t[13], t[15]};
    }

    float& operator[](int i) { return m[i]; }
    float operator[](int i) const { return m[i]; }

    KMatrix3 Identity() { return *this = KMatrix3(); }
    KMatrix3 operator*(KMatrix3 const& t) const;
    KMatrix3& operator*=(KMatrix3 const& t) { return *this = *this * t; }

    KMatrix3 Rotate(float a);
    KMatrix3 Move(float x, float y) { return *this *= {1, 0, 0, 0, 1, 0, x, y, 1}; }
    KMatrix3 Scale(float s) { return Scale(s, s); }
    KMatrix3 Scale(float x, float y) { return *this *= {x, 0, 0, 0, y, 0, 0, 0, 1}; }
    KMatrix3 Shear(float a, float b) { return *this *= {1, a, 0, b, 1, 0, 0, 0, 1}; }

    float Determinant() const;
    KMatrix3 Adjoint() const;
    /// The identity when the determinant is below 1e-8 in size.
    KMatrix3 Inverse() const;

    // The mappings write this matrix and return 0 for an affine one, 1 for a projective one and -1, with the
    // matrix undefined, where there is none. Corners go round the quad.
    // Method: P. Heckbert, Fundamentals of Texture Mapping and Image Warping, 1989.

    /// The unit square (0, 0), (1, 0), (1, 1), (0, 1) to the corners of a quad.
    int MapSquareQuad(KVector2 const* q);
    /// The corners of a quad to those of a rectangle, the first to `low` and the third to `high`.
    int MapQuadRect(KVector2 low, KVector2 high, KVector2 const* q);
    int MapQuadQuad(KVector2 const* from, KVector2 const* to);
    /// MapQuadRect where `to` is a rectangle along the axes, else MapQuadQuad.
    int MapPoly(KVector2 const* from, KVector2 const* to);
};

/// Divides by w' unless it is 0.
inline KVector2 operator*(KMatrix3 const& m, KVector2 const& v)
{
    KVector2 const p{v.x * m[0] + v.y * m[3] + m[6], v.x * m[1] + v.y * m[4] + m[7]};
    float const w = v.x * m[2] + v.y * m[5] + m[8];
    return w == 0.0F ? p : KVector2(p.x / w, p.y / w);
}

/// The product with a matrix without perspective, whose w' is 1: the same bytes without the divisions.
inline KVector2 AffineProduct(KMatrix3 const& m, KVector2 const& v)
{
    return {v.x * m[0] + v.y * m[3] + m[6], v.x * m[1] + v.y * m[4] + m[7]};
}

/// The matrix acts on a column vector here, and here alone.
inline KVector3 operator*(KMatrix3 const& m, KVector3 const& v)
{
    return {v.x * m[0] + v.y * m[1] + v.z * m[2], v.x * m[3] + v.y * m[4] + v.z * m[5],
            v.x * m[6] + v.y * m[7] + v.z * m[8]};
}

} // namespace ombrelune
