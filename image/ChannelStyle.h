#pragma once

#include "host/image/Image.h"
#include "image/KMatrix4.h"

namespace ombrelune {

class KImage;

/// How one picture is laid on another.
enum CombineMode { kCombineCopy = 0, kCombineMerge = 1 };

/// Colour of a plain pixel in integers, 0 to 65535.
struct Pixel64 {
    std::uint16_t blue = 65535, green = 65535, red = 65535, alpha = 65535;
    bool operator==(Pixel64 const&) const = default;
};

/// The same in floats.
struct PixelFlt {
    float blue = 1.0F, green = 1.0F, red = 1.0F, alpha = 1.0F;
};

/// How the coverage of a shape reaches the image: a colour or a bitmap, with opacity and blur.
struct ChannelStyle {
    bool enabled = true;
    int type = 0; ///< 0 colour, 1 bitmap, 2 a colour that never takes the bitmap's road
    double blurX = 0.0, blurY = 0.0;
    double blurBlend = 0.0; ///< parts of the sharp picture that stay
    double blurPasses = 1.0;
    bool blurColor = false; ///< blurs the colour too
    int blurFilter = 4;
    float opacity = 1.0F;
    Pixel64 color;
    PixelFlt floatColor;
    Pixel64 secondColor; ///< carried along
    PixelFlt secondFloatColor;
    double bitmapAngle = 0.0; ///< radians
    double bitmapSize = 1.0, bitmapAspect = 1.0;
    KImage* bitmap = nullptr; ///< not owned
    int sampling = 1;         ///< SuperSamplingType of the bitmap
    int edges = 1;            ///< EdgeModes of the bitmap
    KMatrix4 bitmapMatrix;
    int recycleType = 5; ///< see RequiresNewImage

    /// Whether a channel of the float colour lies beyond what integers hold.
    bool IsColorBeyondRange() const
    {
        auto const beyond = [](float v) { return !(v >= 0.0F && v <= 1.0F); };
        return beyond(floatColor.blue) || beyond(floatColor.green) || beyond(floatColor.red) ||
               beyond(floatColor.alpha);
    }
    /// Whether the style needs an image of its own: never for a colour and recycle types 0 and 1; for 2, 3
    /// and 4 when the second, third or fourth number is 0; always for others.
    bool RequiresNewImage(int a, int b, int c, int d) const;
    /// Whether two styles may share one pass: the same type, blur and opacity, and for colours the same one.
    bool IsRenderCompatibleWith(ChannelStyle const* other) const;
    /// From places in the frame to places in the bitmap.
    KMatrix4 GetImageTransformInverse() const;
};

} // namespace ombrelune
