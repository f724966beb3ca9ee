// Duplicate: copies of the picture along a figure that turns into another one, laid over each other.

#include <algorithm>
#include <memory>
#include <vector>

#include "framework/PixelConversion.h"
#include "framework/Registration.h"
#include "image/KFigure.h"

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
        int const copies = std::clamp(count, 1, kMostCopies);
        places.clear();
        for (int i = 0; i < copies; ++i) {
            KVector2 const from = figures[0].Point(i, copies), to = figures[1].Point(i, copies);
            KVector2 const at = from + morph * (to - from);
            places.push_back({at.x * across, at.y * rows});
        }
        if (blur > 0.0F) blurred.reset(source->BlurOf(blur, -1.0, kBlurGaussian, 0xF, 1.0, 1.0));
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return RoundedPixel(FFlt(x, y, source)); }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        KImage const& copy = blurred ? *blurred : *source;
        FltPixel result, sample;
        source->GetPixel(x, y, result);
        float words[4] = {};
        for (std::size_t i = 0; i < places.size(); ++i) {
            copy.SamplePixelD(static_cast<float>(x) - places[i].x, static_cast<float>(y) - places[i].y,
                              sample);
            for (int c = 0; c < 4; ++c) {
                if (i == 0) words[c] = sample.word[c];
                else if (combine == kMaximum) words[c] = std::max(words[c], sample.word[c]);
                else if (combine == kMinimum) words[c] = std::min(words[c], sample.word[c]);
                else words[c] += sample.word[c];
            }
        }
        float const parts =
            combine == kMaximum || combine == kMinimum ? 1.0F : static_cast<float>(places.size());
        for (int c = 0; c < 4; ++c) result.word[c] = words[c] / parts;
        return result;
    }

    void Done(KImage** destination) override
    {
        blurred.reset();
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

    std::vector<KVector2> places; // of the copies, in pixels from the picture's own place
    std::unique_ptr<KImage> blurred;
};

OMBRELUNE_TOOL(BF_Duplicate, BF_ThreadedOperator, KEffectDuplicate);

} // namespace ombrelune
