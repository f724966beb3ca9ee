// Shape Render: draws shapes to an image.

#include "framework/KEffectThreads.h"
#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeRender : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "sRen", "sRender", "Render out the shape to an image");
    }
    static char const* Category() { return KEffectShape::Category(); }

    KEffectShapeRender()
    {
        // clang-format off
        parameters.AddShape   (shape.Target(), "Shape", 1, KF_MainInput);
        parameters.AddChapter ("Shape Render");
        parameters.AddCheckbox(&render.forceFill, false, "Force Fill Open Shapes", "FiOp"_id, 0);
        parameters.AddButtons (&render.winding, 0, "Winding", "Wind"_id, 0, {"Even/Odd", "Non-Zero"});
        // clang-format on
    }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Source; }

    void F(int, int, KImage*, KImage* destination) override
    {
        destination->Clear();
        if (!shape.Get()) return;
        // Shapes lie around the origin, the image's corner is its origin. The group is this request's own.
        shape.Get()->Transform(KMatrix4().Move(0.5F, 0.5F / destination->FrameAspect(), 0.0F));
        shape.Get()->Render(destination, render);
    }

    void Done(KImage** destination) override
    {
        shape.Reset(nullptr);
        KEffectThreads::Done(destination);
    }

    KShapeSlot shape;
    KShapeRenderData render;
};

OMBRELUNE_TOOL(BF_ShapeRender, BF_SourceOperator, KEffectShapeRender);

} // namespace ombrelune
