// Shape Merge: the lists of both inputs in one group, the second over the first.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeMerge : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "sMrg", "sMerge", "Shape Merge"); }

    KEffectShapeMerge()
    {
        AddShapeInput(input, "Shape1", 1);
        AddShapeInput(second, "Shape2", 2);
    }

    KShapeGroup* FShape() override
    {
        KShapeGroup* result = input.Group().CopyOf();
        result->Add(second.Group());
        second.Reset(nullptr);
        return result;
    }

    KShapeSlot second;
};

OMBRELUNE_TOOL(BF_ShapeMerge, BF_ThreadedOperator, KEffectShapeMerge,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
