// Shape Boolean: each shape of the first input combined with all of the second.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeBoolean : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sBol", "sBoolean", "Combines shapes by union, difference or intersection");
    }

    KEffectShapeBoolean()
    {
        AddShapeInput(input, "Shape1", 1);
        AddShapeInput(second, "Shape2", 2);
        // clang-format off
        parameters.AddChapter("Shape Boolean");
        parameters.AddButtons(&boolean.type, 0, "Type",      "Type"_id, KF_AffectInputs, {"Intersect", "Union", "Difference", "Xor"});
        parameters.AddButtons(&boolean.fill, 0, "Fill Type", 0x465479,  KF_AffectInputs, {"Even Odd", "Non Zero"});
        // clang-format on
    }

    KShapeGroup* FShape() override
    {
        boolean.other = &second.Group();
        KShapeGroup* result = input.Group().BooleanOf(boolean);
        second.Reset(boolean.other = nullptr);
        return result;
    }

    KShapeSlot second;
    KShapeEffectBooleanData boolean;
};

OMBRELUNE_TOOL(BF_ShapeBoolean, BF_ThreadedOperator, KEffectShapeBoolean,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
