#pragma once

#include "host/image/Image.h"
#include "host/image/Vector4.h"

namespace ombrelune {

/// Converts pixels in place, to RGB and from RGB, in lanes as stored: lane 2 holds red and the first
/// component of every other space, lane 1 green and the second, lane 0 blue and the third; lane 3, alpha,
/// stays.
///
/// All components lie in 0 to 1 for colours in 0 to 1, so that integers hold them; values beyond pass through
/// and come back. Pictures are taken as they are, without any transfer curve.
///   HLS, HSV   hue in turns with red at 0, 0 for grey
///   YUV, YIQ   Rec. 601 luma; differences scaled to their full range, 0.5 for grey
///   CMY        1 - RGB
///   XYZ        primaries and white (D65) of IEC 61966-2-1, relative to white: white is (1, 1, 1)
///   LAB        CIE 1976 of that; L / 100, a and b as 0.5 + value / 256
using ConvertPixels = void (*)(Float4* pixels, int count);

/// Null for RGB itself, as there is nothing to do.
ConvertPixels ToRgb(ColorSpaceType from);
ConvertPixels FromRgb(ColorSpaceType to);

} // namespace ombrelune
