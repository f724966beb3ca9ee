// Lens Distortion: bends the picture as a lens does, by a polynomial of the squared distance, or back.

#include "framework/Registration.h"
#include "tools/image/warp/Sizes.h"

namespace ombrelune {

class KEffectLensDistortion : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Lns", "Lens Distortion"); }

    KEffectLensDistortion()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Lens Distortion");
        parameters.AddButtons (&type, 0, "Type", "Type"_id, 0, {"Distort", "Restore"});
        parameters.AddPoint   (&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_Aspect);
        parameters.AddCheckbox(&pinsCorners, true, "Pin corners (only if center is centered)", "PinC"_id, KF_AffectInputs);
        parameters.AddSlider  (&scale,  1.0F, "Scale",   "Scal"_id, KF_SoftMax | KF_Hidden, 0.0, 2.0);
        parameters.AddSlider  (&kappa1, 0.5F, "Kappa 1", "Kap1"_id, soft, -1.0, 1.0);
        parameters.AddSlider  (&kappa2, 0.5F, "Kappa 2", "Kap2"_id, soft, -1.0, 1.0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "PinC"_id) messages->Show("Scal"_id, value.intValue == 0);
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectWarp::Init(source)) return false;
        // Squared distance of a corner from the middle, where the factor is to be 1.
        float const r2 = (1.0F / (frameAspect * frameAspect) + 1.0F) * 0.25F;
        inverseScale = pinsCorners ? 1.0F - (kappa1 + kappa2 * r2) * r2 : 1.0F / AboveZero(scale);
        return true;
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        KVector2 const d = destination - center;
        float const q = d * d;
        float const f = inverseScale + (kappa1 + kappa2 * q) * q;
        source = center + (type == 1 ? 1.0F / f : f) * d;
        return true;
    }

    int type; // 0 distort, 1 restore
    KVector2 center;
    bool pinsCorners;
    float scale;
    float kappa1, kappa2;

private:
    float inverseScale = 1.0F;
};

OMBRELUNE_TOOL(BF_LensDistortion, BF_ThreadedOperator, KEffectLensDistortion);

} // namespace ombrelune
