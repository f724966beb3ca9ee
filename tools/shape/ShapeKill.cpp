// Shape Kill: keeps the sides whose direction and length are in range and drops the others.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeKill : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "sKil", "sKill", "Shape Kill"); }

    KEffectShapeKill()
    {
        AddShapeInput(input, "Shape", 1);
        // clang-format off
        parameters.AddChapter("Shape Kill");
        parameters.AddCheckbox(&kill.byAngle, true, "By Angle", "Angl"_id, 0);
        parameters.AddAngle   (&kill.angleMinimum,  0.0F, "Angle Minimum", "AMin"_id, 0, KAngle_Radians);
        parameters.AddAngle   (&kill.angleMaximum, 90.0F, "Angle Maximum", "AMin"_id, 0, KAngle_Radians);
        parameters.AddAngle   (&kill.angleOffset,   0.0F, "Angle Offset",  "AMin"_id, 0, KAngle_Radians);
        parameters.AddCheckbox(&kill.byLength, false, "By Length", "Leng"_id, 0);
        parameters.AddSlider  (&kill.lengthMinimum, 0.0F, "Length Minimum", "LMin"_id, KF_SoftMax, 0.0, 0.5);
        parameters.AddSlider  (&kill.lengthMaximum, 0.1F, "Length Maximum", "LMin"_id, KF_SoftMax, 0.0, 0.5);
        // clang-format on
    }

    KShapeGroup* FShape() override
    {
        // The input's angles turn the other way than the directions of sides.
        KShapeEffectKillData turned = kill;
        turned.angleMinimum = -kill.angleMinimum;
        turned.angleMaximum = -kill.angleMaximum;
        turned.angleOffset = -kill.angleOffset;
        return input.Group().KillOf(turned);
    }

    KShapeEffectKillData kill;
};

OMBRELUNE_TOOL(BF_ShapeKill, BF_ThreadedOperator, KEffectShapeKill, .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
