// Shape Transform: moves, turns and scales shapes; their textures go along.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeTransform : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sXf", "sTransform", "Shape Transform");
    }

    KEffectShapeTransform()
    {
        AddShapeInput(input, "Shape", 1);
        ParametersAddTransform();
    }

    KShapeGroup* FShape() override { return input.Group().CopyOf(); }
};

OMBRELUNE_TOOL(BF_ShapeTransform, BF_ThreadedOperator, KEffectShapeTransform,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
