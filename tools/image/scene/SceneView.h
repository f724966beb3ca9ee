#pragma once

#include "framework/KParameter.h"
#include "image/SeenPlane.h"

namespace ombrelune {

/// How a scene of flat pictures is turned, moved and looked at. Lengths are parts of the frame's width, z is
/// positive towards the viewer; at rest a picture at depth 0 fills the frame.
struct SceneView {
    KVector2 offset; ///< from the middle
    float offsetZ;
    int rotationOrder;
    float angleX, angleY, angleZ; ///< radians
    KVector2 center;              ///< of the turns, from the middle
    float centerZ;
    float zoom;        ///< about the middle of the frame
    float perspective; ///< reciprocal of the camera's distance; 0 is parallel
    bool clipBehind;

    void ParametersAdd(KParameterList& parameters);

    /// Of the whole scene.
    KMatrix4 Matrix() const;
    /// Of a plane whose places are moved into the scene by a matrix.
    PlaneMatrix Seen(KMatrix4 const& placement) const;
};

inline void SceneView::ParametersAdd(KParameterList& parameters)
{
    unsigned const soft = KF_SoftMin | KF_SoftMax;
    KVector2 const middle(0.5F, 0.5F);
    // clang-format off
    parameters.AddPoint   (&offset, middle, "Offset", "Offs"_id, KF_Preview, KPoint_CenteredAspect);
    parameters.AddScrew   (&offsetZ, 0.0F, "Offset Z", "OffZ"_id, soft, -1.0, 1.0);
    parameters.AddButtons (&rotationOrder, 0, "Rotation Order", "RotO"_id, 0, {"XYZ", "XZY", "YXZ", "YZX", "ZXY", "ZYX"});
    parameters.AddAngle   (&angleX, 0.0F, "Angle X", "AngX"_id, 0, KAngle_Radians);
    parameters.AddAngle   (&angleY, 0.0F, "Angle Y", "AngY"_id, 0, KAngle_Radians);
    parameters.AddAngle   (&angleZ, 0.0F, "Angle Z", "AngZ"_id, 0, KAngle_Radians);
    parameters.AddPoint   (&center, middle, "Center", "Cent"_id, KF_Preview, KPoint_CenteredAspect);
    parameters.AddScrew   (&centerZ, 0.0F, "Center Z", "CenZ"_id, soft, -1.0, 1.0);
    parameters.AddSlider  (&zoom,        1.0F, "Zoom",        "Zoom"_id, KF_SoftMax, 0.0, 5.0);
    parameters.AddSlider  (&perspective, 1.0F, "Perspective", "Pers"_id, KF_SoftMax, 0.0, 5.0);
    parameters.AddCheckbox(&clipBehind, true, "Clip behind camera", "Clip"_id, 0);
    // clang-format on
}

inline KMatrix4 SceneView::Matrix() const
{
    return KMatrix4()
        .Move(offset.x, offset.y, offsetZ)
        .Move(center.x, center.y, centerZ)
        .Rotate(angleX, angleY, angleZ, rotationOrder)
        .Move(-center.x, -center.y, -centerZ);
}

inline PlaneMatrix SceneView::Seen(KMatrix4 const& placement) const
{
    KMatrix4 const m = Matrix() * placement;
    double const z = zoom, p = perspective;
    return {z * m[0], z * m[1],  z * m[3],  z * m[4],       z * m[5],
            z * m[7], -p * m[8], -p * m[9], 1.0 - p * m[11]};
}

} // namespace ombrelune
