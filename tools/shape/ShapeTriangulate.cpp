// Shape Triangulate: cuts shapes into triangles, holes left out.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeTriangulate : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sTri", "sTriangulate", "Shape Triangulate");
    }

    KEffectShapeTriangulate()
    {
        AddShapeInput(input, "Shape", 1);
        parameters.AddChapter("Shape Triangulate");
        parameters.AddButtons(&triangulate.type, 0, "Type", "Type"_id, KF_AffectInputs, {"Type 1", "Type 2"});
    }

    KShapeGroup* FShape() override { return input.Group().TriangulateOf(triangulate); }

    KShapeEffectTriangulateData triangulate;
};

OMBRELUNE_TOOL(BF_ShapeTriangulate, BF_ThreadedOperator, KEffectShapeTriangulate,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
