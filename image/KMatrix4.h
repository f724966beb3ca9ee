#pragma once

#include "image/KVector2.h"
#include "image/KVector3.h"
#include "image/KVector4.h"

namespace ombrelune {

/// 4 by 4 matrix, row-major, acting on column vectors: x' = m[0] x + m[1] y + m[2] z + m[3]; the translation
/// lies in elements 3, 7, 11. Starts as the identity. Every transforming member multiplies on the right and
/// returns this matrix, so the last call acts first on a point.
class KMatrix4 {
public:
    float m[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    KMatrix4() = default;
    KMatrix4(float m0, float m1, float m2, float m3, float m4, float m5, float m6, float m7, float m8,
             float m9, float m10, float m11, float m12, float m13, float m14, float m15)
        : m{m0, m1, m2, m3, m4, m5, m6, m7, m8, m9, m10, m11, m12, m13, m14, m15}
    {}

    float& operator[](int i) { return m[i]; }
    float operator[](int i) const { return m[i]; }

    KMatrix4& Identity() { return *this = KMatrix4(); }
    KMatrix4 operator*(KMatrix4 const& t) const;
    KMatrix4& operator*=(KMatrix4 const& t) { return *this = *this * t; }
    KMatrix4& operator*=(float f);
    KMatrix4& operator/=(float f) { return *this *= 1.0F / f; }

    // Rotations in radians, counter-clockwise seen from the positive end of the axis.
    KMatrix4& RotX(float a);
    KMatrix4& RotY(float a);
    KMatrix4& RotZ(float a);
    /// Three turns in the order of the rotation order buttons: 0 XYZ, 1 XZY, 2 YXZ, 3 YZX, 4 ZXY, 5 ZYX,
    /// where the first letter acts first on a point. Any other order does nothing.
    KMatrix4& Rotate(float x, float y, float z, int order);
    KMatrix4& Rotate(KVector3 const& v, int order) { return Rotate(v.x, v.y, v.z, order); }
    /// Rodrigues rotation about an axis of length 1.
    KMatrix4& RotateAxis(KVector3 const& axis, float a);
    /// The turn that brings v to the positive z axis.
    KMatrix4& RotateToZ(KVector3 const& v);
    KMatrix4& Move(float x, float y, float z);
    KMatrix4& Move(KVector3 const& v) { return Move(v.x, v.y, v.z); }
    KMatrix4& Scale(float x, float y, float z);
    KMatrix4& Scale(KVector3 const& v) { return Scale(v.x, v.y, v.z); }
    /// Shears the first two columns of the first two rows; c has no effect.
    KMatrix4& Shear(float a, float b, float c);
    /// Adds d times the z column to the translation of x and y.
    KMatrix4& Project(float d);

    KMatrix4 Adjoint() const;
    /// Not finite for a singular matrix.
    KMatrix4 Inverse() const;

    /// Writes the projective mapping of the unit square to a quad, (1, 0) to corner 1, (0, 1) to corner 2 and
    /// (1, 1) to corner 3, in elements 0, 1, 2, 4, 5, 6, 8, 9, 10. False for a degenerate quad.
    /// Method: P. Heckbert, Fundamentals of Texture Mapping and Image Warping, 1989.
    bool MapQuad(float x0, float y0, float x1, float y1, float x2, float y2, float x3, float y3);

    KVector4 operator*(KVector4 const& v) const
    {
        return {m[0] * v.x + m[1] * v.y + m[2] * v.z + m[3] * v.w,
                m[4] * v.x + m[5] * v.y + m[6] * v.z + m[7] * v.w,
                m[8] * v.x + m[9] * v.y + m[10] * v.z + m[11] * v.w,
                m[12] * v.x + m[13] * v.y + m[14] * v.z + m[15] * v.w};
    }
    /// No perspective divide.
    KVector3 TransformPoint(KVector3 const& v) const
    {
        return {m[0] * v.x + m[1] * v.y + m[2] * v.z + m[3], m[4] * v.x + m[5] * v.y + m[6] * v.z + m[7],
                m[8] * v.x + m[9] * v.y + m[10] * v.z + m[11]};
    }
    void TransformPoint(KVector3& out, KVector3 const& v) const { out = TransformPoint(v); }

    // Parallel transport frames along a curve: columns binormal, normal, tangent, and the point.
    // Method: A. Hanson, H. Ma, Parallel Transport Approach to Curve Framing, 1995.

    /// Frame at p0 of a curve that goes on to p1 and p2.
    KMatrix4& FirstFrame(KVector3 const& p0, KVector3 const& p1, KVector3 const& p2);
    /// The frame before, at p0 with tangent t0, carried to p1 with tangent t1.
    KMatrix4& NextFrame(KMatrix4 const& previous, KVector3 const& p0, KVector3 const& p1, KVector3 t0,
                        KVector3 t1);
    /// The frame before moved from p0 to p1.
    KMatrix4& LastFrame(KMatrix4 const& previous, KVector3 const& p0, KVector3 const& p1);
};

inline KVector3 operator*(KMatrix4 const& m, KVector3 const& v) { return m.TransformPoint(v); }

/// The point with z 0.
inline KVector2 operator*(KMatrix4 const& m, KVector2 const& v)
{
    return {m[0] * v.x + m[1] * v.y + m[3], m[4] * v.x + m[5] * v.y + m[7]};
}

} // namespace ombrelune
