#pragma once

#include <optional>

#include "host/image/Image.h"

namespace ombrelune {

/// A picture and where its lower left pixel lies on a canvas; the picture is null where nothing of it is to
/// be seen.
struct Placed {
    Ref<Image> image;
    int x = 0, y = 0;
};

/// How a picture lies on a canvas.
struct Placement {
    double centerX = 0.5, centerY = 0.5; ///< where the picture's centre goes, 0 to 1 of the canvas
    double scale = 1.0;
    double angle = 0.0; ///< degrees, counter-clockwise, in the picture's square units
};

/// Lays a picture on a canvas of a size in pixels: what of it falls on the canvas, black around it. At the
/// scale 1 and the angle 0 pixels stay pixels: a picture in the centre is never filtered, nor is one that
/// moved by whole pixels from there; it is then shared as it is and may reach beyond the canvas. Elsewhere
/// bilinear where it grows and area means where it shrinks. No value when memory is out.
std::optional<Placed> PlaceImage(Ref<Image> const& image, Placement const& placement, int canvasWidth,
                                 int canvasHeight);

} // namespace ombrelune
