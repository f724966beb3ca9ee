// Cut and Bleed: cuts a band out of the image along the edge of a second image and lets the blurred image
// bleed into it.

#include <algorithm>
#include <memory>

#include "framework/Registration.h"

namespace ombrelune {

namespace {

/// Channel 4 is the sum of the largest and the smallest, not halved: an edge in white counts twice.
float CutChannel(KImage const& image, int x, int y, int channel)
{
    FltPixel p;
    image.GetPixel(x, y, p);
    if (channel < 4) return PixelGetChannel(p, channel);
    return std::max({p.red, p.green, p.blue}) + std::min({p.red, p.green, p.blue});
}

} // namespace

class KEffectCutAndBleed : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "CnB", "Cut and Bleed"); }
    static char const* Category() { return KEffectImage::Category(); }

    KEffectCutAndBleed()
    {
        // clang-format off
        parameters.AddChapter("Cut and Bleed");
        parameters.AddImage(&cutting, "Cutting image", 2, KF_MainInput);
        parameters.AddButtonsChannel(&channel, 3, "Cutting channel", "Chan"_id, 0);
        parameters.AddCheckbox(&invert, false, "Invert channel", "ChIn"_id, 0);
        parameters.AddSlider(&blend,      1.0F, "Blend original", "Blnd"_id, 0, 0.0, 1.0);
        parameters.AddSlider(&cut,        1.0F, "Cut original",   "CutO"_id, 0, 0.0, 1.0);
        parameters.AddCheckbox(&lock, true, "Lock inner and outer cut width", "CuLo"_id, KF_AffectInputs);
        parameters.AddSlider(&innerWidth, 5.0F, "Cut inner width", "CuIW"_id, KF_SoftMax, 0.0, 50.0);
        parameters.AddSlider(&outerWidth, 5.0F, "Cut outer width", "CuOW"_id, KF_SoftMax, 0.0, 50.0);
        parameters.AddSlider(&bleedWidth, 5.0F, "Bleed width",     "BlWi"_id, KF_SoftMax, 0.0, 50.0);
        parameters.AddSlider(&brightness, 1.0F, "Brightness",      "Brig"_id, KF_SoftMax,             0.0, 5.0);
        parameters.AddButtons(&type, 1, "Color type", "Type"_id, KF_AffectInputs, {"Solid", "Original"});
        parameters.AddColor(&color, {0.5F, 0.75F, 1.0F, 1.0F}, "Color", "ColR"_id, KF_Hidden);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        bool const isZero = value.intValue == 0;
        if (id == "CuLo"_id) messages->Show("CuOW"_id, isZero);
        if (id == "Type"_id)
            for (std::uint32_t each : {"ColR"_id, "ColG"_id, "ColB"_id, "ColA"_id})
                messages->Show(each, isZero);
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source) || !cutting) return false;
        auto const blurred = [](KImage const& image, float size) {
            return std::unique_ptr<KImage>(image.BlurOf(size, -1.0, 4, 0xF, 1.0, 1.0));
        };
        bleed = blurred(*source, bleedWidth);
        matte.reset(cutting->ResizeOf(width, height));
        if (!bleed || !matte) return false;
        inner = blurred(*matte, innerWidth);
        outer = lock ? inner : std::shared_ptr<KImage>(blurred(*matte, outerWidth));
        return inner && outer;
    }

    using KEffectPixel::F; // integers go through the float form
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel pixel, glow;
        source->GetPixel(x, y, pixel);
        bleed->GetPixel(x, y, glow);
        float c = CutChannel(*matte, x, y, channel);
        float const i = CutChannel(*inner, x, y, channel), o = CutChannel(*outer, x, y, channel);
        // Rises towards the edge of the matte from both sides.
        float const light = brightness * ((1.0F - c) * i + c * (1.0F - o));
        if (invert) c = 1.0F - c;
        float const keep = blend * ((c - 1.0F) * cut + 1.0F);
        if (type == 0) {
            float const w = glow.alpha * light;
            float const colors[] = {color.blue, color.green, color.red, color.alpha};
            for (int n = 0; n < 4; ++n) pixel.word[n] = keep * pixel.word[n] + w * colors[n];
        } else {
            for (int n = 0; n < 4; ++n) pixel.word[n] = keep * pixel.word[n] + light * glow.word[n];
        }
        return pixel;
    }

    void Done(KImage** destination) override
    {
        bleed.reset();
        matte.reset();
        inner.reset();
        outer.reset();
        KEffectPixel::Done(destination);
    }

    KImage* cutting;
    int channel;
    bool invert;
    float blend, cut;
    bool lock;
    float innerWidth, outerWidth, bleedWidth; // 720ths of the width
    float brightness;
    int type; // 0 solid, 1 original
    KColor color;

private:
    std::unique_ptr<KImage> bleed, matte;
    std::shared_ptr<KImage> inner, outer; // one image when locked
};

OMBRELUNE_TOOL(BF_CutAndBleed, BF_ThreadedOperator, KEffectCutAndBleed);

} // namespace ombrelune
