#include "shapes/KImageChannel.h"

#include <memory>

#include "host/value/Parallel.h"
#include "image/CombineImages.h"
#include "image/PlaneSampling.h"
#include "shapes/KShape.h"
#include "shapes/KStyle.h"

namespace ombrelune {

KImageChannel::KImageChannel(KImage* image, int samples, KImageRegion const* clip, bool allocate)
    : image_(image), hasMask_(allocate), clip_(0, 0, image->Width(), image->Height()),
      samples_(std::clamp(samples, 1, 255)), aspect_(image->XScale() / image->YScale())
{
    if (clip) clip_ = clip->ToPixelRegion(image->Width(), image->Height(), aspect_);
}

void KImageChannel::SetStyleFill(KFillStyle const* style)
{
    fillRule_ = style->type == 1 ? kFillEvenOdd : kFillNonZero;
}

ShapeArrays KImageChannel::Convert(KShape const& shape) const
{
    double const width = image_->Width(), samples = samples_;
    // A step for each pixel of a curve, but no more points than memory bears.
    constexpr int kMostPoints = 1 << 22, kLeastSteps = 16;
    int const steps = std::min(std::max(kMostPoints / shape.GetCount(), kLeastSteps),
                               std::max(image_->Width(), image_->Height()));
    return shape.ConvertTo(-samples * clip_.x + 0.5, -samples * clip_.y - 0.5, samples * width,
                           samples * width * aspect_, steps);
}

ShapeArrays KImageChannel::ConvertClosed(KShape const* shape) const
{
    if (!shape || shape->GetCount() == 0) return {};
    if (shape->IsClosed(false)) return Convert(*shape);
    std::unique_ptr<KShape> const closed(shape->CloseOpenOf(1));
    return Convert(*closed);
}

void KImageChannel::SetRule(int rule)
{
    if (rule >= 0) fillRule_ = rule == 0 ? kFillEvenOdd : kFillNonZero;
}

void KImageChannel::ShapeFill(KShape const* shape, int rule, int* cancel)
{
    if (!hasMask_) return;
    SetRule(rule);
    ShapeArrays const arrays = ConvertClosed(shape);
    mask_.SetBox(ScanBounds(arrays, clip_.width, clip_.height, samples_));
    KImagePixelRegion const& box = mask_.Box();
    auto const clear = [](std::uint8_t* bytes, std::ptrdiff_t count) {
        std::fill_n(bytes, count, std::uint8_t{0});
    };
    if (cancel) clear(mask_.Row(0), std::ptrdiff_t{box.width} * box.height);
    auto const area = static_cast<unsigned>(samples_ * samples_);
    ScanShape(arrays, {box, samples_}, fillRule_, cancel,
              [&](int row, int lo, int hi, std::uint16_t const* amounts) {
                  std::uint8_t* const bytes = mask_.Row(row);
                  clear(bytes, lo);
                  if (area == 64)
                      for (int x = lo; x < hi; ++x)
                          bytes[x] = static_cast<std::uint8_t>(amounts[x] * 255U >> 6);
                  else
                      for (int x = lo; x < hi; ++x)
                          bytes[x] = static_cast<std::uint8_t>(amounts[x] * 255U / area);
                  clear(bytes + hi, box.width - hi);
              });
}

template <class Change> void KImageChannel::ForRow(int row, Change const& change) const
{
    PixPtr in(image_->FImage(), clip_.x, clip_.y + row);
    PixPtr out = in;
    Pixel pixel;
    for (int x = 0; x < clip_.width; ++x) {
        pixel >>= in;
        change(pixel, x);
        out >>= pixel;
    }
}

void KImageChannel::SimpleShapeFill(KShape const* shape, bool invert, int rule, int* cancel)
{
    SetRule(rule);
    if (!shape || shape->GetCount() == 0) {
        ParallelFor(clip_.height, [&](int row) {
            ForRow(row, [&](Pixel& pixel, int) {
                pixel.Clear();
                pixel.alpha = invert ? 65535 : 0;
            });
        });
        return;
    }
    auto const area = static_cast<unsigned>(samples_ * samples_);
    ScanGrid const grid{{0, 0, clip_.width, clip_.height}, samples_};
    ScanShape(ConvertClosed(shape), grid, fillRule_, cancel,
              [&](int row, int lo, int hi, std::uint16_t const* amounts) {
                  ForRow(row, [&](Pixel& pixel, int x) {
                      unsigned const alpha = x >= lo && x < hi ? amounts[x] * 65535U / area : 0U;
                      pixel.alpha = invert ? 65535U - alpha : alpha;
                  });
              });
}

void KImageChannel::CopyToAlpha() const
{
    KImagePixelRegion const& box = mask_.Box();
    ParallelFor(clip_.height, [&](int row) {
        bool const hasMask = row >= box.y && row < box.y + box.height;
        std::uint8_t const* const bytes = hasMask ? mask_.Row(row - box.y) : nullptr;
        ForRow(row, [&](Pixel& pixel, int x) {
            bool const inside = bytes && x >= box.x && x < box.x + box.width;
            pixel.alpha = inside ? std::uint32_t{bytes[x - box.x]} << 8 : 0U;
        });
    });
}

void KImageChannel::GenerateChannelMask(ScanMask const& coverage, int samples, KImage* target,
                                        KImagePixelRegion const& region, CombineMode mode,
                                        ChannelStyle const& style) const
{
    ScanToImage(target, {&coverage, samples, clip_, region, image_->Width(), image_->Height(), aspect_}, mode,
                style);
}

void KImageChannel::GenerateChannelMask(KImage* target, KImagePixelRegion const& region, CombineMode mode,
                                        ChannelStyle const& style) const
{
    GenerateChannelMask(mask_, samples_, target, region, mode, style);
}

void KImageChannel::PutToImage(CombineMode mode, ChannelStyle& style)
{
    if (clip_.width <= 1 || clip_.height <= 1) return;
    if (style.type == 1) {
        if (!style.bitmap) style.type = 0;
        else if (style.sampling == kSampleArea) style.bitmap->PrepareAreaSampling();
    }
    if (style.blurX > 0.0 || style.blurY > 0.0) PutBlurred(mode, style);
    else GenerateChannelMask(image_, clip_, mode, style);
}

void KImageChannel::PutBlurred(CombineMode mode, ChannelStyle const& style) const
{
    ChannelStyle local = style;
    local.opacity = 1.0F;
    local.color.alpha = 65535;
    local.floatColor.alpha = 1.0F;
    // The mask of a bitmap that stays sharp is blurred alone.
    bool const maskOnly = style.type == 1 && !style.blurColor;
    if (maskOnly) local.type = 0;

    KImagePixelRegion const whole(0, 0, clip_.width, clip_.height);
    std::unique_ptr<KImage> const sharp(image_->LikeOf(clip_.width, clip_.height, -1.0F, -1.0F));
    if (!sharp) return;
    GenerateChannelMask(sharp.get(), whole, kCombineCopy, local);
    double const toClip =
        static_cast<double>(image_->Width()) / clip_.width; // a blur counts in widths of its image
    double const blend = 1.0 - style.blurBlend;
    std::unique_ptr<KImage> const blurred(sharp->BlurOf(style.blurX * toClip, style.blurY * toClip,
                                                        style.blurFilter, maskOnly ? 8 : 15, style.blurPasses,
                                                        blend < 1.1920928955078125e-07 ? 0.0 : blend));
    if (!blurred) return;
    if (!maskOnly) return CombineImages(image_, blurred.get(), clip_, mode, style);

    ScanMask soft;
    soft.SetBox(whole);
    if (soft.Box().IsEmpty()) return;
    ParallelFor(whole.height, [&](int row) {
        PixPtr in(blurred->FImage(), 0, row);
        std::uint8_t* const bytes = soft.Row(row);
        Pixel pixel;
        for (int x = 0; x < whole.width; ++x) {
            pixel >>= in;
            bytes[x] = static_cast<std::uint8_t>(pixel.alpha >> 8);
        }
    });
    constexpr int kSoft = 8; // not the one sample that would make any coverage full
    GenerateChannelMask(soft, kSoft, image_, clip_, mode, style);
}

} // namespace ombrelune
