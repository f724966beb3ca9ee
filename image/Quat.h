#pragma once

#include <cmath>

#include "image/KVector3.h"

namespace ombrelune {

/// Quaternion w + x i + y j + z k, for the turning of on-screen controls.
struct Quat {
    float x = 0.0F, y = 0.0F, z = 0.0F, w = 1.0F;

    Quat() = default;
    Quat(float px, float py, float pz, float pw) : x(px), y(py), z(pz), w(pw) {}
    /// Turn about an axis of length 1, in radians.
    Quat(KVector3 const& axis, float angle) : w(std::cos(angle / 2.0F))
    {
        float const s = std::sin(angle / 2.0F);
        x = axis.x * s;
        y = axis.y * s;
        z = axis.z * s;
    }

    /// Conjugates in place.
    Quat& operator~()
    {
        x = -x;
        y = -y;
        z = -z;
        return *this;
    }
    /// Hamilton product.
    Quat operator*(Quat const& q) const
    {
        return {w * q.x + x * q.w + y * q.z - z * q.y, w * q.y - x * q.z + y * q.w + z * q.x,
                w * q.z + x * q.y - y * q.x + z * q.w, w * q.w - x * q.x - y * q.y - z * q.z};
    }
    Quat& operator*=(Quat const& q) { return *this = *this * q; }
    /// This quaternion turned by q: q this q~.
    Quat operator^(Quat q) const
    {
        Quat const product = q * *this;
        return product * ~q;
    }
    Quat& operator^=(Quat const& q) { return *this = *this ^ q; }

    /// Writes the turn as a 4 by 4 row-major matrix on column vectors; element 15 is the squared norm, by
    /// which the rest is too large.
    void RotationMatrix(float* m) const
    {
        float const xx = x * x, yy = y * y, zz = z * z, ww = w * w;
        float const rows[16] = {ww + xx - yy - zz,
                                2.0F * (x * y - w * z),
                                2.0F * (x * z + w * y),
                                0.0F,
                                2.0F * (x * y + w * z),
                                ww - xx + yy - zz,
                                2.0F * (y * z - w * x),
                                0.0F,
                                2.0F * (x * z - w * y),
                                2.0F * (y * z + w * x),
                                ww - xx - yy + zz,
                                0.0F,
                                0.0F,
                                0.0F,
                                0.0F,
                                ww + xx + yy + zz};
        for (int i = 0; i < 16; ++i) m[i] = rows[i];
    }

    /// Returns the norm, and makes it 1 when it is above 1e-6.
    float Normalize()
    {
        float const norm = std::sqrt(x * x + y * y + z * z + w * w);
        if (norm > 1e-6F) *this = {x / norm, y / norm, z / norm, w / norm};
        return norm;
    }
    /// Axis of length 1, cosine and sine of the turn.
    void Axis(KVector3& axis, float& c, float& s) const
    {
        KVector3 const v{x, y, z};
        axis = v.Normalize();
        c = w * w - v * v;
        s = 2.0F * w * v.Length();
    }
};

} // namespace ombrelune
