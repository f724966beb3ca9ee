// Warps by matrices: signs of angles, order of steps, sides and zones.

#include <cmath>
#include <limits>
#include <map>
#include <string>

#include "tests/framework/Expect.h"

namespace ombrelune {
namespace {

using namespace test;

TEST(Transform, TurnsLeftAboutTheAxisThenScalesAndMoves)
{
    ToolUnderTest tool("BF_Transform");
    ExpectIdentity(tool);
    // A quarter turn to the left: what shows to the right of the axis (0.5, 0.25) was below it.
    tool.Set("Angl"_id, Degrees(90));
    ExpectAt(tool, {{{0.6F, 0.25F}, {0.5F, 0.15F}}, {{0.5F, 0.35F}, {0.6F, 0.25F}}});
    // Sources are turned back before they are scaled back.
    tool.Set("SizX"_id, 2.0F).Set("SizY"_id, 0.5F);
    ExpectAt(tool, {{{0.5F, 0.45F}, {0.6F, 0.25F}}, {{0.55F, 0.25F}, {0.5F, 0.15F}}});
    // Size and aspect: 2 across, 1 along.
    tool.Set("SizT"_id, 1);
    ExpectAt(tool, {{{0.55F, 0.25F}, {0.5F, 0.2F}}});
    // The picture moves by the centre and never back.
    tool.Set("Cent"_id, KVector2(0.1F, -0.05F));
    ExpectAt(tool, {{{0.65F, 0.2F}, {0.5F, 0.2F}}});
    tool.Set("Angl"_id, 0.0F).Set("SizX"_id, 1.0F).Set("SizY"_id, 1.0F).Set("Axis"_id, KVector2(0.9F, 0.0F));
    ExpectAt(tool, {{{0.6F, 0.1F}, {0.5F, 0.15F}}});
}

TEST(RelativeTransform, ScalesAboutAPointOfTheMeasuredBox)
{
    ToolUnderTest tool("BF_RelativeTransform");
    tool.Set("SizX"_id, 2.0F).Set("SizY"_id, 2.0F);
    ExpectIdentity(tool); // nothing in range
    // White from (10, 4) to (19, 7): a box of (10, 4) to (20, 8) pixels, (0.25, 0.1) to (0.5, 0.2).
    for (int y = 4; y < 8; ++y) {
        for (int x = 10; x < 20; ++x) {
            FltPixel white;
            white.red = white.green = white.blue = white.alpha = 1.0F;
            tool.Source().SetPixel(x, y, white);
        }
    }
    ExpectAt(tool, {{{0.375F, 0.15F}, {0.375F, 0.15F}}, {{0.475F, 0.05F}, {0.425F, 0.1F}}}, 2e-6);
    tool.Set("PivX"_id, -1.0F).Set("PivY"_id, 1.0F);
    ExpectAt(tool, {{{0.25F, 0.2F}, {0.25F, 0.2F}}, {{0.45F, 0.1F}, {0.35F, 0.15F}}}, 2e-6);
    tool.Set("Cent"_id, KVector2(0.1F, 0.0F));
    ExpectAt(tool, {{{0.35F, 0.2F}, {0.25F, 0.2F}}}, 2e-6);
}

TEST(DirectionalScale, ScalesOneSideAlongItsAxis)
{
    ToolUnderTest tool("BF_DirectionalScale");
    ExpectAt(tool, {{{0.6F, 0.35F}, {0.52F, 0.35F}}, {{0.4F, 0.35F}, {0.4F, 0.35F}}});
    tool.Set("SizY"_id, 2.0F);
    ExpectAt(tool, {{{0.6F, 0.35F}, {0.52F, 0.3F}}});
    // An input of 90 degrees points downwards.
    tool.Set("Angl"_id, Degrees(90)).Set("SizY"_id, 1.0F);
    ExpectAt(tool, {{{0.6F, 0.15F}, {0.6F, 0.23F}}, {{0.6F, 0.35F}, {0.6F, 0.35F}}});
    tool.Set("SAll"_id, true);
    ExpectAt(tool, {{{0.6F, 0.35F}, {0.6F, 0.27F}}});
    // Between quarter turns the scale lies along 30 degrees to the left and the side is that of 30 to the
    // right.
    tool.Set("Angl"_id, Degrees(30)).Set("SAll"_id, false);
    float const c = std::sqrt(0.75F), s = 0.5F;
    ExpectAt(tool, {{{0.5F + 0.1F * c, 0.25F + 0.1F * s}, {0.5F + 0.02F * c, 0.25F + 0.02F * s}},
                    {{0.5F + 0.06F * s, 0.25F + 0.1F * c}, {0.5F + 0.06F * s, 0.25F + 0.1F * c}},
                    {{0.5F + 0.1F * s, 0.25F - 0.1F * c}, {0.5F + 0.1F * s, 0.25F - 0.1F * c}}});
}

TEST(Mirror, ReflectsTheLeftOfItsLine)
{
    ToolUnderTest tool("BF_Mirror");
    tool.Set("MirL"_id, KVector2(0.0F, 0.1F)).Set("MirR"_id, KVector2(1.0F, 0.1F));
    ExpectAt(tool, {{{0.3F, 0.3F}, {0.3F, -0.1F}}, {{0.3F, 0.05F}, {0.3F, 0.05F}}});
    tool.Set("MirL"_id, KVector2(1.0F, 0.1F)).Set("MirR"_id, KVector2(0.0F, 0.1F));
    ExpectAt(tool, {{{0.3F, 0.3F}, {0.3F, 0.3F}}, {{0.3F, 0.05F}, {0.3F, 0.15F}}});
    tool.Set("MirL"_id, KVector2(0.1F, 0.1F)).Set("MirR"_id, KVector2(0.4F, 0.4F));
    ExpectAt(tool, {{{0.2F, 0.5F}, {0.5F, 0.2F}}, {{0.5F, 0.2F}, {0.5F, 0.2F}}});
    tool.Set("MAll"_id, true);
    ExpectAt(tool, {{{0.5F, 0.2F}, {0.2F, 0.5F}}});
    // Where the points meet, the mirror is level.
    tool.Set("MirR"_id, KVector2(0.1F, 0.1F));
    ExpectAt(tool, {{{0.3F, 0.3F}, {0.3F, -0.1F}}, {{0.3F, -0.1F}, {0.3F, 0.3F}}});
}

TEST(Shear, SlantsWhatLiesBeyondTheAxis)
{
    ToolUnderTest tool("BF_Shear");
    // The axis points up from (0.5, 0.25); a shear of 1 leans to the right by as much as it is high.
    Pair const above{{0.5F, 0.35F}, {0.4F, 0.35F}}, below{{0.5F, 0.15F}, {0.5F, 0.15F}};
    ExpectAt(tool, {above, below});
    tool.Set("Type"_id, 1); // by 45 degrees
    ExpectAt(tool, {above, below});
    tool.Set("SAll"_id, true);
    ExpectAt(tool, {above, {{0.5F, 0.15F}, {0.6F, 0.15F}}});
    // Twice as long along the axis, which comes after the shear.
    tool.Set("Size"_id, 2.0F);
    ExpectAt(tool, {{{0.5F, 0.35F}, {0.4F, 0.3F}}});
    // Along the axis: to the right of it down.
    tool.Set("Type"_id, 0).Set("SVaX"_id, 0.0F).Set("SVaY"_id, 1.0F).Set("Size"_id, 1.0F);
    ExpectAt(tool, {{{0.6F, 0.35F}, {0.6F, 0.25F}}});
    // Both sides move by the centre, and the border with them.
    tool.Set("SAll"_id, false)
        .Set("SVaX"_id, 1.0F)
        .Set("SVaY"_id, 0.0F)
        .Set("Cent"_id, KVector2(0.1F, 0.05F));
    ExpectAt(tool, {{{0.6F, 0.28F}, {0.5F, 0.23F}}, {{0.6F, 0.4F}, {0.4F, 0.35F}}});
}

TEST(Stretch, HasThreeZones)
{
    ToolUnderTest tool("BF_Stretch");
    ExpectIdentity(tool);
    tool.Set("SoSt"_id, KVector2(0.2F, 0.2F)).Set("SoEn"_id, KVector2(0.4F, 0.2F));
    tool.Set("DeSt"_id, KVector2(0.2F, 0.1F)).Set("DeEn"_id, KVector2(0.6F, 0.1F));
    ExpectAt(
        tool,
        {{{0.1F, 0.15F}, {0.1F, 0.25F}}, {{0.4F, 0.15F}, {0.3F, 0.25F}}, {{0.7F, 0.05F}, {0.5F, 0.15F}}});
    // Laid upright: up is along and left is what was up.
    tool.Set("DeSt"_id, KVector2(0.5F, 0.1F)).Set("DeEn"_id, KVector2(0.5F, 0.2F));
    ExpectAt(
        tool,
        {{{0.45F, 0.15F}, {0.3F, 0.25F}}, {{0.45F, 0.05F}, {0.15F, 0.25F}}, {{0.45F, 0.3F}, {0.5F, 0.25F}}});

    tool.Set("Type"_id, 1).Set("OffS"_id, 0.1F).Set("OffE"_id, -0.1F); // (0.1, 0.2) to (0.3, 0.2)
    ExpectAt(tool,
             {{{0.05F, 0.3F}, {0.15F, 0.3F}}, {{0.15F, 0.3F}, {0.25F, 0.3F}}, {{0.5F, 0.1F}, {0.6F, 0.1F}}});
    tool.Set("SoEn"_id, KVector2(0.2F, 0.2F));
    ExpectIdentity(tool);
    // Without a source length the segment shows one point; without a length of its own there is no segment.
    tool.Set("Type"_id, 0);
    ExpectAt(tool, {{{0.5F, 0.15F}, {0.2F, 0.2F}}});
    tool.Set("SoEn"_id, KVector2(0.4F, 0.2F)).Set("DeEn"_id, KVector2(0.5F, 0.1F));
    ExpectAt(tool, {{{0.5F, 0.1F}, {0.4F, 0.2F}}, {{0.6F, 0.2F}, {0.5F, 0.3F}}});
}

TEST(SegmentTransform, TurnsAndScalesEachCellAboutItsCentre)
{
    ToolUnderTest tool("BF_SegmentTransform");
    ExpectIdentity(tool);
    // The cell to the right of the middle is centred at (0.7, 0.25).
    tool.Set("SSiX"_id, 0.2F).Set("Angl"_id, Degrees(90));
    ExpectAt(tool, {{{0.75F, 0.28F}, {0.73F, 0.2F}}});
    // Scaled back first, turned back after it.
    tool.Set("ScaL"_id, false).Set("ScaX"_id, 2.0F);
    ExpectAt(tool, {{{0.75F, 0.28F}, {0.73F, 0.225F}}});
    tool.Set("SSiL"_id, false); // rows of 0.1: the nearest centre is (0.7, 0.25) still, then (0.7, 0.35)
    ExpectAt(tool, {{{0.75F, 0.28F}, {0.73F, 0.225F}}, {{0.7F, 0.32F}, {0.67F, 0.35F}}});
}

TEST(SegmentTransform, RadialCellsAreCutByLengthFirst)
{
    ToolUnderTest tool("BF_SegmentTransform");
    tool.Set("Type"_id, 1);
    ExpectIdentity(tool, 2e-6);
    // Angle 0.13, length 0.25: both nearest to 0.2, from which they differ by -0.07 and 0.05.
    tool.Set("SSiX"_id, 0.2F).Set("ScaX"_id, 2.0F);
    auto const polar = [](double a, double l) {
        return KVector2(static_cast<float>(0.5 + l * std::cos(a)),
                        static_cast<float>(0.25 + l * std::sin(a)));
    };
    ExpectAt(tool, {{polar(0.13, 0.25), polar(0.165, 0.225)}, {{0.5F, 0.25F}, {0.5F, 0.25F}}}, 2e-6);
    // Rings of 0.4 and sectors of 0.2: the cell is (0.4, 0.2).
    tool.Set("SSiX"_id, 0.4F).Set("SSiL"_id, false).Set("SSiY"_id, 0.2F);
    ExpectAt(tool, {{polar(0.13, 0.25), polar(0.265, 0.225)}}, 2e-6);
}

// Values that make no sense.

TEST(WarpTools, SurviveZerosAndWhatIsNotANumber)
{
    float const nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    for (KEffectFactory const& factory : EffectFactories()) {
        auto const effect = factory.makeRowForm();
        auto* const warp = dynamic_cast<KEffectWarp*>(effect.get());
        if (!warp) continue;
        for (float value : {0.0F, -1.0F, 1e-30F, 1e30F, inf, -inf, nan}) {
            for (int choice : {0, 1, 3}) {
                SCOPED_TRACE(fmt::format("{} with {} and choice {}", factory.tool, value, choice));
                for (KParameter* parameter : effect->parameters.Each<KParameter>()) {
                    if (parameter->type == KPT_Float) *static_cast<float*>(parameter->target) = value;
                    if (parameter->type == KPT_Point)
                        *static_cast<KVector2*>(parameter->target) = {value, 0.25F};
                    if (parameter->type == KPT_Bool) *static_cast<bool*>(parameter->target) = choice == 1;
                    if (parameter->control == KCT_Buttons) *static_cast<int*>(parameter->target) = choice;
                    if (parameter->control == KCT_Slider && parameter->type == KPT_Int)
                        *static_cast<int*>(parameter->target) = choice == 3 ? 2147483647 : -choice;
                    if (parameter->type == KPT_Image) *static_cast<KImage**>(parameter->target) = nullptr;
                }
                Picture const source = MakeBusyPicture(kDepthFloat, 9, 5);
                for (int filtering : {0, 1, 2}) {
                    for (int underSample : {1, 4}) {
                        KProcessImageData data = DataFor(*source);
                        data.filtering = filtering;
                        data.underSample = underSample;
                        data.edges = choice % 3;
                        Picture const result = Apply(*warp, *source, data);
                        ASSERT_TRUE(std::isfinite(ColorAt(*result, 4, 2).alpha));
                    }
                }
            }
        }
    }
}

} // namespace
} // namespace ombrelune
