#include <cstring>

#include "image/KColor32.h"
#include "image/KImage.h"
#include "image/RowLoop.h"

namespace ombrelune {

namespace {

/// Applies change(word) or change(word, word of the other image) to the four colour words of each pixel.
template <class Record, class Change> void ForEachWord(Image* image, Change const& change)
{
    ForEachPixel<Record>(image, [=](Record& p) {
        for (auto& word : p.word) word = change(word);
    });
}
template <class Record, class Change> void ForEachWord(Image* image, Image* other, Change const& change)
{
    ForEachPixel<Record>(image, other, [=](Record& p, Record const& o) {
        for (int i = 0; i < 4; ++i) p.word[i] = change(p.word[i], o.word[i]);
    });
}

/// A fraction as a 16-bit factor.
std::uint32_t Factor16(float f) { return LimitTo16(TruncateToInt(f * 65535.5F)); }

} // namespace

void KImage::Clear() { image_->Clear(); }

void KImage::Fill(Pixel const& pixel) { image_->Fill(pixel); }

void KImage::Fill(KColor const& color, bool withAlpha)
{
    ForEachPixel<FltPixel>(image_, [=](FltPixel& p) {
        p.red = color.red;
        p.green = color.green;
        p.blue = color.blue;
        if (withAlpha) p.alpha = color.alpha;
    });
}

void KImage::CopyFrom(KImage const* other)
{
    ParallelFor(std::min(height_, other->height_), [&](int y) { CopyLineFrom(other, y); });
}

void KImage::CopyLineFrom(KImage const* other, int y)
{
    Image* const from = other->image_;
    if (depth_ == other->depth_ && image_->AuxChannels() == from->AuxChannels()) {
        auto const width = static_cast<std::size_t>(std::min(width_, other->width_));
        std::memcpy(image_->MainRow(y), from->MainRow(y),
                    width * static_cast<std::size_t>(image_->PixelBytes()));
        if (image_->IsPlain()) return;
        std::memcpy(image_->AuxRow(y), from->AuxRow(y),
                    width * static_cast<std::size_t>(image_->AuxFloats()) * sizeof(float));
        return;
    }
    auto const copy = [](auto record, int width, PixPtr out, PixPtr in) {
        for (int x = 0; x < width; ++x) {
            record >>= in;
            out >>= record;
        }
    };
    int const width = std::min(width_, other->width_);
    if (IsFloat()) copy(FltPixel(), width, PixPtr(image_, 0, y), PixPtr(from, 0, y));
    else copy(Pixel(), width, PixPtr(image_, 0, y), PixPtr(from, 0, y));
}

void KImage::Add(KImage const* other)
{
    if (IsFloat()) ForEachWord<FltPixel>(image_, other->image_, [](float a, float b) { return a + b; });
    else
        ForEachWord<Pixel>(image_, other->image_,
                           [](std::uint32_t a, std::uint32_t b) { return std::min(a + b, 65535U); });
}

void KImage::Add(KColor const& color)
{
    float const c[] = {color.blue, color.green, color.red, color.alpha};
    if (IsFloat())
        return ForEachPixel<FltPixel>(image_, [=](FltPixel& p) {
            for (int i = 0; i < 4; ++i) p.word[i] += c[i];
        });
    int shift[4]; // more than 65535 either way changes nothing any more
    for (int i = 0; i < 4; ++i) shift[i] = std::clamp(TruncateToInt(65535.0 * c[i]), -65535, 65535);
    ForEachPixel<Pixel>(image_, [=](Pixel& p) {
        for (int i = 0; i < 4; ++i) p.word[i] = LimitTo16(static_cast<int>(p.word[i]) + shift[i]);
    });
}

void KImage::Multiply(KColor const& factors)
{
    float const f[] = {factors.blue, factors.green, factors.red, factors.alpha};
    if (IsFloat())
        return ForEachPixel<FltPixel>(image_, [=](FltPixel& p) {
            for (int i = 0; i < 4; ++i) p.word[i] *= f[i];
        });
    ForEachPixel<Pixel>(image_, [=](Pixel& p) {
        for (int i = 0; i < 4; ++i) {
            float const product = static_cast<float>(static_cast<int>(p.word[i])) * f[i];
            p.word[i] = product > 0.0F
                            ? static_cast<std::uint32_t>(static_cast<int>(std::min(product, 65535.0F)))
                            : 0U;
        }
    });
}

void KImage::Multiply(float f)
{
    if (f >= 1.0F) return;
    if (IsFloat()) return ForEachWord<FltPixel>(image_, [=](float v) { return v * f; });
    std::uint32_t const factor = Factor16(f);
    ForEachWord<Pixel>(image_, [=](std::uint32_t v) { return ScaledProduct(v, factor); });
}

void KImage::BlendWith(KImage const* other, float a)
{
    if (!(a > 0.0F)) return;
    if (IsFloat()) {
        float const rest = 1.0F - a;
        return ForEachWord<FltPixel>(image_, other->image_,
                                     [=](float v, float o) { return rest * v + a * o; });
    }
    std::uint32_t const factor = Factor16(a), rest = 65535U - factor;
    ForEachWord<Pixel>(image_, other->image_, [=](std::uint32_t v, std::uint32_t o) {
        return ScaledProduct(v, rest) + ScaledProduct(o, factor);
    });
}

void KImage::ApplyMask(KImage const* mask, bool invert)
{
    std::uint32_t const flip = invert ? 65535U : 0U; // 65535 - m is m with all 16 bits flipped
    // Products with 0 and 65535 give 0 and the word itself, so these need no case of their own.
    ForEachPixel<Pixel>(image_, mask->image_, [=](Pixel& p, Pixel const& m) {
        for (std::uint32_t& word : p.word) word = ScaledProduct(word, m.alpha ^ flip);
    });
}

void KImage::Divide(bool alphaToOne)
{
    ForEachPixel<FltPixel>(image_, [=](FltPixel& p) {
        float const divisor = p.alpha != 0.0F ? p.alpha : 1.0F;
        for (int i = 0; i < 3; ++i) p.word[i] /= divisor;
        if (alphaToOne) p.alpha = 1.0F;
    });
}

void KImage::MergePixel(KImage const* foreground, double, double)
{
    if (IsFloat())
        return ForEachPixel<FltPixel>(image_, foreground->image_, [](FltPixel& p, FltPixel const& f) {
            for (int i = 0; i < 4; ++i) p.word[i] = p.word[i] * (1.0F - f.alpha) + f.word[i];
        });
    ForEachPixel<Pixel>(image_, foreground->image_, [](Pixel& p, Pixel const& f) {
        for (int i = 0; i < 4; ++i)
            p.word[i] = std::min(ScaledProduct(p.word[i], 65535U - f.alpha) + f.word[i], 65535U);
    });
}

void KImage::MergePixelUnder(KImage const* background, double, double)
{
    if (IsFloat())
        return ForEachPixel<FltPixel>(image_, background->image_, [](FltPixel& p, FltPixel const& b) {
            float const rest = 1.0F - p.alpha;
            for (int i = 0; i < 4; ++i) p.word[i] += b.word[i] * rest;
        });
    ForEachPixel<Pixel>(image_, background->image_, [](Pixel& p, Pixel const& b) {
        std::uint32_t const rest = 65535U - p.alpha;
        for (int i = 0; i < 4; ++i) p.word[i] += ScaledProduct(b.word[i], rest);
    });
}

} // namespace ombrelune
