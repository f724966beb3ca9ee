// Shade By Sample: gives each normal of a rendered picture the colour that a picture of a shaded ball has
// there.

#include "framework/Registration.h"
#include "image/Saturate.h"

namespace ombrelune {

class KEffectShadeBySample : public KEffectPosition {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Samp", "Shade By Sample", "Shade an image bases on the normals");
    }

    KEffectShadeBySample()
    {
        // clang-format off
        parameters.AddChapter("Shade By Sample");
        parameters.AddButtons(&mapType, 0, "Map Type", "TiAd"_id, 0, {"Sphere", "Spherical Map"});
        parameters.AddTransformation(&rotation, KTransformation(), "Rotation", "Rota"_id, 0, KTransformation_Rotation);
        parameters.AddImage(&map, "Shading Map", 2, KF_MainInput);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPosition::Init(source) || !map) return false;
        matrix = rotation.GetMatrix();
        return true;
    }

    Pixel F(Pixel& source, KVector2&) override { return Shaded(source); }
    FltPixel F(FltPixel& source, KVector2&) override { return Shaded(source); }

    int mapType; // no effect
    KTransformation rotation;
    KImage* map = nullptr;

private:
    template <class Record> Record Shaded(Record const& source) const
    {
        KVector3 const normal = matrix * KVector3(source.Aux(kChannelNormalX), source.Aux(kChannelNormalY),
                                                  source.Aux(kChannelNormalZ))
                                             .Normalize();
        auto const place = [](int size, float part) {
            return SaturatedInt(static_cast<float>(size) * (part * 0.5F + 0.5F));
        };
        Record shade;
        map->GetPixelD(place(map->Width(), normal.x), place(map->Height(), normal.y), shade);
        PixelPostMultiply(shade, source.alpha);
        Record pixel = source;
        for (int c : {kChannelBlue, kChannelGreen, kChannelRed}) pixel.word[c] = shade.word[c];
        return pixel;
    }

    KMatrix4 matrix;
};

OMBRELUNE_TOOL(BF_ShadeBySample, BF_ThreadedOperator, KEffectShadeBySample);

} // namespace ombrelune
