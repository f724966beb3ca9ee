// Pack: fills the free parts of a matte with marks, each as large as its place lets it be.

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "framework/KGrow.h"
#include "framework/Registration.h"
#include "image/KImageMap.h"
#include "image/Saturate.h"

namespace ombrelune {

class KEffectPack : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Pck", "Pack"); }

    KEffectPack()
    {
        unsigned const affects = KF_AffectInputs, hidden = KF_Hidden;
        // clang-format off
        parameters.AddChapter("Pack");
        parameters.AddSliderSeed(&seed, "Random Seed", "SEED"_id, 0);
        parameters.AddButtonsChannel(&channel, 3, "Channel", "cCha"_id, 0);
        parameters.AddButtons  (&shape, kCircle, "Shape Type", "Shap"_id, affects, {"Circle", "Square", "Diamond", "Shape"});
        parameters.AddSliderInt(&mostMarks, 1000, "Maximum Elements", "ElMa"_id, KF_SoftMax, 1, 10000);
        parameters.AddSlider   (&smallest, 0.0F, "Size Minimum", "MinS"_id, KF_SoftMax, 0.0, 0.02);
        parameters.AddCheckbox (&mapsSmallest, false, "Size Minimum Mapped", "MinM"_id, hidden);
        parameters.AddSlider   (&largest, 0.1F, "Size Maximum", "MaxS"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddCheckbox (&mapsLargest, false, "Size Maximum Mapped", "MaxM"_id, hidden);
        parameters.AddSlider   (&multiply, 1.0F, "Size Multiply", "MulS"_id, KF_SoftMax, 0.01, 2.0);
        parameters.AddSlider   (&add, 0.0F, "Size Add", "AddS"_id, KF_SoftMin | KF_SoftMax, -0.01, 0.01);
        parameters.AddAngle    (&jitterAngle, 0.0F, "Jitter Angle ", "JAng"_id, 0, KAngle_Degrees);
        parameters.AddSliderInt(&jitterAngleStep, 0, "Jitter Angle Step", "JAnS"_id, KF_SoftMax, 0, 8);
        parameters.AddButtons  (&aspectType, 0, "Aspect type", "AsTy"_id, affects | hidden, {"Constant", "Spherical Map"});
        parameters.AddSlider   (&aspect, 1.0F, "Aspect", "Aspe"_id, KF_SoftMax, 0.001, 5.0);
        parameters.AddChapter("Color");
        parameters.AddButtons  (&colorSource, 0, "Shape color", "cShC"_id, affects, {"Solid", "Image", "External"});
        parameters.AddColor    (&color, {1.0F, 1.0F, 1.0F, 1.0F}, "Shape Color", "TLRd"_id, 0);
        parameters.AddButtons  (&overlap, 0, "Overlap", "cOve"_id, 0, {"Maximum", "Add", "Multiply", "Screen"});
        parameters.AddChapter("Range");
        sweep.ParameterListAdd(parameters);
        parameters.AddStandard (&superSample, 1, KPS_SuperSample, 0);
        parameters.AddImage    (&picture, "Shape", 2, KF_MainInput);
        parameters.AddImage    (&colorMap, "Color Map", 3, KF_MainInput);
        // clang-format on
    }

    /// Packs; F draws.
    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source)) return false;
        KImageMap map, pictureMap;
        map.SetImage(source, channel, {0.0F, 0.5F}); // where no mark may go
        fittedShape = shape;
        if (shape == kPicture &&
            (!picture || pictureMap.SetImage(picture, 3, {0.5F, 1.0F}) <= picture->Height() / 200))
            fittedShape = kCircle;
        walk.SetSize(width, height, static_cast<unsigned>(seed));
        marks.clear();
        KVector2i place;
        while (static_cast<int>(marks.size()) < mostMarks && map.NextAvailable(place, &walk)) {
            int const radius = Fit(map, pictureMap, place, SizesAt(*source, place));
            if (radius > 0) marks.push_back(MarkAt(*source, place, radius));
        }
        grow.emplace(static_cast<int>(marks.size()), sweep);
        LimitWork();
        return true;
    }

    /// Step 0 clears. Each chunk of step 1 is a band of rows, in which all marks are drawn in their order.
    int StepCount() override { return 2; }
    int ThreadCount(int step) override { return step == 0 ? 1 : (height + kBand - 1) / kBand; }
    void F(int step, int chunk, KImage* /*source*/, KImage* destination) override
    {
        if (step == 0) return destination->Clear();
        KImageRows const rows{chunk * kBand, std::min((chunk + 1) * kBand, height)};
        for (std::size_t i = 0; i < marks.size(); ++i) {
            Mark const& mark = marks[i];
            destination->DrawDot(mark.center, SizeOf(i), 0.0F, true, superSample, fittedShape, colorSource,
                                 overlap, colorSource == 1 ? mark.color : color, picture, &rows);
        }
    }

    void Done(KImage** destination) override
    {
        grow.reset();
        KEffectThreads::Done(destination);
    }

    int seed;
    int channel;
    int shape; // 0 circle, 1 square, 2 diamond, 3 the picture
    int mostMarks;
    float smallest, largest; // half widths of marks in widths of the image
    bool mapsSmallest, mapsLargest;
    float multiply, add;
    float jitterAngle; // no effect, as the step
    int jitterAngleStep;
    int aspectType; // 1 shrinks marks towards the poles of a spherical map
    float aspect;
    int colorSource; // 0 solid, 1 image, 2 the picture of the shape
    KColor color;
    int overlap; // as KImage::DrawDot
    KGrowData sweep;
    int superSample;
    KImage *picture = nullptr, *colorMap = nullptr;

