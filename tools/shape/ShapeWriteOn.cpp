// Shape WriteOn: the part of paths that lies in a range of their length.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeWriteOn : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sWri", "sWriteOn", "Shape WriteOn");
    }

    KEffectShapeWriteOn()
    {
        AddShapeInput(input, "Shape", 1);
        // clang-format off
        parameters.AddChapter("Shape Offset");
        parameters.AddButtons  (&writeOn.level, 0, "Level", "Levl"_id, 0, {"Global", "Shape", "Element"});
        parameters.AddRange    (&writeOn.range, {0.0F, 1.0F}, "Range Start", "Range End", "WriS"_id, "WriE"_id, 0, 0.0, 1.0);
        parameters.AddScrew    (&writeOn.shift, 0.0F, "Shift", "Shif"_id, KF_SoftMin | KF_SoftMax, 0.0, 1.0);
        parameters.AddCheckbox (&writeOn.wrap, true, "Shift Wrap", "ShiW"_id, 0);
        parameters.AddSliderInt(&writeOn.steps, 8, "Curve Precision", "Prec"_id, KF_SoftMax, 2, 16);
        // clang-format on
    }

    KShapeGroup* FShape() override { return input.Group().WriteOnOf(writeOn); }

    KShapeEffectWriteOnData writeOn;
};

OMBRELUNE_TOOL(BF_ShapeWriteOn, BF_ThreadedOperator, KEffectShapeWriteOn,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
