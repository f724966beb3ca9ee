#include "image/KMatrix4.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ombrelune {

namespace {

KMatrix4 Translation(KVector3 const& v) { return KMatrix4().Move(v); }

/// Determinant of what is left of m without one row and one column.
float Minor(KMatrix4 const& m, int row, int column)
{
    float s[9];
    int n = 0;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            if (r != row && c != column) s[n++] = m[4 * r + c];
    return s[0] * (s[4] * s[8] - s[5] * s[7]) - s[1] * (s[3] * s[8] - s[5] * s[6]) +
           s[2] * (s[3] * s[7] - s[4] * s[6]);
}

} // namespace

KMatrix4 KMatrix4::operator*(KMatrix4 const& t) const
{
    KMatrix4 product;
    for (int r = 0; r < 16; r += 4)
        for (int c = 0; c < 4; ++c)
            product.m[r + c] =
                m[r] * t.m[c] + m[r + 1] * t.m[4 + c] + m[r + 2] * t.m[8 + c] + m[r + 3] * t.m[12 + c];
    return product;
}

KMatrix4& KMatrix4::operator*=(float f)
{
    for (float& element : m) element *= f;
    return *this;
}

KMatrix4& KMatrix4::RotX(float a)
{
    float const c = std::cos(a), s = std::sin(a);
    return *this *= {1, 0, 0, 0, 0, c, -s, 0, 0, s, c, 0, 0, 0, 0, 1};
}

KMatrix4& KMatrix4::RotY(float a)
{
    float const c = std::cos(a), s = std::sin(a);
    return *this *= {c, 0, s, 0, 0, 1, 0, 0, -s, 0, c, 0, 0, 0, 0, 1};
}

KMatrix4& KMatrix4::RotZ(float a)
{
    float const c = std::cos(a), s = std::sin(a);
    return *this *= {c, -s, 0, 0, s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
}

KMatrix4& KMatrix4::Rotate(float x, float y, float z, int order)
{
    switch (order) {
    case 0: return RotZ(z).RotY(y).RotX(x);
    case 1: return RotY(y).RotZ(z).RotX(x);
    case 2: return RotZ(z).RotX(x).RotY(y);
    case 3: return RotX(x).RotZ(z).RotY(y);
    case 4: return RotY(y).RotX(x).RotZ(z);
    case 5: return RotX(x).RotY(y).RotZ(z);
    default: return *this;
    }
}

KMatrix4& KMatrix4::RotateAxis(KVector3 const& axis, float a)
{
    float const c = std::cos(a), s = std::sin(a), t = 1.0F - c;
    float const x = axis.x, y = axis.y, z = axis.z;
    return *this *= {t * x * x + c,
                     t * x * y - s * z,
                     t * x * z + s * y,
                     0,
                     t * x * y + s * z,
                     t * y * y + c,
                     t * y * z - s * x,
                     0,
                     t * x * z - s * y,
                     t * y * z + s * x,
                     t * z * z + c,
                     0,
                     0,
                     0,
                     0,
                     1};
}

KMatrix4& KMatrix4::RotateToZ(KVector3 const& v)
{
    if (v.x == 0.0F && v.y == 0.0F) return v.z >= 0.0F ? *this : RotX(std::numbers::pi_v<float>);
    KVector3 const unit = v.Normalize();
    return RotateAxis((unit ^ KVector3(0, 0, 1)).Normalize(), std::acos(std::clamp(unit.z, -1.0F, 1.0F)));
}

KMatrix4& KMatrix4::Move(float x, float y, float z)
{
    for (int r = 0; r < 16; r += 4) m[r + 3] = m[r] * x + m[r + 1] * y + m[r + 2] * z + m[r + 3];
    return *this;
}

KMatrix4& KMatrix4::Scale(float x, float y, float z)
{
    for (int r = 0; r < 16; r += 4) {
        m[r] *= x;
        m[r + 1] *= y;
        m[r + 2] *= z;
    }
    return *this;
}

KMatrix4& KMatrix4::Shear(float a, float b, float)
{
    for (int r = 0; r < 8; r += 4) {
        float const m0 = m[r], m1 = m[r + 1];
        m[r] -= m1 * a;
        m[r + 1] -= m0 * b;
    }
    return *this;
}

KMatrix4& KMatrix4::Project(float d)
{
    m[3] += m[2] * d;
    m[7] += m[6] * d;
    return *this;
}

KMatrix4 KMatrix4::Adjoint() const
{
    KMatrix4 adjoint;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) adjoint.m[4 * r + c] = ((r + c) % 2 ? -1.0F : 1.0F) * Minor(*this, c, r);
    return adjoint;
}

