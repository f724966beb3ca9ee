// Invert: the complement of colour, luminance or hue, one pixel at a time; alpha is kept.

#include "framework/Registration.h"

namespace ombrelune {

class KEffectInvert : public KEffectColor {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Inv", "Invert", "Invert color, luminance or hue");
    }

    KEffectInvert()
    {
        parameters.AddChapter("Invert");
        parameters.AddButtons(&type, 0, "Type", "InTy"_id, 0, {"Color", "Luminance", "Hue"});
    }

    KColor32 F(KColor32 const& c) override { return c.Inverse(type); }
    KColor F(KColor const& c) override { return c.Inverse(type); }

    int type; // 0 color, 1 luminance, 2 hue
};

OMBRELUNE_TOOL(BF_Invert, BF_ThreadedOperator, KEffectInvert);

} // namespace ombrelune
