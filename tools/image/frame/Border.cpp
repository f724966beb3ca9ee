// Border: a shadow behind the picture's matte, and one inside of it.

#include <memory>

#include "framework/Registration.h"
#include "framework/RowForms.h"
#include "image/RowLoop.h"

namespace ombrelune {

class KEffectBorder : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Brd", "Border"); }

    KEffectBorder()
    {
        unsigned const soft = KF_SoftMax, affects = KF_AffectInputs;
        KColor const shade(0.0F, 0.0F, 0.0F, 0.75F);
        KVector2 const below(0.51F, 0.51F);
        // clang-format off
        parameters.AddChapter("Border");
        parameters.AddSlider(&blend, 1.0F, "Blend original", "Blnd"_id, 0, 0.0, 1.0);
        parameters.GroupStart("Drop Shadow", "GrDS"_id, 0);
        parameters.AddCheckbox(&drop.isOn, false,   "Enable Drop Shadow",         "SDro"_id, 0);
        parameters.AddPoint(&drop.centre, below,    "Drop Shadow Center",         "SDPo"_id, KF_Preview, KPoint_Normal);
        parameters.AddCheckbox(&drop.lock, true,    "Drop Shadow Lock Blur Size", "SDSL"_id, affects);
        parameters.AddSlider(&drop.x, 5.0F,         "Drop Shadow Blur Size",      "SDBX"_id, soft, 0.0, 100.0);
        parameters.AddSlider(&drop.y, 5.0F,         "Drop Shadow Blur Size Y",    "SDBY"_id, soft | KF_Hidden, 0.0, 100.0);
        parameters.AddColor(&drop.color, shade,     "Drop Shadow Color",          "SDCo"_id, 0);
        parameters.GroupEnd();
        parameters.GroupStart("Inner Shadow", "GrIS"_id, 0);
        parameters.AddCheckbox(&inner.isOn, false,  "Enable Inner Shadow",         "SInn"_id, 0);
        parameters.AddPoint(&inner.centre, below,   "Inner Shadow Center",         "SIPo"_id, KF_Preview, KPoint_Normal);
        parameters.AddCheckbox(&inner.lock, true,   "Inner Shadow Lock Blur Size", "SISL"_id, affects);
        parameters.AddSlider(&inner.x, 5.0F,        "Inner Shadow Blur Size",      "SIBX"_id, soft, 0.0, 100.0);
        parameters.AddSlider(&inner.y, 5.0F,        "Inner Shadow Blur Size Y",    "SIBY"_id, soft | KF_Hidden, 0.0, 100.0);
        parameters.AddColor(&inner.color, shade,    "Inner Shadow Color",          "SICo"_id, 0);
        parameters.GroupEnd();
        parameters.AddStandard(&edges, 0, KPS_Edges, 0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "SDSL"_id) messages->Show("SDBY"_id, value.intValue == 0);
        if (id == "SISL"_id) messages->Show("SIBY"_id, value.intValue == 0);
        return messages;
    }

    bool Init(KImage* source) override
    {
        original.reset();
        if (!KEffectPixel::Init(source)) return false;
        original.reset(source->CopyOf());
        return original != nullptr;
    }

    Pixel F(int x, int y, KImage* source) override
    {
        Pixel pixel;
        source->GetPixel(x, y, pixel);
        return pixel;
    }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel pixel;
        source->GetPixel(x, y, pixel);
        return pixel;
    }

    void Done(KImage** destination) override
    {
        if (original) {
            AddShadows(**destination);
            if (!data.AllChannels()) PutBackUnselected(**destination);
        }
        original.reset();
        KEffectPixel::Done(destination);
    }

    struct Shadow {
        bool isOn;
        KVector2 centre; // 0.5, 0.5 is right behind the picture
        bool lock;
        float x, y; // blur, in 720ths of the width
        KColor color;
    };

    float blend;
    Shadow drop, inner;
    int edges;

private:
    void AddShadows(KImage& picture) const
    {
        std::unique_ptr<KImage> const within = inner.isOn ? ShadowOf(inner, true) : nullptr;
        if (within) {
            picture.MergePixel(within.get());
            picture.ApplyMask(original.get(), false);
            if (blend < 1.0F) {
                within->ApplyMask(original.get(), false);
                picture.BlendWith(within.get(), 1.0F - blend);
            }
        } else {
            picture.Multiply(blend);
        }
        if (std::unique_ptr<KImage> const behind = drop.isOn ? ShadowOf(drop, false) : nullptr)
            picture.MergePixelUnder(behind.get());
    }

    /// What the shadow's colour covers: the moved and blurred matte, or all but that. Null when memory is
    /// out.
    std::unique_ptr<KImage> ShadowOf(Shadow const& shadow, bool isInverse) const
    {
        std::unique_ptr<KImage> moved(original->OffsetOf(shadow.centre, edges));
        if (!moved) return nullptr;
        float const y = shadow.lock ? shadow.x : shadow.y;
        std::unique_ptr<KImage> const matte(moved->BlurOf(shadow.x, y, kBlurGaussian, 0xF, 1.0, 1.0));
        if (!matte) return nullptr;
        KColor solid = shadow.color;
        solid.alpha = 1.0F;
        moved->Fill(solid, true);
        moved->ApplyMask(matte.get(), isInverse);
        moved->Multiply(shadow.color.alpha);
        return moved;
    }

    void PutBackUnselected(KImage& picture) const
    {
        auto const keep = [this](auto& pixel, auto const& source) { KeepUnselected(pixel, source, data); };
        if (picture.IsFloat()) ForEachPixel<FltPixel>(picture.FImage(), original->FImage(), keep);
        else ForEachPixel<Pixel>(picture.FImage(), original->FImage(), keep);
    }

    std::unique_ptr<KImage> original;
};

OMBRELUNE_TOOL(BF_Border, BF_ThreadedOperator, KEffectBorder);

} // namespace ombrelune
