#include "image/KImage.h"

namespace ombrelune {

namespace {

Image* NewImage(int width, int height, bool withVelocity)
{
    TagList tags{{Img_Width, std::clamp(width, 1, Image::kMaxSide)},
                 {Img_Height, std::clamp(height, 1, Image::kMaxSide)},
                 {Img_Channel, kChannelRed},
                 {Img_Channel, kChannelGreen},
                 {Img_Channel, kChannelBlue},
                 {Img_Channel, kChannelAlpha}};
    if (withVelocity) tags.Add({Img_Channel, kChannelVelocityX}).Add({Img_Channel, kChannelVelocityY});
    return NewImageTagList(tags).Release();
}

} // namespace

KImage::KImage(int width, int height, float, bool withVelocity)
    : KImage(NewImage(width, height, withVelocity), true)
{}

KImage::KImage(Image* image, bool owned) : owned_(owned), image_(image)
{
    if (!image) return;
    depth_ = image->Depth();
    width_ = image->Width();
    height_ = image->Height();
    xScale_ = image->XScale();
    yScale_ = image->YScale();
}

KImage::~KImage()
{
    if (owned_) Recycle();
}

KImage* KImage::ImageFromHost(Image* image, bool owned) { return image ? new KImage(image, owned) : nullptr; }

void KImage::ImageReplace(KImage** slot, KImage* image)
{
    KImage* const old = *slot;
    *slot = image;
    delete old;
}

void KImage::Use() const
{
    if (image_) image_->Use();
}

void KImage::Recycle() const
{
    if (image_) image_->Recycle();
}

KImage* KImage::CopyOf() const { return Adopt(image_->CopyOfImage(false)); }

KImage* KImage::LikeOf(int w, int h, float xs, float ys) const
{
    TagList tags{{Img_Like, image_}};
    if (w > 0 && h > 0) {
        tags.Add({Img_Width, w}).Add({Img_Height, h});
        if (xs > 0.0F && ys > 0.0F) tags.Add({Img_XScale, double{xs}}).Add({Img_YScale, double{ys}});
    }
    return Adopt(NewImageTagList(tags));
}

KImage* KImage::LikeOfPlusVelocity() const
{
    return Adopt(NewImageTagList(
        {{Img_Like, image_}, {Img_Channel, kChannelVelocityX}, {Img_Channel, kChannelVelocityY}}));
}

bool KImage::HasVelocity() const
{
    return image_->HasChannel(kChannelVelocityX) && image_->HasChannel(kChannelVelocityY);
}

int KImage::OriginalWidth() const
{
    return static_cast<int>(image_->attributes.GetInt(Img_OriginalWidth, width_));
}

int KImage::OriginalHeight() const
{
    return static_cast<int>(image_->attributes.GetInt(Img_OriginalHeight, height_));
}

void KImage::Set(int key, unsigned value)
{
    switch (key) {
    case 1: image_->attributes.Set({Img_OriginalWidth, value}); break;
    case 2: image_->attributes.Set({Img_OriginalHeight, value}); break;
    case 3: image_->attributes.Set({Img_Field, value}); break;
    default: break;
    }
}

} // namespace ombrelune
