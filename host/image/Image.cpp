#include "host/image/Image.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "host/image/PixPtr.h"
#include "host/image/PixelHooks.h"
#include "host/image/SummedAreaTable.h"
#include "host/value/FrameFormat.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

constexpr std::ptrdiff_t kRowAlignment = 64;

std::ptrdiff_t AlignedRow(int width, int pixelBytes)
{
    std::ptrdiff_t const bytes = static_cast<std::ptrdiff_t>(width) * pixelBytes;
    return (bytes + kRowAlignment - 1) / kRowAlignment * kRowAlignment;
}

int WordBytes(int depth)
{
    switch (depth) {
    case kDepthInt8: return 1;
    case kDepthInt16:
    case kDepthHalf: return 2;
    default: return 4;
    }
}

} // namespace

Image::~Image() = default;

Ref<Image> NewImageTagList(TagList const& tags)
{
    Ref<Image> image = Ref<Image>::Adopt(new Image);
    if (auto const* format = tags.GetPointer<FrameFormat>(Img_Document)) {
        image->width_ = format->width;
        image->height_ = format->height;
        image->depth_ = format->depth;
        image->xScale_ = format->xScale;
        image->yScale_ = format->yScale;
    }
    if (auto const* like = tags.GetPointer<Image>(Img_Like)) {
        image->width_ = like->width_;
        image->height_ = like->height_;
        image->depth_ = like->depth_;
        image->xScale_ = like->xScale_;
        image->yScale_ = like->yScale_;
        image->auxChannels_ = like->auxChannels_;
        image->attributes = like->attributes;
        image->yOffset = like->yOffset;
    }
    image->width_ = static_cast<int>(tags.GetInt(Img_Width, image->width_));
    image->height_ = static_cast<int>(tags.GetInt(Img_Height, image->height_));
    image->depth_ =
        std::clamp(static_cast<int>(tags.GetInt(Img_Depth, image->depth_)), +kDepthInt8, +kDepthFloat);
    image->xScale_ = tags.GetFloat(Img_XScale, image->xScale_);
    image->yScale_ = tags.GetFloat(Img_YScale, image->yScale_);
    for (TagValue const& value : tags.All(Img_Channel)) {
        auto const* number = std::get_if<std::int64_t>(&value);
        int const channel = number ? static_cast<int>(*number) : -1;
        if (channel > kChannelAlpha && channel <= kChannelLast && !image->HasChannel(channel))
            image->auxChannels_.push_back(channel);
    }
    if (image->width_ < 1 || image->height_ < 1 || image->width_ > Image::kMaxSide ||
        image->height_ > Image::kMaxSide)
        return nullptr;

    image->pixelBytes_ = 4 * WordBytes(image->depth_);
    image->rowBytes_ = AlignedRow(image->width_, image->pixelBytes_);
    image->auxRowBytes_ = AlignedRow(image->width_, image->AuxFloats() * static_cast<int>(sizeof(float)));
    image->main_ =
        TakeBuffer(static_cast<std::size_t>(image->rowBytes_) * static_cast<std::size_t>(image->height_));
    image->aux_ =
        TakeBuffer(static_cast<std::size_t>(image->auxRowBytes_) * static_cast<std::size_t>(image->height_));
    if (!image->main_ || (!image->aux_ && image->auxRowBytes_ > 0)) return nullptr;
    image->hooks_ = &HooksFor(image->depth_, !image->IsPlain());
    if (image->IsPlain() && image->depth_ == kDepthInt16) image->layout_ = PixelLayout::kPlainInt16;
    if (image->IsPlain() && image->depth_ == kDepthFloat) image->layout_ = PixelLayout::kPlainFloat;
    return image;
}

bool Image::HasChannel(int channel) const
{
    return (channel >= kChannelBlue && channel <= kChannelAlpha) ||
           std::find(auxChannels_.begin(), auxChannels_.end(), channel) != auxChannels_.end();
}

std::size_t Image::MemoryBytes() const
{
    return static_cast<std::size_t>(rowBytes_ + auxRowBytes_) * static_cast<std::size_t>(height_);
}

Ref<Image> Image::CopyOfImage(bool empty) const
{
    Ref<Image> copy = NewImageTagList({{Img_Like, this}});
    if (copy && !empty) {
        ParallelFor(height_, [&](int y) {
            std::memcpy(copy->MainRow(y), MainRow(y), static_cast<std::size_t>(rowBytes_));
            if (!IsPlain()) std::memcpy(copy->AuxRow(y), AuxRow(y), static_cast<std::size_t>(auxRowBytes_));
        });
    }
    return copy;
}

void Image::Fill(Pixel const& pixel)
{
    ParallelFor(height_, [&](int y) {
        PixPtr row(this, 0, y);
        for (int x = 0; x < width_; ++x) row >>= pixel;
    });
}

void Image::Clear()
{
    ParallelFor(height_, [&](int y) {
        std::memset(MainRow(y), 0, static_cast<std::size_t>(rowBytes_));
        if (!IsPlain()) std::memset(AuxRow(y), 0, static_cast<std::size_t>(auxRowBytes_));
    });
}

void Image::DoLevels(double contract, double gamma, int low, int high, int first, int last)
{
    constexpr double kLeast = 1e-9; // keeps a range or a gamma of 0 a steep step
    double const from = low / 65535.0, range = std::max((high - low) / 65535.0, kLeast);
    double const shrink = std::clamp(-contract, 0.0, 1.0), grow = std::clamp(contract, 0.0, 1.0);
    double const exponent = 1.0 / std::max(gamma, kLeast);
    auto const level = [&](float word) {
        double value = std::clamp((word - from) / range, 0.0, 1.0);
        value = std::clamp((value - shrink) / std::max(1.0 - shrink - grow, kLeast), 0.0, 1.0);
        return static_cast<float>(exponent == 1.0 ? value : std::pow(value, exponent));
    };
    ParallelFor(height_, [&](int y) {
        PixPtr in(this, 0, y), out(this, 0, y);
        FltPixel pixel;
        for (int x = 0; x < width_; ++x) {
            pixel >>= in;
            for (int i = std::max(first, 0); i <= std::min(last, 3); ++i)
                pixel.word[i] = level(pixel.word[i]);
            out >>= pixel;
        }
    });
}

void Image::DoMultiProcess(void (*function)(Image*, void*, int), void* data, int count, ImgMPData* shared,
                           bool threaded)
{
    Image* const image = shared ? shared->image : nullptr;
    if (threaded) return ParallelFor(count, [&](int chunk) { function(image, data, chunk); });
    for (int chunk = 0; chunk < count; ++chunk) function(image, data, chunk);
}

} // namespace ombrelune
