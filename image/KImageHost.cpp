#include <cmath>

#include "image/KImage.h"

// What the host does for KImage.

namespace ombrelune {

void KImage::Levels(double contract, double gamma, int low, int high, int first, int last)
{
    image_->DoLevels(contract, gamma, low, high, first, last);
}

void KImage::ConvertSpace(int from, int to)
{
    if (from == to) return;
    auto const space = [](int n) {
        return static_cast<ColorSpaceType>(n >= kSpaceHLS && n <= kSpaceLAB ? n : +kSpaceRGB);
    };
    image_->CSConvertTagList(space(from), space(to), {});
}

KImage* KImage::ResizeOf(int w, int h) const
{
    return w == width_ && h == height_ ? CopyOf() : Adopt(image_->ResizeOfImage(w, h));
}

KImage* KImage::TransformOf(double x, double y, double pivotX, double pivotY, double sx, double sy,
                            double angle, EdgeModes edges) const
{
    auto const is = [](double a, double b) { return std::abs(a - b) <= 1.1920928955078125e-07; };
    if (is(x, 0.5) && is(y, 0.5) && is(sx, 1.0) && is(sy, 1.0) && is(angle, 0.0)) return CopyOf();
    return Adopt(image_->TransformOf(x, y, pivotX, pivotY, sx, sy, angle, edges));
}

KImage* KImage::BlurOf(double x, double y, int filter, int channels, double passes, double blend) const
{
    return Adopt(image_->BlurOfImageTagList({{Blur_Type, filter},
                                             {Blur_Red, (channels & 1) != 0},
                                             {Blur_Green, (channels & 2) != 0},
                                             {Blur_Blue, (channels & 4) != 0},
                                             {Blur_Alpha, (channels & 8) != 0},
                                             {Blur_XSize, x / 720.0},
                                             {Blur_YSize, (y >= 0.0 ? y : x) / 720.0},
                                             {Blur_Passes, passes},
                                             {Blur_Blend, blend}}));
}

} // namespace ombrelune
