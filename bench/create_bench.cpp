// The generators over whole pictures, with one sample a pixel.

#include "bench/Frame.h"

namespace ombrelune::bench {
namespace {

KVector2 const middle(0.5F, 0.3F);

bool const tools[] = {
    RatioRows("Tool/GradientLinear", Frame(Tool("BF_Gradient"), changed)),
    RatioRows("Tool/GradientRadial", Frame(Tool("BF_Gradient", Setting<int>{"cTyp"_id, 1}), changed)),
    RatioRows("Tool/PatternGrid", Frame(Tool("BF_Pattern", Setting<KVector2>{"Cent"_id, middle}), changed)),
    RatioRows(
        "Tool/PatternHoneycomb",
        Frame(Tool("BF_Pattern", Setting<KVector2>{"Cent"_id, middle}, Setting<int>{"Type"_id, 2}), changed)),
    RatioRows("Tool/Lines", Frame(Tool("BF_Lines"), changed)),
    RatioRows("Tool/Shapes", Frame(Tool("BF_Shapes"), changed)),
    RatioRows("Tool/Noise", Frame(Tool("BF_Noise"), changed)),
};

} // namespace
} // namespace ombrelune::bench
