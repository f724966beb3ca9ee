// Radial: moves the picture along the rays from a centre, by the same distance everywhere.

#include <algorithm>

#include "framework/Registration.h"

namespace ombrelune {

class KEffectRadial : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Radi", "Radial", "Offsets the image radially");
    }

    KEffectRadial()
    {
        // clang-format off
        parameters.AddChapter("Radial");
        parameters.AddPoint(&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_Aspect);
        parameters.AddScrew(&offset, 0.0F, "Radial Offset", "RaOX"_id, KF_SoftMin | KF_SoftMax, -1.0, 1.0);
        // clang-format on
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        KVector2 const d = destination - center;
        source = center + (1.0F - offset / std::max(d.Length(), 1e-05F)) * d;
        return true;
    }

    KVector2 center;
    float offset;
};

OMBRELUNE_TOOL(BF_Radial, BF_ThreadedOperator, KEffectRadial);

} // namespace ombrelune
