// Shape Spiral: a spiral round the origin.

#include "framework/Registration.h"
#include "shapes/KEffectShapeCreate.h"
#include "tools/shape/SpiralPath.h"

namespace ombrelune {

class KEffectShapeSpiralCreate : public KEffectShapeCreate {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sSpiC", "sSpiral Create", "Shape Spiral Create");
    }

    KEffectShapeSpiralCreate()
    {
        parameters.AddChapter("Shape Spiral");
        spiral.ParametersAdd(parameters);
        ParametersAddTransform();
        ParametersAddShading();
    }

    KShapeGroup* FShape() override
    {
        auto list = std::make_unique<KShapeList>();
        list->AddLast(spiral.Make({0.0F, 0.0F}).release());
        return new KShapeGroup(list.release(), false);
    }

    SpiralPath spiral;
};

OMBRELUNE_TOOL(BF_ShapeSpiral, BF_ThreadedOperator, KEffectShapeSpiralCreate, .id = "BF_ShapeSpiralCreate",
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
