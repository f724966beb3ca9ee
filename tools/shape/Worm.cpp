// Worm: draws a line of three arcs that is gone through again and again, from a wave to a rosette.

#include <algorithm>
#include <cmath>
#include <numbers>

#include "framework/Registration.h"
#include "shapes/KEffectImageShape.h"

namespace ombrelune {

class KEffectWorm : public KEffectImageShape {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Wrm", "Worm"); }

    KEffectWorm()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax, softMax = KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Worm");
        parameters.AddPoint    (&centre, {0.5F, 0.5F}, "Start", "Strt"_id, KF_Preview, KPoint_Aspect);
        parameters.AddCheckbox (&isCentered, false, "Reposition around worm center", "Cent"_id, 0);
        parameters.AddScrew    (&scale,  1.0F, "Global Length", "GLen"_id, soft, 0.0, 3.0);
        parameters.AddScrew    (&offset, 0.0F, "Offset",        "Offs"_id, soft, -0.1, 0.1);
        parameters.AddSliderInt(&subdivisions, 16, "Curve subdivisions", "Subd"_id, softMax, 1, 32);
        parameters.AddSliderInt(&repeat,    1, "Repeat worm",    "Rept"_id, softMax, 1, 32);
        parameters.AddSliderInt(&replicate, 1, "Replicate worm", "Repl"_id, softMax, 1, 32);
        parameters.AddScrew    (&replicateOffset, 0.1F, "Replicate offset", "ReOf"_id, soft, -0.1, 0.1);
        parameters.AddRange    (&range, {0.0F, 1.0F}, "Write Start", "Write End", "WriS"_id, "WriE"_id, 0, 0.0, 1.0);

        parameters.AddChapter("Curve");
        static constexpr Arc wave[] = {{90.0F, 0.1F}, {-180.0F, 0.2F}, {90.0F, 0.1F}};
        for (std::uint32_t i = 0; i < std::size(arcs); ++i) {
            KString text;
            auto const label = [&](char const* name) { return text.Numbered(name, static_cast<int>(i) + 1, true); };
            parameters.AddAngle(&arcs[i].turn, wave[i].turn, label("Curve Angle"), "CAn0"_id + i, 0, KAngle_Radians);
            parameters.AddScrew(&arcs[i].length, wave[i].length, label("Curve Length"), "CLe0"_id + i, soft, 0.0, 1.0);
        }
        // clang-format on
        ShadingAdd();
    }

    KShapeGroup* FShape() override
    {
        auto path = std::make_unique<KShape>();
        path->MoveTo(centre);
        int const pieces = std::clamp(subdivisions, 1, 1024), most = kMostPieces / (kArcs * pieces);
        double x = centre.x, y = centre.y, heading = 0.0;
        for (int i = 0; i < std::clamp(repeat, 1, most); ++i) {
            for (Arc const& arc : arcs) {
                double const turn = arc.turn / pieces;
                // Chords of equal length, each turned by half a step beyond the one before.
                double const chord = double{arc.length} * scale / pieces;
                heading += turn / 2.0;
                for (int piece = 0; piece < pieces; ++piece) {
                    x += chord * std::cos(heading);
                    y += chord * std::sin(heading);
                    path->LineTo({static_cast<float>(x), static_cast<float>(y)});
                    heading += turn;
                }
                heading -= turn / 2.0;
            }
        }
        auto list = std::make_unique<KShapeList>();
        list->AddLast(path.release());
        return new KShapeGroup(list.release(), false);
    }

    /// Part of a circle that turns evenly over its length.
    struct Arc {
        float turn;   // radians to the left
        float length; // parts of the width
    };
    static constexpr int kArcs = 3;

    float scale; // of all lengths
    int subdivisions, repeat;
    Arc arcs[kArcs];

private:
    static constexpr int kMostPieces = 1 << 15;
};

OMBRELUNE_TOOL(BF_Worm, BF_ThreadedOperator, KEffectWorm);

} // namespace ombrelune
