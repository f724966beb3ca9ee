// Shape Shading: gives all shapes a new look.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeShading : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sSha", "sShading", "Apply Shading to shape");
    }

    KEffectShapeShading()
    {
        // clang-format off
        parameters.AddSlider (&offset, 1.0F, "Offset", "Offs"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddButtons(&modeFill,    1, "Mode Fill", "MFil"_id, 0, {"Keep", "Replace", "Add"});
        parameters.AddButtons(&modeOutline, 1, "Mode Fill", "MOut"_id, 0, {"Keep", "Replace", "Add"});
        // clang-format on
        AddShapeInput(input, "Shape", 1);
        ParametersAddShading();
    }

    KShapeGroup* FShape() override { return input.Group().CopyOf(); }

    // Kept with the flow; the look is replaced whatever they say.
    float offset;
    int modeFill, modeOutline;
};

OMBRELUNE_TOOL(BF_ShapeShading, BF_ThreadedOperator, KEffectShapeShading,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