private:
    enum Shape { kCircle, kSquare, kDiamond, kPicture };
    static constexpr int kBand = 32; // rows

    struct Mark {
        KVector2 center; // parts of the image
        float size;      // half its width, in widths of the image
        KColor color;
    };

    KRangeInt SizesAt(KImage const& source, KVector2i const& place) const
    {
        FltPixel pixel;
        source.GetPixelB(place.x, place.y, pixel);
        auto const size = [&](float part, bool isMapped) {
            int const pixels = SaturatedInt(part * static_cast<float>(width));
            return isMapped ? SaturatedInt(static_cast<float>(pixels) * PixelGetChannel(pixel, channel))
                            : pixels;
        };
        return {size(smallest, mapsSmallest), size(largest, mapsLargest)};
    }

    int Fit(KImageMap& map, KImageMap const& pictureMap, KVector2i const& place, KRangeInt const& sizes) const
    {
        float const ratio =
            aspect * Shrink(static_cast<float>(place.y) / static_cast<float>(std::max(height - 1, 1)));
        switch (fittedShape) {
        case kSquare: return map.ScanSquare(place, sizes, ratio, true);
        case kDiamond: return map.ScanDiamond(place, sizes, ratio, true);
        case kPicture: return map.ScanImage(place, sizes, ratio, &pictureMap, true);
        default: return map.ScanCircle(place, sizes, ratio, true);
        }
    }

    /// Of the height of a mark, y being its place in parts of the image.
    float Shrink(float y) const { return aspectType == 1 ? std::sin(std::numbers::pi_v<float> * y) : 1.0F; }

    Mark MarkAt(KImage const& source, KVector2i const& place, int radius) const
    {
        KVector2 const last(static_cast<float>(std::max(width - 1, 1)),
                            static_cast<float>(std::max(height - 1, 1)));
        KVector2 const center(static_cast<float>(place.x) / last.x, static_cast<float>(place.y) / last.y);
        FltPixel pixel;
        if (colorMap)
            colorMap->GetPixelD(SaturatedInt(center.x * static_cast<float>(colorMap->Width() - 1)),
                                SaturatedInt(center.y * static_cast<float>(colorMap->Height() - 1)), pixel);
        else source.GetPixelB(place.x, place.y, pixel);
        return {center, static_cast<float>(radius) / last.x, KColor(pixel)};
    }

    KVector2 SizeOf(std::size_t i) const
    {
        float in, out;
        grow->Get(static_cast<int>(i), in, out);
        Mark const& mark = marks[i];
        float const size = std::min(out, 1.0F - in) * multiply * mark.size + add;
        return {size, aspect * frameAspect * size * Shrink(mark.center.y)};
    }

    /// Marks grow no further than where they fit unless the sizes are multiplied or added to: those beyond
    /// 4096 samples of each pixel are left out.
    void LimitWork()
    {
        double left = 4096.0 * width * height;
        std::size_t count = 0;
        for (; count < marks.size() && left > 0.0; ++count) {
            KVector2 const size = SizeOf(count);
            double const across = std::min(2.0 * std::abs(size.x) * width + 2.0, 1.0 * width),
                         up = std::min(2.0 * std::abs(size.y) * height + 2.0, 1.0 * height);
            left -= std::max(1.0, across * up * superSample * superSample);
        }
        marks.resize(count);
    }

    KImageMapIterator walk; // kept: its order is that of the last image of the size
    std::vector<Mark> marks;
    std::optional<KGrow> grow;
    int fittedShape = kCircle;
};

OMBRELUNE_TOOL(BF_Pack, BF_ThreadedOperator, KEffectPack);

} // namespace ombrelune
