#pragma once

#include "framework/KParameter.h"
#include "tools/image/scene/SeenPlane.h"

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

} // namespace ombrelune
