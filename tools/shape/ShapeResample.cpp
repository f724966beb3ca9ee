// Shape Resample: new points at even distances along the path.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeResample : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sRes", "sResample", "Shape Resample");
    }

    KEffectShapeResample()
    {
        AddShapeInput(input, "Shape", 1);
        // clang-format off
        parameters.AddChapter("Shape Resample");
        parameters.AddSlider   (&resample.distance, 0.11F, "Distance", "Dist"_id, KF_SoftMax, 0.0001, 1.0);
        parameters.AddSlider   (&resample.offset,   0.0F,  "Offset",   "Offs"_id, KF_SoftMax, 0.0,    1.0);
        parameters.AddCheckbox (&resample.keepEndPoints,      false, "Keep End Points",      "KeEn"_id, 0);
        parameters.AddCheckbox (&resample.keepOriginalPoints, false, "Keep Original Points", "KePo"_id, 0);
        parameters.AddAngle    (&resample.minimumAngle, 20.0F, "Minimum Angle At Points To Keep", "KeAn"_id, KF_SoftMax, KAngle_Radians);
        parameters.AddSliderInt(&resample.steps, 8, "Curve Precision", "Prec"_id, KF_SoftMax, 2, 16);
        // clang-format on
    }

    KShapeGroup* FShape() override { return input.Group().ResampleOf(resample); }

    KShapeEffectResampleData resample;
};

OMBRELUNE_TOOL(BF_ShapeResample, BF_ThreadedOperator, KEffectShapeResample,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
