// Transform: moves the picture, and turns and scales it about an axis point.

#include "framework/Registration.h"
#include "tools/image/warp/KEffectSizeWarp.h"

namespace ombrelune {

class KEffectTransform : public KEffectSizeWarp {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "KXf", "Transform", "Transform... but with an optional warp mask.");
    }

    KEffectTransform()
    {
        parameters.AddChapter("Transform");
        AddMove();
        parameters.AddPoint(&axis, {0.5F, 0.5F}, "Axis", "Axis"_id, KF_Preview, KPoint_Aspect);
        AddSizes();
    }

    bool Init(KImage* source) override
    {
        matrix = MatrixAbout(axis);
        return KEffectSizeWarp::Init(source);
    }

    KVector2 axis;
};

OMBRELUNE_TOOL(BF_Transform, BF_ThreadedOperator, KEffectTransform);

} // namespace ombrelune
