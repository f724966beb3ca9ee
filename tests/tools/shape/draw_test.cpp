#include <algorithm>
#include <numbers>
#include <vector>

#include "shapes/KEffectImageShape.h"
#include "tests/framework/ToolUnderTest.h"
#include "tests/tools/shape/shape_flow.h"

namespace ombrelune::test {
namespace {

std::string PathOf(KEffect& effect)
{
    std::unique_ptr<KShapeGroup> const group(dynamic_cast<KEffectImageShape&>(effect).FShape());
    return TextOf(*group);
}

TEST(Connect, LinesAndSplinesInTheOrderOfPoints)
{
    auto const effect = FindEffectFactory("BF_Connect")->makeRowForm();
    EXPECT_EQ(PathOf(*effect), "M0.1,0.1 L0.2,0.1 L0.3,0.1 L0.4,0.1");
    Target<int>(*effect, "NumP"_id) = 11;
    EXPECT_TRUE(PathOf(*effect).ends_with("L0.9,0.1 L0.1,0.2 L0.2,0.2")) << "nine points to a row";

    Target<int>(*effect, "NumP"_id) = 3;
    Target<int>(*effect, "Type"_id) = 1;
    Target<int>(*effect, "Subd"_id) = 2;
    Target<KVector2>(*effect, "Pos0"_id) = {0.0F, 0.0F};
    Target<KVector2>(*effect, "Pos1"_id) = {1.0F, 1.0F};
    Target<KVector2>(*effect, "Pos2"_id) = {2.0F, 0.0F};
    // The first point is followed by the tangent (1, 2), so the one before it is (-1, -2); half way the
    // spline is 9 / 16 of the two points beside it less 1 / 16 of those beyond.
    EXPECT_EQ(PathOf(*effect), "M0,0 L0,0 L0.5,0.6875 L1,1 L1.5,0.6875 L2,0");
    Target<bool>(*effect, "Clos"_id) = true;
    EXPECT_EQ(PathOf(*effect), "M0,0 L0,0 L0.3125,0.5625 L1,1 L1.6875,0.5625 L2,0 L1,-0.125 Z");
    Target<int>(*effect, "NumP"_id) = 2;
    EXPECT_EQ(PathOf(*effect), "M0,0 L1,1 Z") << "two points have no spline";
}

TEST(Spiral, ZigZagsBeforeItSmooths)
{
    auto const effect = FindEffectFactory("BF_Spiral")->makeRowForm();
    Target<float>(*effect, "RSta"_id) = Target<float>(*effect, "REnd"_id) = 1.0F;
    Target<float>(*effect, "AEnd"_id) = -std::numbers::pi_v<float>;
    Target<float>(*effect, "ASte"_id) = 90.0F;
    Target<float>(*effect, "Smoo"_id) = 0.0F;
    Target<int>(*effect, "AETy"_id) = 0;
    Target<KVector2>(*effect, "Cent"_id) = {5.0F, 0.0F};
    EXPECT_EQ(PathOf(*effect), "M6,0 L5,1 L4,0");
    Target<bool>(*effect, "ShCl"_id) = true;
    EXPECT_EQ(PathOf(*effect), "M6,0 L5,1 L4,0 Z");
    Target<int>(*effect, "ZZTy"_id) = 2;
    EXPECT_EQ(PathOf(*effect), "M6,0 L5,1 L4,0 Z");
    Target<int>(*effect, "ZZTy"_id) = 1;
    Target<float>(*effect, "Smoo"_id) = 0.5F;
    std::string const bent = PathOf(*effect);
    EXPECT_EQ(std::count(bent.begin(), bent.end(), 'C'), 3 * 3 * 3) << "three steps on each of three sides";
}

TEST(Worm, GoesThroughItsArcsWithTheHeadingKept)
{
    auto const effect = FindEffectFactory("BF_Worm")->makeRowForm();
    float const pi = std::numbers::pi_v<float>;
    float const turns[] = {0.0F, pi, 0.0F}, lengths[] = {0.25F, 0.125F, 0.25F};
    for (std::uint32_t i = 0; i < 3; ++i) {
        Target<float>(*effect, "CAn0"_id + i) = turns[i];
        Target<float>(*effect, "CLe0"_id + i) = lengths[i];
    }
    Target<KVector2>(*effect, "Strt"_id) = {0.5F, 0.5F};
    Target<int>(*effect, "Subd"_id) = 1;
    // Half a turn in one piece is a chord at a quarter of a turn.
    EXPECT_EQ(PathOf(*effect), "M0.5,0.5 L0.75,0.5 L0.75,0.625 L0.5,0.625");
    Target<int>(*effect, "Rept"_id) = 2;
    Target<float>(*effect, "GLen"_id) = 2.0F;
    EXPECT_EQ(PathOf(*effect), "M0.5,0.5 L1,0.5 L1,0.75 L0.5,0.75 L0,0.75 L0,0.5 L0.5,0.5");
    Target<int>(*effect, "Subd"_id) = Target<int>(*effect, "Rept"_id) = 2147483647;
    std::unique_ptr<KShapeGroup> const group(dynamic_cast<KEffectImageShape&>(*effect).FShape());
    EXPECT_LE(dynamic_cast<KShape&>(*group->Get(0)->Each<KShape>().begin().operator*()).GetCount(), 1 << 16);
}

TEST(Connect, DrawsWhereItsShapeInputsSay)
{
    // A line over the columns 10 to 29 and four rows of a picture of 40 pixels.
    struct {
        float offset;
        int replicate;
        float from;
        bool isCentered;
        std::vector<int> rows; // lowest of each stroke
        int column;            // the first
    } const cases[] = {
        {0.0F, 1, 0.0F, false, {18}, 10},         {0.25F, 1, 0.0F, false, {8}, 10}, // to the right of travel
        {0.0F, 2, 0.0F, false, {10, 18, 26}, 10}, {0.0F, 3, 0.0F, false, {2, 10, 18, 26, 34}, 10},
        {0.0F, 1, 0.5F, false, {18}, 20},         {0.0F, 1, 0.0F, true, {28}, 10},
    };
    for (auto const& each : cases) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            auto const effect = FindEffectFactory("BF_Connect")->makeRowForm();
            Target<int>(*effect, "NumP"_id) = 2;
            Target<KVector2>(*effect, "Pos0"_id) = {0.25F, 0.5F};
            Target<KVector2>(*effect, "Pos1"_id) = {0.75F, 0.5F};
            Target<float>(*effect, "PnTh"_id) = 0.1F;
            Target<float>(*effect, "Offs"_id) = each.offset;
            Target<int>(*effect, "Repl"_id) = each.replicate;
            Target<float>(*effect, "ReOf"_id) = 0.2F;
            Target<KRange>(*effect, "WriS"_id) = {each.from, 1.0F};
            Target<bool>(*effect, "RepC"_id) = each.isCentered;
            Target<KVector2>(*effect, "Cent"_id) = {0.5F, 0.75F};
            Picture const source =
                MakePicture(depth, 40, 40, [](int, int) { return KColor(0.5F, 0.0F, 0.0F, 1.0F); });
            Picture const drawn = Apply(dynamic_cast<KEffectImage&>(*effect), *source);
            for (int y = 0; y < 40; ++y) {
                bool const isStroke = std::any_of(each.rows.begin(), each.rows.end(),
                                                  [&](int row) { return y >= row && y < row + 4; });
                for (int x = 0; x < 40; ++x) {
                    KColor const color = ColorAt(*drawn, x, y);
                    bool const isOn = isStroke && x >= each.column && x < 30;
                    ASSERT_NEAR(color.green, isOn ? 1.0 : 0.0, 1e-4) << x << ", " << y;
                    ASSERT_NEAR(color.red, isOn ? 1.0 : 0.5, 1e-4) << x << ", " << y;
                }
            }
        }
    }
}

} // namespace
} // namespace ombrelune::test
