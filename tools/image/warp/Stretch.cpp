// Stretch: a segment of the picture becomes longer or shorter, and what lies beyond its ends moves along.

#include "framework/Registration.h"
#include "image/KMatrix3.h"
#include "tools/image/warp/Sizes.h"

namespace ombrelune {

class KEffectStretch : public KEffectWarp {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Str", "Stretch"); }

    KEffectStretch()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax, follow = KF_Preview | KF_PreviewFollow;
        // clang-format off
        parameters.AddChapter("Stretch");
        parameters.AddButtons(&type, 0, "Type", "Type"_id, 0, {"Source and Destination", "Source and Offset"});
        parameters.AddPoint(&sourceStart,      {0.25F, 0.5F}, "Source Start",      "SoSt"_id, KF_Preview, KPoint_Aspect);
        parameters.AddPoint(&sourceEnd,        {0.75F, 0.5F}, "Source End",        "SoEn"_id, follow,     KPoint_Aspect);
        parameters.AddPoint(&destinationStart, {0.25F, 0.5F}, "Destination Start", "DeSt"_id, KF_Preview, KPoint_Aspect);
        parameters.AddPoint(&destinationEnd,   {0.75F, 0.5F}, "Destination End",   "DeEn"_id, follow,     KPoint_Aspect);
        parameters.AddScrew(&offsetStart, 0.0F, "Offset Start", "OffS"_id, soft, -0.1, 0.1);
        parameters.AddScrew(&offsetEnd,   0.0F, "Offset End",   "OffE"_id, soft, -0.1, 0.1);
        // clang-format on
    }

    bool Init(KImage* source) override
    {
        before = middle = after = KMatrix3();
        start = destinationStart;
        axis = {};
        if (type == 0) SetMatrices(destinationStart, destinationEnd);
        else if (sourceStart != sourceEnd) {
            KVector2 const u = (sourceEnd - sourceStart).Normalize();
            SetMatrices(sourceStart - offsetStart * u, sourceEnd + offsetEnd * u);
        }
        return KEffectWarp::Init(source);
    }

    bool F(KVector2& source, KVector2 const& destination) override
    {
        // Without a length to measure by t is not a number, and all goes with the end.
        float const t = (destination - start) * axis;
        KMatrix3 const& part = t < 0.0F ? before : t <= 1.0F ? middle : after;
        source = AffineProduct(part, destination);
        return true;
    }

    int type; // 0 source and destination, 1 source and offset
    KVector2 sourceStart, sourceEnd, destinationStart, destinationEnd;
    float offsetStart, offsetEnd;

private:
    /// The source segment laid onto the one from d0 to d1.
    void SetMatrices(KVector2 const& d0, KVector2 const& d1)
    {
        float l, m;
        float const a = sourceStart.AngleLength(sourceEnd, l), b = d0.AngleLength(d1, m);
        // From the place of one point, turned, to that of another.
        auto const moved = [&](KVector2 const& from, KVector2 const& to) {
            return KMatrix3().Move(-from.x, -from.y).Rotate(a).Rotate(-b).Move(to.x, to.y).Inverse();
        };
        before = moved(sourceStart, d0);
        after = moved(sourceEnd, d1);
        middle = KMatrix3()
                     .Move(-sourceStart.x, -sourceStart.y)
                     .Rotate(a)
                     .Scale(1.0F / AboveZero(l), 1.0F)
                     .Scale(m, 1.0F)
                     .Rotate(-b)
                     .Move(d0.x, d0.y)
                     .Inverse();
        start = d0;
        axis = d1 - d0;
        axis /= m * m;
    }

    KMatrix3 before, middle, after;
    KVector2 start, axis;
};

OMBRELUNE_TOOL(BF_Stretch, BF_ThreadedOperator, KEffectStretch);

} // namespace ombrelune
