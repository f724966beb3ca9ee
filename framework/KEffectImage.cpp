#include "framework/KEffectImage.h"

namespace ombrelune {

void KEffectImage::SetImage(int index, KImage* image)
{
    std::unique_ptr<KImage> owned(image);
    if (index >= 0 && static_cast<std::size_t>(index) < images.size())
        images[static_cast<std::size_t>(index)] = std::move(owned);
}

KImage* KEffectImage::GetImage(int index) const
{
    return index >= 0 && static_cast<std::size_t>(index) < images.size()
               ? images[static_cast<std::size_t>(index)].get()
               : nullptr;
}

bool KEffectImage::Init(KImage* source)
{
    pixelAspect = source ? source->PixelAspect() : 1.0F;
    frameAspect = source ? source->FrameAspect() : 1.0F;
    if (source) {
        width = source->Width();
        height = source->Height();
    }
    return KEffect::Init(source);
}

void KEffectImage::Done(KImage** destination)
{
    for (auto& image : images) image.reset();
    KEffect::Done(destination);
}

} // namespace ombrelune
