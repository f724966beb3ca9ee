// Shape ZigZag: bends every side into parts that lie on both sides of it in turn.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeZigZag : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "sZZ", "sZigZag", "Shape ZigZag"); }

    KEffectShapeZigZag()
    {
        AddShapeInput(input, "Shape", 1);
        // clang-format off
        parameters.AddChapter("Shape ZigZag");
        parameters.AddButtons  (&type, 0, "Type", "ZZTy"_id, 0, {"By segment", "By distance"});
        parameters.AddSliderInt(&steps, 3, "Steps", "ZZSt"_id, KF_SoftMax, 1, 10);
        parameters.AddSlider   (&distance, 0.01F, "Distance", "ZZDi"_id, KF_SoftMax, 0.001, 0.1);
        parameters.AddScrew    (&offset, 0.01F, "Offset", "ZZOf"_id, KF_SoftMin | KF_SoftMax, -0.1, 0.1);
        // clang-format on
    }

    KShapeGroup* FShape() override
    {
        return input.Group().ZigZagOf(type == 0 ? kZigZagSegments : kZigZagDistance, offset, steps, distance);
    }

    int type; // 0 by segment, 1 by distance
    int steps;
    float distance, offset;
};

OMBRELUNE_TOOL(BF_ShapeZigZag, BF_ThreadedOperator, KEffectShapeZigZag,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
