#include "image/KMatrix3.h"

#include <cmath>

namespace ombrelune {

KMatrix3 KMatrix3::operator*(KMatrix3 const& t) const
{
    KMatrix3 product;
    for (int r = 0; r < 9; r += 3)
        for (int c = 0; c < 3; ++c)
            product.m[r + c] = m[r] * t.m[c] + m[r + 1] * t.m[3 + c] + m[r + 2] * t.m[6 + c];
    return product;
}

KMatrix3 KMatrix3::Rotate(float a)
{
    float const c = std::cos(a), s = std::sin(a);
    return *this *= {c, -s, 0, s, c, 0, 0, 0, 1};
}

float KMatrix3::Determinant() const
{
    return m[0] * (m[4] * m[8] - m[5] * m[7]) - m[1] * (m[3] * m[8] - m[5] * m[6]) +
           m[2] * (m[3] * m[7] - m[4] * m[6]);
}

KMatrix3 KMatrix3::Adjoint() const
{
    return {m[4] * m[8] - m[5] * m[7], m[2] * m[7] - m[1] * m[8], m[1] * m[5] - m[2] * m[4],
            m[5] * m[6] - m[3] * m[8], m[0] * m[8] - m[2] * m[6], m[2] * m[3] - m[0] * m[5],
            m[3] * m[7] - m[4] * m[6], m[1] * m[6] - m[0] * m[7], m[0] * m[4] - m[1] * m[3]};
}

KMatrix3 KMatrix3::Inverse() const
{
    float const determinant = Determinant();
    if (std::abs(determinant) < 1e-8F) return {};
    KMatrix3 inverse = Adjoint();
    for (float& element : inverse.m) element /= determinant;
    return inverse;
}

int KMatrix3::MapSquareQuad(KVector2 const* q)
{
    KVector2 const s = q[0] - q[1] + q[2] - q[3];
    if (std::abs(s.x) <= 1e-13F && std::abs(s.y) <= 1e-13F) {
        KVector2 const u = q[1] - q[0], v = q[2] - q[1];
        *this = {u.x, u.y, 0, v.x, v.y, 0, q[0].x, q[0].y, 1};
        return 0;
    }
    KVector2 const d1 = q[1] - q[2], d2 = q[3] - q[2];
    float const den = d1 ^ d2;
    if (den == 0.0F) return -1;
    float const g = (s ^ d2) / den, h = (d1 ^ s) / den;
    KVector2 const u = q[1] - q[0] + g * q[1], v = q[3] - q[0] + h * q[3];
    *this = {u.x, u.y, g, v.x, v.y, h, q[0].x, q[0].y, 1};
    return 1;
}

int KMatrix3::MapQuadRect(KVector2 low, KVector2 high, KVector2 const* q)
{
    KVector2 const size = high - low;
    if (size.x == 0.0F || size.y == 0.0F) return -1;
    KMatrix3 rectToQuad;
    int const kind = rectToQuad.MapSquareQuad(q);
    if (kind < 0) return -1;
    for (int c = 0; c < 3; ++c) {
        rectToQuad[c] /= size.x;
        rectToQuad[3 + c] /= size.y;
        rectToQuad[6 + c] -= low.x * rectToQuad[c] + low.y * rectToQuad[3 + c];
    }
    // The adjoint is the inverse but for a factor, which the division by w' takes away.
    *this = rectToQuad.Adjoint();
    return Determinant() == 0.0F ? -1 : kind;
}

int KMatrix3::MapQuadQuad(KVector2 const* from, KVector2 const* to)
{
    KMatrix3 fromSquare, toSquare;
    int const fromKind = fromSquare.MapSquareQuad(from), toKind = toSquare.MapSquareQuad(to);
    if (fromKind < 0 || toKind < 0) return -1;
    // Not Inverse, which gives up on quads that are merely small.
    float const determinant = fromSquare.Determinant();
    if (determinant == 0.0F) return -1;
    *this = fromSquare.Adjoint();
    for (float& element : m) element /= determinant;
    *this *= toSquare;
    return fromKind | toKind;
}

int KMatrix3::MapPoly(KVector2 const* from, KVector2 const* to)
{
    auto const isRectangle = [](float a0, float a1, float a2, float a3, float b0, float b1, float b2,
                                float b3) { return a0 == a1 && a2 == a3 && b1 == b2 && b3 == b0; };
    if (isRectangle(to[0].y, to[1].y, to[2].y, to[3].y, to[0].x, to[1].x, to[2].x, to[3].x))
        return MapQuadRect(to[0], to[2], from);
    if (isRectangle(to[0].x, to[1].x, to[2].x, to[3].x, to[0].y, to[1].y, to[2].y, to[3].y)) {
        KVector2 const rotated[4] = {from[1], from[2], from[3], from[0]};
        return MapQuadRect(to[1], to[3], rotated);
    }
    return MapQuadQuad(from, to);
}

} // namespace ombrelune
