// Shape Smooth: curves through the points of a path.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeSmooth : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "sSmo", "sSmooth", "Shape Smooth"); }

    KEffectShapeSmooth()
    {
        AddShapeInput(input, "Shape", 1);
        // clang-format off
        parameters.AddChapter("Shape Smooth");
        parameters.AddScrew(&smooth,    1.0F, "Smooth",           "Smoo"_id, KF_SoftMin | KF_SoftMax, 0.0, 1.0);
        parameters.AddScrew(&curvature, 1.0F, "Smooth Curvature", "SmCu"_id, KF_SoftMin | KF_SoftMax, 0.0, 1.0);
        // clang-format on
    }

    KShapeGroup* FShape() override { return input.Group().SmoothOf(smooth, curvature); }

    float smooth, curvature;
};

OMBRELUNE_TOOL(BF_ShapeSmooth, BF_ThreadedOperator, KEffectShapeSmooth,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