KMatrix4 KMatrix4::Inverse() const
{
    KMatrix4 inverse = Adjoint();
    // The first row of the adjoint holds the cofactors of the first column.
    float const determinant =
        m[0] * inverse.m[0] + m[4] * inverse.m[1] + m[8] * inverse.m[2] + m[12] * inverse.m[3];
    for (float& element : inverse.m) element /= determinant;
    return inverse;
}

bool KMatrix4::MapQuad(float x0, float y0, float x1, float y1, float x2, float y2, float x3, float y3)
{
    float const dx1 = x1 - x3, dy1 = y1 - y3, dx2 = x2 - x3, dy2 = y2 - y3;
    float const d = dx1 * dy2 - dx2 * dy1;
    if (d == 0.0F) return false;
    float const sx = x0 - x1 - x2 + x3, sy = y0 - y1 - y2 + y3;
    float const g = (sx * dy2 - dx2 * sy) / d, h = (dx1 * sy - sx * dy1) / d;
    m[0] = x1 - x0 + g * x1;
    m[1] = x2 - x0 + h * x2;
    m[2] = x0;
    m[4] = y1 - y0 + g * y1;
    m[5] = y2 - y0 + h * y2;
    m[6] = y0;
    m[8] = g;
    m[9] = h;
    m[10] = 1.0F;
    return true;
}

KMatrix4& KMatrix4::FirstFrame(KVector3 const& p0, KVector3 const& p1, KVector3 const& p2)
{
    KVector3 const t = (p1 - p0).Normalize();
    KVector3 n = (t ^ (p2 - p0)).Normalize();
    if (n.Length() == 0.0F) {
        // The three points lie on a line: any direction across it will do, the axis farthest from it is
        // safest.
        int smallest = std::abs(t.y) <= std::abs(t.x) ? 1 : 0; // y before x among equals, z last
        if (std::abs(t.z) < std::abs(t[smallest])) smallest = 2;
        KVector3 axis;
        axis[smallest] = 1.0F;
        n = (t ^ axis).Normalize();
    }
    KVector3 const b = t ^ n;
    return *this = {b.x, n.x, t.x, p0.x, b.y, n.y, t.y, p0.y, b.z, n.z, t.z, p0.z, 0, 0, 0, 1};
}

KMatrix4& KMatrix4::NextFrame(KMatrix4 const& previous, KVector3 const& p0, KVector3 const& p1, KVector3 t0,
                              KVector3 t1)
{
    KVector3 axis;
    float angle = 0.0F;
    if (t0.Length() > 0.0F && t1.Length() > 0.0F) {
        t0 = t0.Normalize();
        t1 = t1.Normalize();
        angle = std::acos(std::clamp(t0 * t1, -1.0F, 1.0F));
        axis = t0 ^ t1;
    }
    if (axis.Length() == 0.0F || angle == 0.0F) return LastFrame(previous, p0, p1);
    return *this = Translation(p1).RotateAxis(axis.Normalize(), angle) * Translation(-p0) * previous;
}

KMatrix4& KMatrix4::LastFrame(KMatrix4 const& previous, KVector3 const& p0, KVector3 const& p1)
{
    return *this = Translation(p1 - p0) * previous;
}

} // namespace ombrelune
