// Lines: sets of parallel lines between a first and a last one, each cut into dots on request.

#include "framework/Registration.h"
#include "tools/image/create/BandSets.h"

namespace ombrelune {

class KEffectLines : public KEffectBandSets<KEffectLines> {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Lin", "Lines", "Line patterns"); }

    KEffectLines()
    {
        AddSets("First lines",
                {"Cent"_id, "Angl"_id, "LFSp"_id, "LFTh"_id, "LFTI"_id, "LFSo"_id, "LFSI"_id, "LfSp"_id,
                 "LfTh"_id, "LfTI"_id, "LfSo"_id, "LfSI"_id, "LFCR"_id},
                "Last lines",
                {"LLCe"_id, "LLAn"_id, "LLSp"_id, "LLTh"_id, "LLTI"_id, "LLSo"_id, "LLSI"_id, "LlSp"_id,
                 "LlTh"_id, "LlTI"_id, "LlSo"_id, "LlSI"_id, "LLCR"_id},
                "Dot Softness 2");
        // clang-format off
        parameters.AddChapter("Options");
        parameters.AddSliderInt(&setCount, 2, "Number Of Line Sets", "LiNu"_id, KF_SoftMax, 1, 15);
        parameters.AddButtons(&overlap, kScreen, "Overlap", "LiOv"_id, 0, {"Maximum", "Add", "Multiply", "Screen"});
        parameters.AddStandard(&superSample, 1, KPS_SuperSample, 0);
        // clang-format on
    }

    static constexpr bool kDotsInPixels = true;
    Float4 BandDistance(Float4 const&, Float4 const& y) const { return y; }
    Float4 DotDistance(Float4 const& x, Float4 const&) const { return x; }
};

OMBRELUNE_TOOL(BF_Lines, BF_SourceOperator, KEffectLines);

} // namespace ombrelune
