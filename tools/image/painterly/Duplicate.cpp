// Duplicate: copies of the picture along a figure that turns into another one, laid over each other.

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "framework/PixelConversion.h"
#include "framework/Registration.h"
#include "host/image/Vector4.h"
#include "host/value/Parallel.h"
#include "image/KFigure.h"
#include "image/Saturate.h"

namespace ombrelune {

class KEffectDuplicate : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Dup", "Duplicate", "Makes multiple copies of an image");
    }

    KEffectDuplicate()
    {
        unsigned const softMax = KF_SoftMax, soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Duplicates");
        parameters.AddSliderInt(&count, 16, "Number of duplicates", "DuSa"_id, softMax, 1, 50);
        for (std::uint32_t i = 0; i < std::size(figures); ++i) {
            KString text;
            auto const label = [&](char const* name) { return text.Numbered(name, static_cast<int>(i) + 1, true); };
            parameters.AddSliderInt(&figures[i].corners, i == 0 ? 32 : 2, label("Shape corners"), "DuC0"_id + i, softMax, 2, 32);
            parameters.AddScrew    (&figures[i].radius, 0.05F, label("Shape size"), "DuR0"_id + i, soft, 0.0, 0.5);
            parameters.AddAngle    (&figures[i].angle, 0.0F, label("Shape angle"), "DuA0"_id + i, 0, KAngle_Radians);
        }
        parameters.AddSlider   (&morph, 0.0F, "Shape morph", "DuSM"_id, 0, 0.0, 1.0);
        parameters.AddButtons  (&combine, kAverage, "Combine", "DuCo"_id, 0, {"Average", "Maximum", "Minimum"});
        parameters.AddSlider   (&blur, 0.0F, "Blur Size", "sBSX"_id, softMax, 0.0, 100.0);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        // Radii are parts of the width.
        float const across = static_cast<float>(width), rows = across * pixelAspect;
        int const number = std::clamp(count, 1, kMostCopies);
        copies.clear();
        for (int i = 0; i < number; ++i) {
            KVector2 const from = figures[0].Point(i, number), to = figures[1].Point(i, number);
            KVector2 const at = from + morph * (to - from);
            copies.push_back(CopyAt(-at.x * across, -at.y * rows));
        }
        std::unique_ptr<KImage> const blurred(
            blur > 0.0F ? source->BlurOf(blur, -1.0, kBlurGaussian, 0xF, 1.0, 1.0) : nullptr);
        TakePixels(blurred ? *blurred : *source);
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return RoundedPixel(FFlt(x, y, source)); }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel result;
        source->GetPixel(x, y, result);
        Float4 words = Sample(x, y, copies[0]);
        for (std::size_t i = 1; i < copies.size(); ++i) {
            Float4 const sample = Sample(x, y, copies[i]);
            if (combine == kMaximum) words = sample > words ? sample : words;
            else if (combine == kMinimum) words = sample < words ? sample : words;
            else words += sample;
        }
        if (combine != kMaximum && combine != kMinimum) words /= static_cast<float>(copies.size());
        for (int c = 0; c < 4; ++c) result.word[c] = words[c];
        return result;
    }

    void Done(KImage** destination) override
    {
        pixels = {};
        KEffectPixel::Done(destination);
    }

    enum Combine { kAverage, kMaximum, kMinimum };

    int count;
    KFigure figures[2]; // in parts of the width
    float morph;        // 0 the first figure, 1 the second
    int combine;
    float blur; // of the copies, in 720ths of the width

private:
    static constexpr int kMostCopies = 1024;

    /// Where a copy is read: whole pixels from the own place, and the part of the next one in each direction.
    struct Copy {
        int x, y;
        float partX, partY;
    };
    static Copy CopyAt(float x, float y)
    {
        float const wholeX = std::floor(x), wholeY = std::floor(y);
        return {SaturatedInt(wholeX), SaturatedInt(wholeY), x - wholeX, y - wholeY};
    }

    /// Each pixel is read by every copy, so all are floats once.
    void TakePixels(KImage const& picture)
    {
        pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        ParallelFor(height, [&](int y) {
            PixPtr in(picture.FImage(), 0, y);
            FltPixel pixel;
            Float4* out = &pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)];
            for (int x = 0; x < width; ++x) {
                pixel >>= in;
                *out++ = LoadFloat4(pixel.word);
            }
        });
    }

    /// Bilinear; the edge pixels repeat.
    Float4 Sample(int x, int y, Copy const& copy) const
    {
        auto const limited = [](int at, int by, int size) {
            return static_cast<std::size_t>(std::clamp<std::int64_t>(std::int64_t{at} + by, 0, size - 1));
        };
        std::size_t const left = limited(x, copy.x, width), right = limited(x + 1, copy.x, width);
        auto const row = [&](int at) {
            Float4 const* const start =
                &pixels[limited(at, copy.y, height) * static_cast<std::size_t>(width)];
            return Between(start[left], start[right], copy.partX);
        };
        return Between(row(y), row(y + 1), copy.partY);
    }
    /// One of the two exactly where the other has no part.
    static Float4 Between(Float4 a, Float4 b, float part)
    {
        return part == 0.0F ? a : (1.0F - part) * a + part * b;
    }

    std::vector<Copy> copies;
    std::vector<Float4> pixels;
};

OMBRELUNE_TOOL(BF_Duplicate, BF_ThreadedOperator, KEffectDuplicate);

} // namespace ombrelune
