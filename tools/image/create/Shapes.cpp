// Shapes: sets of concentric circles or squares between a first and a last one, each cut into dots on
// request.

#include <cmath>

#include "framework/Registration.h"
#include "tools/image/create/BandSets.h"

namespace ombrelune {

class KEffectShapes : public KEffectBandSets<KEffectShapes> {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Shp", "Shapes", "Shape patterns; circles, squares, ...");
    }

    KEffectShapes()
    {
        AddSets("First shapes",
                {"Cent"_id, "Angl"_id, "SFSp"_id, "SFTh"_id, "SFTI"_id, "SFSo"_id, "SFSI"_id, "SfSp"_id,
                 "SfTh"_id, "SfTI"_id, "SfSo"_id, "SfSI"_id, "SFCR"_id},
                "Last shapes",
                {"SLCe"_id, "SLAn"_id, "SLSp"_id, "SLTh"_id, "SLTI"_id, "SLSo"_id, "SLSI"_id, "SlSp"_id,
                 "SlTh"_id, "SlTI"_id, "SlSo"_id, "SlSI"_id, "SLCR"_id},
                "Dot Softness");
        // clang-format off
        parameters.AddChapter("Options");
        parameters.AddButtons(&type, kCircles, "Type", "ShTy"_id, 0, {"Circles", "Squares"});
        parameters.AddSliderInt(&setCount, 1, "Number Of Line Sets", "ShNu"_id, KF_SoftMax, 1, 15);
        parameters.AddButtons(&overlap, kScreen, "Overlap", "ShOv"_id, 0, {"Maximum", "Add", "Multiply", "Screen"});
        parameters.AddStandard(&superSample, 1, KPS_SuperSample, 0);
        // clang-format on
    }

    static constexpr bool kDotsInPixels = false; // radians
    Float4 BandDistance(Float4 const& x, Float4 const& y) const
    {
        if (type == kSquares) return Larger(Absolute(x), Absolute(y));
        Float4 const square = x * x + y * y;
        return Float4{std::sqrt(square[0]), std::sqrt(square[1]), std::sqrt(square[2]), std::sqrt(square[3])};
    }
    Float4 DotDistance(Float4 const& x, Float4 const& y) const
    {
        Float4 angles;
        for (int lane = 0; lane < 4; ++lane) angles[lane] = KVector2(x[lane], y[lane]).Angle();
        return angles;
    }

    int type;

private:
    enum Type { kCircles, kSquares };
};

OMBRELUNE_TOOL(BF_Shapes, BF_SourceOperator, KEffectShapes);

} // namespace ombrelune
