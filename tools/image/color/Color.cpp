// Color: replaces every pixel by one colour, or adds, subtracts, multiplies or divides by it; alpha takes
// part.

#include <type_traits>

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
        KColor32 result = Combined(type, c, color32);
        result.Limit(0, 65535);
        return result;
    }
    KColor F(KColor const& c) override { return Combined(type, c, color); }

    static constexpr bool kOwnSpan = true;
    void Span(KColor32* colors, int count) override
    {
        ForType([=, by = color32](auto constant) {
            for (int i = 0; i < count; ++i) {
                colors[i] = Combined(constant, colors[i], by);
                colors[i].Limit(0, 65535);
            }
        });
    }
    void Span(KColor* colors, int count) override
    {
        ForType([=, by = color](auto constant) {
            for (int i = 0; i < count; ++i) colors[i] = Combined(constant, colors[i], by);
        });
    }

    KColor color;
    int type; // 0 replace, 1 add, 2 subtract, 3 multiply, 4 divide

private:
    template <class Color> static Color Combined(int how, Color c, Color const& by)
    {
        switch (how) {
        case 1: return c += by;
        case 2: return c -= by;
        case 3: return c *= by;
        case 4: return c /= by;
        default: return by;
        }
    }

    /// Calls the loop with the type as a constant, so that it is chosen once and not for every colour.
    template <class Loop> void ForType(Loop const& loop) const
    {
        switch (type) {
        case 1: return loop(std::integral_constant<int, 1>{});
        case 2: return loop(std::integral_constant<int, 2>{});
        case 3: return loop(std::integral_constant<int, 3>{});
        case 4: return loop(std::integral_constant<int, 4>{});
        default: return loop(std::integral_constant<int, 0>{});
        }
    }

    KColor32 color32;
};

OMBRELUNE_TOOL(BF_Color, BF_ThreadedOperator, KEffectSolid);

} // namespace ombrelune
