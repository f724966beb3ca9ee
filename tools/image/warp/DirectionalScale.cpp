// Directional Scale: scales along an axis and across it, on one side of the centre or everywhere.

#include <cmath>

#include "framework/Registration.h"
#include "image/KMatrix3.h"
#include "tools/image/warp/Sizes.h"

namespace ombrelune {

class KEffectDirectionalScale : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "DSc", "Directional Scale"); }

    KEffectDirectionalScale()
    {
        // clang-format off
        parameters.AddChapter("Directional Scale");
        parameters.AddCheckbox(&scalesAll, false, "Scale all", "SAll"_id, 0);
        parameters.AddPoint   (&center, {0.5F, 0.5F}, "Center", "Cent"_id, KF_Preview, KPoint_Aspect);
        parameters.AddAngle   (&angle, 0.0F, "Axis angle", "Angl"_id, KF_Preview | KF_PreviewCentered, KAngle_Radians);
        parameters.AddSlider  (&sizeAlong,  5.0F, "Size along axis",         "Size"_id, KF_SoftMax, 0.0, 10.0);
        parameters.AddSlider  (&sizeAcross, 1.0F, "Size in other direction", "SizY"_id, KF_SoftMax, 0.0, 10.0);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        matrix = KMatrix3()
                     .Move(-center.x, -center.y)
                     .Rotate(-angle)
                     .Scale(1.0F / AboveZero(sizeAlong), 1.0F / AboveZero(sizeAcross))
                     .Rotate(angle)
                     .Move(center.x, center.y);
        // The matrix scales along (cos, -sin). The side is told by the axis mirrored at the horizontal: the
        // two agree at every quarter turn, and flows are set up for what lies between.
        axis = {std::cos(angle), std::sin(angle)};
        return KEffectWarp::Init(source);
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        bool const isUnchanged = !scalesAll && (destination - center) * axis <= 0.0F;
        source = isUnchanged ? destination : AffineProduct(matrix, destination);
        return true;
    }

    bool scalesAll;
    KVector2 center;
    float angle;
    float sizeAlong, sizeAcross;

private:
    KMatrix3 matrix;
    KVector2 axis;
};

OMBRELUNE_TOOL(BF_DirectionalScale, BF_ThreadedOperator, KEffectDirectionalScale);

} // namespace ombrelune
