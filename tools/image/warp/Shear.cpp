// Shear: slants the picture beyond an axis, or all of it.

#include <cmath>

#include "framework/Registration.h"
#include "image/KMatrix3.h"
#include "tools/image/warp/Sizes.h"

namespace ombrelune {

class KEffectShear : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Shr", "Shear"); }

    KEffectShear()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax, turning = KF_Preview | KF_PreviewCentered;
        // clang-format off
        parameters.AddChapter("Shear");
        parameters.AddCheckbox(&shearsAll, false, "Shear all", "SAll"_id, 0);
        parameters.AddButtons (&type, 0, "Input Type", "Type"_id, 0, {"By value", "By angle"});
        parameters.AddSlider  (&shear,       1.0F, "Shear",                  "SVaX"_id, soft, -2.0, 2.0);
        parameters.AddSlider  (&shearAlong,  0.0F, "Shear Along Axis",       "SVaY"_id, soft, -2.0, 2.0);
        parameters.AddAngle   (&shearAngle, 45.0F, "Shear Angle",            "SAnX"_id, 0, KAngle_Radians);
        parameters.AddAngle   (&shearAngleAlong, 0.0F, "Shear Angle Along Axis", "SAnY"_id, 0, KAngle_Radians);
        parameters.AddPoint   (&center, {0.5F, 0.5F}, "Center",     "Cent"_id, KF_Preview, KPoint_CenteredAspect);
        parameters.AddPoint   (&pivot,  {0.5F, 0.5F}, "Axis Pivot", "Pivo"_id, KF_Preview, KPoint_Aspect);
        parameters.AddAngle   (&axisAngle, 90.0F, "Axis Angle", "Angl"_id, turning, KAngle_Radians);
        parameters.AddSlider  (&size, 1.0F, "Size Along Axis", "Size"_id, KF_SoftMax, 0.0, 10.0);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        bool const isAngle = type == 1;
        beyond = KMatrix3()
                     .Move(-center.x, -center.y)
                     .Move(-pivot.x, -pivot.y)
                     .Rotate(-axisAngle)
                     .Shear(isAngle ? -std::tan(shearAngle) : shear,
                            isAngle ? -std::tan(shearAngleAlong) : shearAlong)
                     .Scale(1.0F / AboveZero(size), 1.0F)
                     .Rotate(axisAngle)
                     .Move(pivot.x, pivot.y);
        axis = {std::cos(axisAngle), -std::sin(axisAngle)};
        return KEffectWarp::Init(source);
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        bool const isBefore = !shearsAll && (destination - pivot - center) * axis <= 0.0F;
        source = isBefore ? destination - center : AffineProduct(beyond, destination);
        return true;
    }

    bool shearsAll;
    int type;                // 0 by value, 1 by angle
    float shear, shearAlong; // slope of the shift across the axis and along it
    float shearAngle, shearAngleAlong;
    KVector2 center; // what the picture moves by
    KVector2 pivot;
    float axisAngle;
    float size;

private:
    KMatrix3 beyond;
    KVector2 axis;
};

OMBRELUNE_TOOL(BF_Shear, BF_ThreadedOperator, KEffectShear);

} // namespace ombrelune
