#pragma once

#include "image/KMatrix4.h"

namespace ombrelune {

/// Value of a transformation parameter.
struct KTransformation {
    int type = 1;           ///< 0 the position comes from the 2D centre, else from the 3D position
    KVector2 centre;        ///< 0.5, 0.5 is the middle of the frame
    float aspect = 0.5625F; ///< height over width of the frame
    bool lock = true;       ///< scale.x scales all three axes
    KVector3 position;
    KVector3 rotation; ///< radians
    KVector3 scale{1.0F, 1.0F, 1.0F};
    int rotationOrder = 0; ///< as in KMatrix4::Rotate

    /// Scales a point first, then turns it, then moves it.
    KMatrix4 GetMatrix() const { return Matrix(Translation(), rotation, UsedScale()); }
    /// From the identity at 0 to GetMatrix at 1.
    KMatrix4 GetMatrixInterpolate(float t) const
    {
        return t == 1.0F ? GetMatrix() : Matrix(t * Translation(), t * rotation, ScaleAt(t));
    }
    /// a parts of this and b parts of the other, in the rotation order of this.
    KMatrix4 GetMatrixInterpolateDouble(float a, float b, KTransformation const& other) const;

private:
    KMatrix4 Matrix(KVector3 const& move, KVector3 const& turn, KVector3 const& size) const
    {
        return KMatrix4().Move(move).Rotate(turn, rotationOrder).Scale(size);
    }
    KVector3 Translation() const
    {
        return type == 0 ? KVector3(centre.x - 0.5F, aspect * (centre.y - 0.5F), 0.0F) : position;
    }
    KVector3 UsedScale() const { return lock ? KVector3(scale.x, scale.x, scale.x) : scale; }
    KVector3 ScaleAt(float t) const
    {
        KVector3 size = t * UsedScale();
        return size += 1.0F - t;
    }
};

inline KMatrix4 KTransformation::GetMatrixInterpolateDouble(float a, float b,
                                                            KTransformation const& other) const
{
    KVector3 const s = ScaleAt(a), o = other.ScaleAt(b);
    return Matrix(a * Translation() + b * other.Translation(), a * rotation + b * other.rotation,
                  {s.x * o.x, s.y * o.y, s.z * o.z});
}

} // namespace ombrelune
