#include "image/ChannelStyle.h"

#include "image/KImage.h"

namespace ombrelune {

bool ChannelStyle::RequiresNewImage(int /*a*/, int b, int c, int d) const
{
    if (type == 0) return false;
    switch (recycleType) {
    case 0:
    case 1: return false;
    case 2: return b == 0;
    case 3: return c == 0;
    case 4: return d == 0;
    default: return true;
    }
}

bool ChannelStyle::IsRenderCompatibleWith(ChannelStyle const* other) const
{
    if (type != other->type) return false;
    if (type != 1 && type != 2 && color != other->color) return false;
    return blurX == other->blurX && blurY == other->blurY && blurColor == other->blurColor &&
           blurBlend == other->blurBlend && blurPasses == other->blurPasses && opacity == other->opacity;
}

KMatrix4 ChannelStyle::GetImageTransformInverse() const
{
    double const aspect = type == 1 && bitmap ? bitmap->FrameAspect() : 1.0;
    KMatrix4 m = bitmapMatrix.Inverse();
    m.Scale(1.0F, static_cast<float>(1.0 / aspect), 1.0F);
    m.RotZ(static_cast<float>(-bitmapAngle));
    m.Scale(static_cast<float>(1.0 / bitmapSize),
            static_cast<float>(1.0 / bitmapSize / bitmapAspect * aspect), 1.0F);
    return m.Move(0.5F, 0.5F, 0.0F);
}

} // namespace ombrelune
