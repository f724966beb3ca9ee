// Spiral: draws a spiral on the image, zig-zagged and smoothed on request.

#include "framework/Registration.h"
#include "shapes/KEffectImageShape.h"
#include "tools/shape/SpiralPath.h"

namespace ombrelune {

class KEffectSpiral : public KEffectImageShape {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Spi", "Spiral"); }

    KEffectSpiral()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        parameters.AddChapter("Spiral");
        spiral.ParametersAdd(parameters);
        // clang-format off
        parameters.AddCheckbox (&close, false, "Close Shape", "ShCl"_id, 0);
        parameters.AddSliderInt(&subdivisions, 16, "Curve subdivisions", "Subd"_id, KF_SoftMax, 1, 32);
        parameters.AddButtons  (&zigZagType, 0, "ZigZag Type", "ZZTy"_id, 0, {"None", "By segment", "By distance"});
        parameters.AddSliderInt(&zigZagSteps, 3, "ZigZag Steps", "ZZSt"_id, KF_SoftMax, 1, 10);
        parameters.AddSlider   (&zigZagDistance, 0.01F, "ZigZag Distance", "ZZDi"_id, KF_SoftMax, 0.001, 0.1);
        parameters.AddScrew    (&zigZagOffset, 0.01F, "ZigZag Offset", "ZZOf"_id, soft, -0.1, 0.1);
        parameters.AddScrew    (&smooth,    1.0F, "Smooth",           "Smoo"_id, soft, 0.0, 1.0);
        parameters.AddScrew    (&curvature, 1.0F, "Smooth Curvature", "SmCu"_id, soft, 0.0, 1.0);
        // clang-format on
        ParametersAdd();
    }

    KShapeGroup* FShape() override
    {
        std::unique_ptr<KShape> path = spiral.Make(centre);
        if (close) path->Close();
        if (zigZagType > 0) {
            auto const kind = zigZagType == 1 ? kZigZagSegments : kZigZagDistance;
            path.reset(path->ZigZagOf(kind, zigZagOffset, zigZagSteps, zigZagDistance));
        }
        if (smooth != 0.0F) path.reset(path->SmoothOf(smooth, curvature));
        auto list = std::make_unique<KShapeList>();
        list->AddLast(path.release());
        return new KShapeGroup(list.release(), false);
    }

    SpiralPath spiral;
    bool close;
    int subdivisions; // kept with the flow; curves are flattened with a number of steps of their own
    int zigZagType;   // 0 none, 1 by segment, 2 by distance
    int zigZagSteps;
    float zigZagDistance, zigZagOffset;
    float smooth, curvature;
};

OMBRELUNE_TOOL(BF_Spiral, BF_ThreadedOperator, KEffectSpiral);

} // namespace ombrelune
