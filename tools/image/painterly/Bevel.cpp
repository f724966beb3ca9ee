// Bevel: lights the colour as if the blurred alpha were a relief.

#include <algorithm>
#include <memory>

#include "framework/Registration.h"
#include "image/KLookUpTable.h"
#include "tools/image/painterly/Relief.h"

namespace ombrelune {

class KEffectBevel : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Bvl", "Bevel"); }

    KEffectBevel()
    {
        // clang-format off
        parameters.AddChapter("Bevel");
        parameters.AddButtons (&filter, 1, "Bevel Filter", "BeFi"_id, 0, {"Box", "Soften", "Bartlett", "Gaussian"});
        parameters.AddCheckbox(&lock, true, "Lock X/Y", "BeLo"_id, KF_AffectInputs);
        parameters.AddSlider  (&sizeX,  5.0F, "Bevel Size",   "BeSX"_id, KF_SoftMax, 0.0,    100.0);
        parameters.AddSlider  (&sizeY,  5.0F, "Bevel Size Y", "BeSY"_id, KF_SoftMax, 0.0,    100.0);
        parameters.AddSlider  (&relief, 0.1F, "Height",       "BeHe"_id, KF_SoftMax, 0.0001, 1.0);
        parameters.AddChapter("Shape");
        parameters.AddCheckbox(&usesShape, false, "Use Shape", "ShUs"_id, 0);
        parameters.AddCurve   (&shape, "Shape", "Shap"_id, 0, {});
        parameters.AddChapter("Light");
        parameters.AddButtons (&lightType, 0, "Type", "LiTy"_id, KF_Hidden, {"Distant", "Point", "Spot"});
        parameters.AddPoint   (&lightPosition, {0.25F, 0.25F}, "Light Position", "LiPo"_id, KF_Preview, KPoint_Normal);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "BeLo"_id) messages->Show("BeSY"_id, value.intValue == 0);
        return messages;
    }

    bool Init(KImage* source) override
    {
        float const y = lock ? sizeX : sizeY;
        if (!KEffectPixel::Init(source) || (sizeX == 0.0F && y == 0.0F)) return false;
        light = KVector3(2.0F * lightPosition.x - 1.0F, (2.0F * lightPosition.y - 1.0F) / frameAspect, 0.2F)
                    .Normalize();
        bump = Relief::Make(*source, sizeX, y, filter, data.quick, 8, 3, usesShape ? shape : nullptr);
        return bump != nullptr;
    }

    Pixel F(int x, int y, KImage* source) override
    {
        Pixel pixel;
        source->GetPixel(x, y, pixel);
        float const lit = Light(x, y);
        for (int c = 0; c < 3; ++c)
            pixel.word[c] = LimitTo16(TruncateToInt(lit * static_cast<float>(pixel.word[c])));
        return pixel;
    }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel pixel;
        source->GetPixel(x, y, pixel);
        float const lit = Light(x, y);
        for (int c = 0; c < 3; ++c) pixel.word[c] *= lit;
        return pixel;
    }

    void Done(KImage** destination) override
    {
        bump.reset();
        KEffectPixel::Done(destination);
    }

    int filter;
    bool lock;
    float sizeX, sizeY; // 720ths of the width
    float relief;
    bool usesShape;
    KLookUpTable* shape;
    int lightType; // the light is distant, whatever this says
    KVector2 lightPosition;

private:
    float Light(int x, int y) const { return bump->Normal(x, y, relief) * light; }

    KVector3 light;
    std::unique_ptr<Relief> bump;
};

OMBRELUNE_TOOL(BF_Bevel, BF_ThreadedOperator, KEffectBevel);

} // namespace ombrelune
