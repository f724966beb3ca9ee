// Plastic: a film over the picture, of which the highlights are seen.

#include <algorithm>
#include <cmath>
#include <memory>

#include "framework/Registration.h"
#include "image/KColor32.h"
#include "image/KLookUpTable.h"
#include "tools/image/painterly/Relief.h"

namespace ombrelune {

class KEffectPlastic : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Pla", "Plastic", "Put a plastic film over your image");
    }

    KEffectPlastic()
    {
        // clang-format off
        parameters.AddChapter("Plastic");
        parameters.AddButtons (&filter, 3, "Quality", "PlFi"_id, 0, {"Box", "Soften", "Bartlett", "Gaussian"});
        parameters.AddButtonsChannel(&channel, 4, "Bump channel", "PlCh"_id, 0);
        parameters.AddCheckbox(&lock, true, "Lock X/Y", "PlLo"_id, KF_AffectInputs);
        parameters.AddSlider  (&sizeX,  12.0F, "Blur size",   "PlSX"_id, 0,         0.0,    100.0);
        parameters.AddSlider  (&sizeY,  12.0F, "Blur size Y", "PlSY"_id, KF_Hidden, 0.0,    100.0);
        parameters.AddSlider  (&relief, 0.5F,  "Height",      "PlHe"_id, 0,         0.0001, 1.0);
        parameters.AddRange   (&range, {0.9F, 1.0F}, "Red low", "high", "PlRL"_id, "PlRH"_id, 0, 0.0, 1.0);
        parameters.AddColor   (&color, {1.0F, 1.0F, 1.0F, 1.0F}, "Color", "PlCR"_id, 0);
        parameters.AddButtons (&combine, kMerge, "Combine", "PlCo"_id, 0, {"Merge", "Add", "Hightlights"});
        parameters.AddChapter("Shape");
        parameters.AddCurve   (&shape, "Shape", "Shap"_id, 0, {});
        parameters.AddChapter("Light");
        parameters.AddButtons (&lightType, kDistant, "Type", "LiTy"_id, KF_Hidden, {"Distant", "Point", "Spot"});
        parameters.AddPoint   (&lightPosition, {0.4F, 0.4F}, "Position", "LiPo"_id, KF_Preview, KPoint_Normal);
        parameters.AddSlider  (&lightHeight, 0.5F, "Height", "LiPZ"_id, KF_SoftMax, 0.0, 1.0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "PlLo"_id) messages->Show("PlSY"_id, value.intValue == 0);
        return messages;
    }

    bool Init(KImage* source) override
    {
        float const y = lock ? sizeX : sizeY;
        if (!KEffectPixel::Init(source) || (sizeX == 0.0F && y == 0.0F)) return false;
        color16 = color;
        light = {2.0F * (lightPosition.x - 1.0F), (2.0F * lightPosition.y - 1.0F) / frameAspect,
                 lightType == kDistant ? 0.5F : lightHeight};
        bump = Relief::Make(*source, sizeX, y, filter, data.quick, 0xF, channel, shape);
        return bump != nullptr;
    }

    Pixel F(int x, int y, KImage* source) override
    {
        Pixel pixel;
        source->GetPixel(x, y, pixel);
        int const colors[] = {color16.blue, color16.green, color16.red, color16.alpha};
        float const t = Highlight(x, y);
        for (int c = 0; c < 4; ++c)
            pixel.word[c] = LimitTo16(
                TruncateToInt(Combined(static_cast<float>(pixel.word[c]), static_cast<float>(colors[c]), t)));
        return pixel;
    }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel pixel;
        source->GetPixel(x, y, pixel);
        float const colors[] = {color.blue, color.green, color.red, color.alpha};
        float const t = Highlight(x, y);
        for (int c = 0; c < 4; ++c) pixel.word[c] = Combined(pixel.word[c], colors[c], t);
        return pixel;
    }

    void Done(KImage** destination) override
    {
        bump.reset();
        KEffectPixel::Done(destination);
    }

    int filter;
    int channel;
    bool lock;
    float sizeX, sizeY; // 720ths of the width
    float relief;
    KRange range; // of the light, from no highlight to a full one
    KColor color;
    int combine; // 0 merge, 1 add, 2 highlights
    KLookUpTable* shape;
    int lightType; // 0 distant; point and spot are alike
    KVector2 lightPosition;
    float lightHeight;

private:
    enum Combine { kMerge, kAdd, kHighlights };
    static constexpr int kDistant = 0;

    float Highlight(int x, int y) const
    {
        KVector3 towards = light;
        if (lightType != kDistant) {
            KVector3 const place(
                2.0F * static_cast<float>(x) / static_cast<float>(width) - 1.0F,
                (2.0F * static_cast<float>(y) / static_cast<float>(height) - 1.0F) / frameAspect, 0.0F);
            towards = (light - place).Normalize();
        }
        float const d = bump->Normal(x, y, relief) * towards;
        float const t = (d - range.low) / (range.high - range.low);
        return t > 0.0F ? std::min(t, 1.0F) : 0.0F; // equal bounds at the bound itself give no number
    }

    float Combined(float under, float over, float t) const
    {
        if (combine == kHighlights) return t * over;
        return (combine == kAdd ? under : (1.0F - t) * under) + t * over;
    }

    KColor32 color16;
    KVector3 light;
    std::unique_ptr<Relief> bump;
};

OMBRELUNE_TOOL(BF_Plastic, BF_ThreadedOperator, KEffectPlastic);

} // namespace ombrelune
