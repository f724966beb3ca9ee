// Relative Transform: moves, turns and scales the picture about a place that is measured: a point of the box
// around the pixels whose channel lies in a range.

#include "framework/Registration.h"
#include "tools/image/warp/KEffectSizeWarp.h"

namespace ombrelune {

class KEffectRelativeTransform : public KEffectSizeWarp {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "RXf", "Relative Transform",
                      "Transform relative to the actual pixel distribution of the image");
    }

    KEffectRelativeTransform()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Relative Transform");
        parameters.AddButtons(&centerType, 0, "Center Type", "CenT"_id, 0, {"Bounding Box", "Weighted Pixels"});
        parameters.AddButtonsChannel(&channel, 4, "Center Channel", "EaCh"_id, 0);
        parameters.AddRange  (&range, {0.0F, 1.0F}, "Range Low", "Range High", "GrwS"_id, "GrwE"_id, 0, 0.0, 1.0);
        parameters.AddSlider (&pivotX, 0.0F, "Pivot X", "PivX"_id, soft, -1.0, 1.0);
        parameters.AddSlider (&pivotY, 0.0F, "Pivot Y", "PivY"_id, soft, -1.0, 1.0);
        AddMove();
        AddSizes();
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        if (!KEffectSizeWarp::Init(source)) return false;
        KVector2 low, high, unused;
        bool const isFound = source && source->BoundingBox(low, high, unused, channel, range);
        matrix = isFound ? MatrixAbout(Pivot(low, high)) : KMatrix3();
        return true;
    }

    int centerType; // kept with the flow; the box is what counts
    int channel;
    KRange range;
    float pivotX, pivotY; // -1 the low side of the box, 1 the high side

private:
    /// @param low, high  corners of the box in pixels
    KVector2 Pivot(KVector2 const& low, KVector2 const& high) const
    {
        float const x = 0.5F * (pivotX + 1.0F) * high.x + 0.5F * (1.0F - pivotX) * low.x;
        float const y = 0.5F * (pivotY + 1.0F) * high.y + 0.5F * (1.0F - pivotY) * low.y;
        return {x / static_cast<float>(width), y / (static_cast<float>(height) * frameAspect)};
    }
};

OMBRELUNE_TOOL(BF_RelativeTransform, BF_ThreadedOperator, KEffectRelativeTransform);

} // namespace ombrelune
