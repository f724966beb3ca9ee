// Shapes: sets of concentric circles or squares between a first and a last one, each cut into dots on
// request.

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
    float BandDistance(KVector2 const& v) const
    {
        return type == kCircles ? v.Length() : std::max(std::abs(v.x), std::abs(v.y));
    }
    float DotDistance(KVector2 const& v) const { return v.Angle(); }

    int type;

private:
    enum Type { kCircles, kSquares };
};

OMBRELUNE_TOOL(BF_Shapes, BF_SourceOperator, KEffectShapes);

} // namespace ombrelune
