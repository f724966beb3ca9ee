#pragma once

#include <array>

#include "image/KImage.h"
#include "image/KMatrix4.h"

namespace ombrelune {

/// Size of the frame that a scene is seen in. Places in it are told from its middle, in parts of its width, y
/// upwards.
struct SceneFrame {
    int width, height;
    double pixelAspect;

    explicit SceneFrame(KImage const& picture)
        : width(picture.Width()), height(picture.Height()), pixelAspect(picture.PixelAspect())
    {}
};

/// Rows of a 3 by 3 matrix from places of a plane, (a, b, 1), to places of the frame times their distance
/// from the camera's plane, which is above 0 before the camera.
using PlaneMatrix = std::array<double, 9>;

/// How a picture lies on its plane: pixels from places of the plane.
struct PictureFit {
    double scaleX, scaleY; ///< pixels for 1
    double originX, originY;

    /// Around the origin, as wide as the frame, with square pixels square.
    static PictureFit ToWidth(KImage const& picture);
    /// Over the square from -1 to 1, the whole picture or its upper half.
    static PictureFit ToSquare(KImage const& picture, bool upperHalf);
};

/// A picture on a plane in space as a frame shows it.
/// Method: P. Heckbert, Fundamentals of Texture Mapping and Image Warping, 1989; means over the pixel's
/// quadrilateral by a summed-area table.
class SeenPlane {
public:
    /// The picture must outlive it and gets its table of areas here. A plane that is seen edge-on, or whose
    /// matrix is not finite, shows nothing.
    SeenPlane(KImage& picture, PictureFit const& fit, PlaneMatrix const& toFrame, SceneFrame const& frame,
              bool clipBehind);

    /// What a pixel of the frame shows; transparent where the plane is not.
    FltPixel At(int x, int y, EdgeModes edges) const;

private:
    KImage* picture_;
    PictureFit fit_;
    SceneFrame frame_;
    bool clipBehind_;
    bool isSeen_ = false, isSame_ = false; // pixel by pixel
    PlaneMatrix toPlane_;
};

/// Lays colour over colour, both premultiplied. What nothing covers, or all, stays exactly as it is.
inline void LayOver(FltPixel& below, FltPixel const& above)
{
    float const rest = 1.0F - above.alpha;
    for (int c = 0; c < 4; ++c) below.word[c] = above.word[c] + (rest == 0.0F ? 0.0F : rest * below.word[c]);
}

} // namespace ombrelune
