// Shape Tools: moves the start of closed paths along them, and opens and closes paths.

#include "framework/Registration.h"
#include "shapes/KEffectShape.h"

namespace ombrelune {

class KEffectShapeTools : public KEffectShape {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "sTls", "sTools", "Shape Tools"); }

    KEffectShapeTools()
    {
        AddShapeInput(input, "Shape", 1);
        // clang-format off
        parameters.AddChapter("Shape Offset");
        parameters.AddScrew  (&tools.startOffset, 0.0F, "Start Offset", "Offs"_id, KF_SoftMin | KF_SoftMax, 0.0, 1.0);
        parameters.AddButtons(&tools.openClose, 0, "Open Close", "OpCl"_id, 0, {"Keep", "Close All", "Open All", "Swap"});
        // clang-format on
    }

    KShapeGroup* FShape() override
    {
        std::unique_ptr<KShapeGroup> const moved(input.Group().OffsetStartOf(tools.startOffset));
        return moved->CloseOpenOf(tools.openClose);
    }

    KShapeEffectToolsData tools;
};

OMBRELUNE_TOOL(BF_ShapeTools, BF_ThreadedOperator, KEffectShapeTools,
               .outputType = KShapeParameter::kClassId);

} // namespace ombrelune
