// Shape Offset: outlines at a distance inside, outside or both, and as many of them as wanted.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeOffset : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "sOff", "sOffset", "Shape Offset"); }

    KEffectShapeOffset()
    {
        AddShapeInput(input, "Shape", 1);
        // clang-format off
        parameters.AddChapter("Shape Offset");
        parameters.AddCheckbox (&replicate.keepOriginal, false, "Keep original", "Keep"_id, 0);
        parameters.AddSliderInt(&replicate.number, 1, "Number", "Numb"_id, KF_SoftMax, 1, 16);
        parameters.AddScrew    (&replicate.offset, 0.01F, "Offset", "Offs"_id, KF_SoftMin | KF_SoftMax, -0.1, 0.1);
        parameters.AddButtons  (&replicate.joinType, 0, "Join Type", "Type"_id, KF_AffectInputs, {"Miter", "Bevel", "Rounded"});
        parameters.AddSliderInt(&replicate.joinPrecision, 8, "Join Precision", "Prec"_id, KF_SoftMax, 2, 16);
        parameters.AddButtons  (&replicate.sides, 2, "Sides", "Side"_id, KF_AffectInputs, {"Both", "Inside", "Outside"});
        parameters.AddSliderInt(&replicate.steps, 8, "Curve Precision", "Prec"_id, KF_SoftMax, 2, 16);
        // clang-format on
    }

    KShapeGroup* FShape() override { return input.Group().ReplicateOf(replicate); }

    KShapeEffectReplicateData replicate;
};

OMBRELUNE_TOOL(BF_ShapeOffset, BF_ThreadedOperator, KEffectShapeOffset,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
