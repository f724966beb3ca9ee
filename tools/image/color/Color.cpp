// Color: replaces every pixel by one colour, or adds, subtracts, multiplies or divides by it; alpha takes
// part.

#include "framework/Registration.h"

namespace ombrelune {

class KEffectSolid : public KEffectColor {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Col", "Color", "Simple tool for easy fading to a certain color");
    }

    KEffectSolid()
    {
        parameters.AddChapter("Color");
        parameters.AddColor(&color, KColor(0.0F, 0.0F, 0.0F, 1.0F), "Color", "ColR"_id, 0);
        parameters.AddButtons(&type, 0, "Type", "InTy"_id, 0,
                              {"Replace", "Add", "Subtract", "Multiply", "Divide"});
    }

    bool Init(KImage* source) override
    {
        color32 = color;
        return KEffectColor::Init(source);
    }

    KColor32 F(KColor32 const& c) override
    {
        KColor32 result = Combined(c, color32);
        result.Limit(0, 65535);
        return result;
    }
    KColor F(KColor const& c) override { return Combined(c, color); }

    KColor color;
    int type; // 0 replace, 1 add, 2 subtract, 3 multiply, 4 divide

private:
    template <class Color> Color Combined(Color c, Color const& by) const
    {
        switch (type) {
        case 1: return c += by;
        case 2: return c -= by;
        case 3: return c *= by;
        case 4: return c /= by;
        default: return by;
        }
    }

    KColor32 color32;
};

OMBRELUNE_TOOL(BF_Color, BF_ThreadedOperator, KEffectSolid);

} // namespace ombrelune
