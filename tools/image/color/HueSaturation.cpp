// Hue/Saturation: turns the hue and scales or shifts saturation and lightness; Colorize gives every pixel one
// hue.

#include "framework/Registration.h"
#include "image/ColorVectors.h"

namespace ombrelune {

class KEffectHueSaturation : public KEffectColor {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "HSL", "Hue/Saturation",
                      "A simple color correcting tool, operating in HLS color space");
    }

    KEffectHueSaturation()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Hue/Saturation");
        parameters.AddSlider(&hue,                0.0F, "Hue",                 "sHue"_id, soft,       -1.0, 1.0);
        parameters.AddSlider(&saturationMultiply, 1.0F, "Saturation Multiply", "sSaM"_id, KF_SoftMax,  0.0, 2.0);
        parameters.AddSlider(&saturationAdd,      0.0F, "Saturation Add",      "sSat"_id, soft,       -1.0, 1.0);
        parameters.AddSlider(&lightnessMultiply,  1.0F, "Lightness Multiply",  "sLiM"_id, KF_SoftMax,  0.0, 2.0);
        parameters.AddSlider(&lightnessAdd,       0.0F, "Lightness Add",       "sLig"_id, soft,       -1.0, 1.0);
        parameters.AddCheckbox(&colorize, false, "Colorize", "cCol"_id, 0);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        bool const isNeutral = hue == 0.0F && saturationAdd == 0.0F && lightnessAdd == 0.0F &&
                               saturationMultiply == 1.0F && lightnessMultiply == 1.0F && !colorize;
        return KEffectColor::Init(source) && !isNeutral;
    }

    KColor32 F(KColor32 const& c) override { return Corrected(c); }
    KColor F(KColor const& c) override { return Corrected(c); }

    static constexpr bool kOwnSpan = true;
    void Span(KColor32* colors, int count) override
    {
        HLSCorrection const correction = Correction();
        auto const four = [&](FourColors<Int4>& c) {
            Float4 r = FloatsFrom16(c.red), g = FloatsFrom16(c.green), b = FloatsFrom16(c.blue);
            CorrectHLS(correction, r, g, b);
            c = {Truncate16(r), Truncate16(g), Truncate16(b), c.alpha};
        };
        ForFours(colors, count, four, [this](KColor32 const& c) { return Corrected(c); });
    }
    void Span(KColor* colors, int count) override
    {
        HLSCorrection const correction = Correction();
        auto const four = [&](FourColors<Float4>& c) { CorrectHLS(correction, c.red, c.green, c.blue); };
        ForFours(colors, count, four, [this](KColor const& c) { return Corrected(c); });
    }

    float hue; // in turns
    float saturationMultiply, saturationAdd;
    float lightnessMultiply, lightnessAdd;
    bool colorize;

private:
    template <class Color> Color Corrected(Color const& c) const
    {
        return c.CorrectHLS(hue, saturationAdd, lightnessAdd, saturationMultiply, lightnessMultiply,
                            colorize);
    }
    HLSCorrection Correction() const
    {
        return {hue, saturationAdd, lightnessAdd, saturationMultiply, lightnessMultiply, colorize};
    }
};

OMBRELUNE_TOOL(BF_HueSaturation, BF_ThreadedOperator, KEffectHueSaturation);

} // namespace ombrelune
