// Spherize: bulges or pinches the picture within a band, a circle or a rectangle.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "framework/Registration.h"

namespace ombrelune {

namespace {

enum SpherizeType { kHorizontal = 0, kVertical = 1, kSphere = 2, kRectangle = 3 };

constexpr float kPi = std::numbers::pi_v<float>;

} // namespace

class KEffectSpherize : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Sph", "Spherize"); }

    KEffectSpherize()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Spherize");
        parameters.AddButtons  (&type, kSphere, "Type", "BeTy"_id, 0, {"Horizontal", "Vertical", "Sphere", "Rectangle"});
        parameters.AddButtons  (&algorithm, 0, "Algorithm", "BeAl"_id, 0, {"Spherize", "Soft in/out", "Smooth", "Sinusoid"});
        parameters.AddSliderInt(&iterations, 2, "Iterations", "SpIt"_id, KF_SoftMax, 1, 5);
        parameters.AddPoint    (&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_Aspect);
        parameters.AddSlider   (&size, 1.0F, "Size", "SpRa"_id, KF_SoftMax | KF_Preview | KF_PreviewEllipse, 0.0, 1.0);
        parameters.AddCheckbox (&locksAxes, true, "Lock horizontal/vertical", "SpLo"_id, KF_AffectInputs);
        parameters.AddSlider   (&deformation,         0.5F, "Deformation",          "SpDH"_id, soft,             -1.0, 1.0);
        parameters.AddSlider   (&deformationVertical, 0.5F, "Deformation vertical", "SpDV"_id, soft | KF_Hidden, -1.0, 1.0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "SpLo"_id) {
            bool const isLocked = value.intValue > 0;
            messages->Show("SpDV"_id, !isLocked);
            messages->SetName("SpDH"_id, isLocked ? "Deformation" : "Deformation horizontal");
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        halfSize = size * 0.5F;
        steps = std::min(iterations, 100); // by then nothing changes any more
        amount = {deformation, locksAxes ? deformation : deformationVertical};
        return KEffectWarp::Init(source) && (amount.x != 0.0F || amount.y != 0.0F);
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        source = destination;
        KVector2 const d = destination - center;
        float const x = std::abs(d.x), y = std::abs(d.y);
        if (type == kRectangle) {
            if (!(x < halfSize && y < halfSize)) return true;
            source = center + KVector2(Factor(Curve(x / halfSize), amount.x) * d.x,
                                       Factor(Curve(y / halfSize), amount.y) * d.y);
            return true;
        }
        // A band, too, scales both directions.
        float const distance = type == kHorizontal ? x : type == kVertical ? y : d.Length();
        if (!(distance < halfSize)) return true;
        float const w = Curve(distance / halfSize);
        source = center + KVector2(Factor(w, amount.x) * d.x, Factor(w, amount.y) * d.y);
        return true;
    }

    int type;      // a SpherizeType
    int algorithm; // 0 spherize, 1 soft in and out, 2 smooth, 3 sinusoid
    int iterations;
    KVector2 center;
    float size;
    bool locksAxes;
    float deformation, deformationVertical;

private:
    /// From 0 in the centre to 1 at the border, as t.
    float Curve(float t) const
    {
        float w = t;
        for (int i = 0; i < steps; ++i) {
            switch (algorithm) {
            case 0: w = 1.0F - std::sqrt(1.0F - w * w); break;
            case 1: w *= t; break;
            case 2: w = std::sin(w * kPi / 2.0F); break;
            default: w = 2.0F * std::asin(w) / kPi; break;
            }
        }
        return w;
    }
    static float Factor(float w, float deformation) { return 1.0F - deformation + deformation * w; }

    float halfSize = 0.0F;
    int steps = 0;
    KVector2 amount;
};

OMBRELUNE_TOOL(BF_Spherize, BF_ThreadedOperator, KEffectSpherize);

} // namespace ombrelune
