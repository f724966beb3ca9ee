// Offset: moves each pixel by what a second picture holds there.

#include "framework/Registration.h"

namespace ombrelune {

class KEffectOffset : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Off", "Offset",
                      "Offsets the  background based on the colors of the second source");
    }

    KEffectOffset()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Offset");
        parameters.AddSlider(&scale, 1.0F, "Scale", "sGlo"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddButtonsChannel(&horizontal, 4, "Horizontal source", "cSoX"_id, 0);
        parameters.AddSlider(&black.x, 0.0F, "Horizontal Offset Black", "sOXB"_id, soft, -1.0, 1.0);
        parameters.AddSlider(&white.x, 0.0F, "Horizontal Offset White", "sOXW"_id, soft, -1.0, 1.0);
        parameters.AddButtonsChannel(&vertical, 4, "Vertical source", "cCoY"_id, 0);
        parameters.AddSlider(&black.y, 0.0F, "Vertical Offset Black", "sOYB"_id, soft, -1.0, 1.0);
        parameters.AddSlider(&white.y, 0.0F, "Vertical Offset White", "sOYW"_id, soft, -1.0, 1.0);
        parameters.AddImage(&map, "Deformation map", 2, KF_MainInput);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectWarp::Init(source) || !map) return false;
        // A value of 0 moves sources by the offset of white, turned round, and the largest by that of black.
        base = -scale * white;
        gain = scale * (white - black);
        gain /= 65535.0F;
        mapScale = {static_cast<float>(map->Width()), static_cast<float>(map->Height()) * frameAspect};
        return true;
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        Pixel pixel;
        map->SamplePixelD(destination.x * mapScale.x, destination.y * mapScale.y, pixel);
        auto const x = static_cast<float>(KImage::Shape(nullptr, pixel, horizontal));
        auto const y = static_cast<float>(KImage::Shape(nullptr, pixel, vertical));
        source = destination + base + KVector2(gain.x * x, gain.y * y);
        return true;
    }

    float scale;
    int horizontal, vertical; // 0 to 3 that channel, 4 luminance
    KVector2 black, white;
    KImage* map = nullptr;

private:
    KVector2 base, gain; // displacement of value 0, and for each of 65535 steps
    KVector2 mapScale;   // pixels of the map for a normalised 1
};

OMBRELUNE_TOOL(BF_Offset, BF_ThreadedOperator, KEffectOffset);

} // namespace ombrelune
