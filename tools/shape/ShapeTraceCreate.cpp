// Shape Trace: the outlines of what is brighter than a threshold in an image.

#include "framework/Registration.h"
#include "image/KImage.h"
#include "shapes/KEffectShapeCreate.h"

namespace ombrelune {

class KEffectShapeTraceCreate : public KEffectShapeCreate {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sTraC", "sTrace Create", "Shape Trace Create");
    }

    KEffectShapeTraceCreate()
    {
        // clang-format off
        parameters.AddImage(&image, "Image", 1, KF_MainInput);
        parameters.AddChapter("Shape Trace");
        parameters.AddButtonsChannel(&channel, 4, "Map Channel", "MapC"_id, 0);
        parameters.AddSlider        (&threshold, 0.5F, "Threshold", "Thre"_id, 0, 0.0, 1.0);
        parameters.AddSliderInt     (&precision, 8, "Curve Precision", "Prec"_id, KF_SoftMax, 2, 16);
        // clang-format on
        ParametersAddTransform();
        ParametersAddShading();
    }

    KShapeGroup* FShape() override
    {
        if (!image) return new KShapeGroup;
        auto list = std::make_unique<KShapeList>();
        list->Trace(image, channel, threshold, true, precision);
        float const aspect = image->FrameAspect();
        list->mapping.Scale(1.0F, aspect, 1.0F);
        list->Transform(KMatrix4().Move(-0.5F, -0.5F / aspect, 0.0F)); // to the origin
        return new KShapeGroup(list.release(), false);
    }

    KImage* image = nullptr; // the bridge's
    int channel;             // 4 luminance
    float threshold;
    int precision;
};

OMBRELUNE_TOOL(BF_ShapeTraceCreate, BF_ThreadedOperator, KEffectShapeTraceCreate,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
