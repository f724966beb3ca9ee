// Warps that bend, fold, cut or read maps.

#include <cmath>
#include <cstdlib>
#include <random>
#include <set>
#include <vector>

#include "tests/framework/Expect.h"

namespace ombrelune {
namespace {

using namespace test;

TEST(Radial, MovesAlongTheRaysByAConstant)
{
    ToolUnderTest tool("BF_Radial");
    ExpectIdentity(tool);
    tool.Set("RaOX"_id, 0.1F);
    ExpectAt(
        tool,
        {{{0.8F, 0.65F}, {0.74F, 0.57F}}, {{0.2F, 0.25F}, {0.3F, 0.25F}}, {{0.5F, 0.25F}, {0.5F, 0.25F}}});
}

TEST(LensDistortion, PinsCornersUnlessAScaleIsSet)
{
    ToolUnderTest tool("BF_LensDistortion");
    // Squared distances: 0.3125 to a corner, 0.25 to the middle of a side. The factor in the centre is
    // 1 - (0.5 + 0.15625) 0.3125 = 0.794921875, and 0.15625 more at the side.
    ExpectAt(tool, {{{1, 0.5F}, {1, 0.5F}},
                    {{0, 0}, {0, 0}},
                    {{0, 0.5F}, {0, 0.5F}},
                    {{1, 0.25F}, {0.9755859F, 0.25F}}});
    tool.Set("Type"_id, 1);
    ExpectAt(tool, {{{1, 0.5F}, {1, 0.5F}}, {{1, 0.25F}, {0.5F + 0.5F / 0.951171875F, 0.25F}}});
    tool.Set("Type"_id, 0).Set("PinC"_id, false).Set("Scal"_id, 2.0F);
    ExpectAt(tool, {{{1, 0.25F}, {0.828125F, 0.25F}}});
    tool.Set("PinC"_id, true).Set("Kap1"_id, 0.0F).Set("Kap2"_id, 0.0F);
    ExpectIdentity(tool);
}

TEST(Spherize, DeformsByType)
{
    // At 0.6 of the half size one step of the curve gives 1 - 0.8 = 0.2, a factor of 0.6.
    struct Case {
        int type;
        Pair inside;
        KVector2 outside;
    };
    Case const cases[] = {
        {0, {{0.8F, 0.35F}, {0.68F, 0.31F}}, {0.0F, 0.25F}},
        {1, {{0.7F, 0.4F}, {0.62F, 0.34F}}, {0.5F, 0.5F}},
        {2, {{0.68F, 0.49F}, {0.608F, 0.394F}}, {0.81F, 0.66F}},
        {3, {{0.8F, 0.55F}, {0.68F, 0.43F}}, {0.6F, 0.75F}},
    };
    for (Case const& each : cases) {
        SCOPED_TRACE(each.type);
        ToolUnderTest tool("BF_Spherize");
        tool.Set("BeTy"_id, each.type).Set("SpIt"_id, 1);
        if (each.type == 1) tool.Set("SpRa"_id, 0.5F); // 0.15 of 0.25
        ExpectAt(tool, {each.inside, {each.outside, each.outside}});
    }
    // Each axis by itself: 0.6 and 0 of the way out.
    ToolUnderTest tool("BF_Spherize");
    tool.Set("BeTy"_id, 3).Set("SpIt"_id, 1).Set("SpLo"_id, false).Set("SpDV"_id, 0.0F);
    ExpectAt(tool, {{{0.8F, 0.55F}, {0.68F, 0.55F}}});
    tool.Set("SpDH"_id, 0.0F);
    EXPECT_FALSE(tool.Init()) << "nothing to do";
    tool.Set("SpDV"_id, 0.5F).Set("SpLo"_id, true);
    EXPECT_FALSE(tool.Init()) << "locked to the horizontal";
}

TEST(Spherize, CurvesIterate)
{
    struct Case {
        int algorithm;
        double once, twice;
    };
    double const w2 = std::sin(0.3 * M_PI), w3 = 2 * std::asin(0.6) / M_PI;
    Case const cases[] = {{0, 0.2, 1 - std::sqrt(0.96)},
                          {1, 0.36, 0.216},
                          {2, w2, std::sin(w2 * M_PI / 2)},
                          {3, w3, 2 * std::asin(w3) / M_PI}};
    for (Case const& each : cases) {
        SCOPED_TRACE(each.algorithm);
        ToolUnderTest tool("BF_Spherize");
        tool.Set("BeTy"_id, 0).Set("BeAl"_id, each.algorithm).Set("SpDH"_id, 1.0F).Set("SpIt"_id, 1);
        ExpectAt(tool, {{{0.8F, 0.25F}, {static_cast<float>(0.5 + 0.3 * each.once), 0.25F}}});
        tool.Set("SpIt"_id, 2);
        ExpectAt(tool, {{{0.8F, 0.25F}, {static_cast<float>(0.5 + 0.3 * each.twice), 0.25F}}});
    }
}

TEST(Offset, MovesByTheMap)
{
    ToolUnderTest tool("BF_Offset");
    EXPECT_FALSE(tool.Init()) << "without a map";
    // Red 1 and lightness 0.5 on the left, all 0 on the right; a map of another size.
    Picture const map = MakePicture(
        kDepthFloat, 8, 4, [](int x, int) { return x < 4 ? KColor(1, 0, 0, 1) : KColor(0, 0, 0, 1); });
    tool.Set(2, map.get()).Set("cSoX"_id, 0);
    tool.Set("sOXB"_id, 0.1F).Set("sOXW"_id, 0.3F).Set("sOYB"_id, 0.05F).Set("sOYW"_id, 0.25F);
    // Sources of 0 are moved by what is called white, those of 1 by black, turned round.
    ExpectAt(tool, {{{0.8F, 0.4F}, {0.5F, 0.15F}}, {{0.3F, 0.4F}, {0.2F, 0.25F}}}, 2e-6);
    tool.Set("sGlo"_id, 0.5F).Set("cCoY"_id, 2);
    ExpectAt(tool, {{{0.8F, 0.4F}, {0.65F, 0.275F}}, {{0.3F, 0.4F}, {0.25F, 0.275F}}}, 2e-6);
    // The map's width stands for 1, so the place 0.5 is column 4 exactly, and its column 3.5 lies half way.
    ExpectAt(tool, {{{0.5F, 0.4F}, {0.35F, 0.275F}}, {{0.4375F, 0.4F}, {0.3375F, 0.275F}}}, 2e-6);
}

TEST(Bend, IsStraightOnALine)
{
    ToolUnderTest tool("BF_Bend");
    ExpectIdentity(tool, 2e-6);
    tool.Set("BeSt"_id, KVector2(0.2F, 0.1F))
        .Set("BeMi"_id, KVector2(0.3F, 0.1F))
        .Set("BeEn"_id, KVector2(0.6F, 0.1F));
    tool.Set("BeSV"_id, 0.5F);
    // A band 0.4 wide and 0.25 high about y 0.1.
    ExpectAt(tool,
             {{{0.2F, 0.1F}, {0.0F, 0.25F}}, {{0.4F, 0.1F}, {0.5F, 0.25F}}, {{0.6F, 0.225F}, {1.0F, 0.5F}}},
             2e-6);
    // At half the horizontal scale it is half as wide about the same middle.
    tool.Set("BeSH"_id, 0.5F);
    ExpectAt(tool, {{{0.5F, 0.1F}, {1.0F, 0.25F}}}, 2e-6);
    // Upwards: the picture's up is to the left.
    tool.Set("BeSH"_id, 1.0F)
        .Set("BeSt"_id, KVector2(0.5F, 0.1F))
        .Set("BeMi"_id, KVector2(0.5F, 0.2F))
        .Set("BeEn"_id, KVector2(0.5F, 0.5F));
    ExpectAt(tool, {{{0.375F, 0.5F}, {1.0F, 0.5F}}}, 2e-6);
    // Source points half as far apart take the middle of the picture.
    tool.Set("SoSt"_id, KVector2(0.25F, 0.25F)).Set("SoEn"_id, KVector2(0.75F, 0.25F));
    ExpectAt(tool, {{{0.375F, 0.5F}, {0.75F, 0.375F}}}, 2e-6);
}

TEST(Bend, LaysThePictureOnARing)
{
    // An arch about (0.5, 0.2) of radius 0.2, and its band from 0.1 to 0.3.
    ToolUnderTest arch("BF_Bend");
    arch.Set("BeSt"_id, KVector2(0.3F, 0.2F))
        .Set("BeMi"_id, KVector2(0.5F, 0.4F))
        .Set("BeEn"_id, KVector2(0.7F, 0.2F));
    arch.Set("BeSV"_id, 0.4F);
    ToolUnderTest ring("BF_Bend");
    ring.Set("BeTy"_id, 1).Set("BeSt"_id, KVector2(0.5F, 0.2F)).Set("BeRa"_id, 0.2F).Set("BeSV"_id, 0.4F);
    // The left end lies on the cut of the angles; just above it all is clear.
    float const low = 1e-5F;
    for (ToolUnderTest* each : {&arch, &ring})
        ExpectAt(
            *each,
            {{{0.5F, 0.4F}, {0.5F, 0.25F}}, {{0.2F, 0.2F + low}, {0.0F, 0.5F}}, {{0.6F, 0.2F}, {1.0F, 0.0F}}},
            1e-4);
    // Half the span about the same middle: the ends are at 45 degrees from it.
    arch.Set("BeSH"_id, 0.5F);
    float const s = 0.2F * std::sqrt(0.5F);
    ExpectAt(arch, {{{0.5F - s, 0.2F + s}, {0.0F, 0.25F}}, {{0.5F + s, 0.2F + s}, {1.0F, 0.25F}}}, 1e-5);

    // A bowl: the way turns left, and the picture's top is inside.
    arch.Set("BeSH"_id, 1.0F)
        .Set("BeSt"_id, KVector2(0.3F, 0.4F))
        .Set("BeMi"_id, KVector2(0.5F, 0.2F))
        .Set("BeEn"_id, KVector2(0.7F, 0.4F));
    ring.Set("BeSt"_id, KVector2(0.5F, 0.4F)).Set("BeAS"_id, Degrees(-180));
    for (ToolUnderTest* each : {&arch, &ring})
        ExpectAt(
            *each,
            {{{0.5F, 0.1F}, {0.5F, 0.0F}}, {{0.5F, 0.3F}, {0.5F, 0.5F}}, {{0.7F, 0.4F - low}, {1.0F, 0.25F}}},
            1e-4);
    // Turns beyond a whole one count as they are told: 720 to 540 degrees is the lower half once more.
    ring.Set("BeAS"_id, Degrees(540)).Set("BeAE"_id, Degrees(720));
    ExpectAt(ring, {{{0.5F, 0.1F}, {0.5F, 0.0F}}}, 1e-5);
}

/// The triangle (0, 0), (r, 0), (r / 2, h) that a kaleidoscope around 0 shows.
bool IsInTriangle(KVector2 const& p, float r)
{
    float const slope = std::sqrt(3.0F), near = 1e-5F;
    return p.y > -near && p.y < slope * p.x + near && p.y < slope * (r - p.x) + near;
}

TEST(Kaleidoscope, ClassicRepeatsOneTriangleAndNeverTearsIt)
{
    float const r = 0.25F;
    ToolUnderTest tool("BF_Kaleidoscope");
    tool.Set("SoCe"_id, KVector2(0, 0)).Set("Cent"_id, KVector2(0, 0));
    tool.Init();
    std::mt19937 random(7);
    std::uniform_real_distribution<float> place(-2.0F, 2.0F), step(-0.01F, 0.01F);
    for (int i = 0; i < 20000; ++i) {
        KVector2 const a(place(random), place(random)), b = a + KVector2(step(random), step(random));
        KVector2 sourceA, sourceB, again;
        tool.Warp().F(sourceA, a);
        tool.Warp().F(sourceB, b);
        tool.Warp().F(again, sourceA);
        ASSERT_TRUE(IsInTriangle(sourceA, r)) << a.x << ", " << a.y;
        ASSERT_LE(sourceA.Distance(sourceB), a.Distance(b) + 1e-5F) << a.x << ", " << a.y;
        ASSERT_NEAR(again.Distance(sourceA), 0.0F, 1e-5F) << "the triangle shows itself";
    }
    // Six triangles around a corner: a mirror image, then a turn of 120 degrees.
    float const c = -0.5F, k = std::sqrt(0.75F);
    ExpectAt(tool,
             {{{0.1F, -0.05F}, {0.1F, 0.05F}}, {{0.1F * c - 0.05F * k, 0.1F * k + 0.05F * c}, {0.1F, 0.05F}}},
             1e-5);
}

TEST(Kaleidoscope, PlacesScaleAndTurnOnBothSides)
{
    // Without a radius nothing is folded: what is left are the two placements.
    ToolUnderTest tool("BF_Kaleidoscope");
    tool.Set("Leng"_id, 0.0F).Set("Cent"_id, KVector2(0.5F, 0.2F)).Set("SoCe"_id, KVector2(0.3F, 0.1F));
    tool.Set("Size"_id, 2.0F).Set("SoSi"_id, 0.5F);
    ExpectAt(tool, {{{0.6F, 0.4F}, {0.4F, 0.3F}}});
    tool.Set("Angl"_id, Degrees(90)); // the source is turned back: (0.1, 0.2) to (0.2, -0.1)
    ExpectAt(tool, {{{0.6F, 0.4F}, {0.5F, 0.0F}}});
    tool.Set("SoAn"_id, Degrees(90));
    ExpectAt(tool, {{{0.6F, 0.4F}, {0.2F, -0.1F}}});
}

TEST(Kaleidoscope, FancyFoldsAnglesAndLengths)
{
    ToolUnderTest tool("BF_Kaleidoscope");
    tool.Set("Type"_id, 1)
        .Set("Cent"_id, KVector2(0, 0))
        .Set("SoCe"_id, KVector2(0, 0))
        .Set("AngE"_id, Degrees(90));
    auto const polar = [](double degrees, double l) {
        double const a = degrees * M_PI / 180;
        return KVector2(static_cast<float>(l * std::cos(a)), static_cast<float>(l * std::sin(a)));
    };
    ExpectAt(tool,
             {{polar(30, 0.2), polar(30, 0.2)},
              {polar(120, 0.3), polar(60, 0.2)},
              {polar(-30, 0.55), polar(30, 0.05)}},
             2e-6);
    tool.Set("AnPP"_id, false).Set("RaPP"_id, false);
    ExpectAt(tool, {{polar(120, 0.3), polar(30, 0.05)}, {polar(-30, 0.55), polar(60, 0.05)}}, 2e-6);
    tool.Set("AngE"_id, 0.0F).Set("Leng"_id, 0.0F);
    ExpectAt(tool, {{polar(120, 0.3), polar(0, 0.3)}}, 2e-6);
}

/// Source tile of each tile by the place of its centre; -1 without one.
std::vector<int> Tiles(ToolUnderTest& tool, int columns, int rows)
{
    std::vector<int> tiles;
    for (int i = 0; i < columns * rows; ++i) {
        int const column = i % columns, row = i / columns;
        float const x = (static_cast<float>(column) + 0.5F) / static_cast<float>(columns);
        float const y = (static_cast<float>(row) + 0.5F) / static_cast<float>(rows) / 2.0F;
        auto const source = tool.At({x, y});
        tiles.push_back(source ? static_cast<int>(source->x * static_cast<float>(columns)) +
                                     columns * static_cast<int>(source->y * 2.0F * static_cast<float>(rows))
                               : -1);
    }
    return tiles;
}

/// The stream after seeding, from the C library itself.
void SeedAsShuffle(unsigned seed)
{
    srandom(seed + 1234);
    for (unsigned i = 0; i < (seed + 1234) % 97; ++i) random();
}

TEST(Shuffle, SlidesAHole)
{
    for (unsigned seed : {0U, 1U, 77U}) {
        ToolUnderTest tool("BF_Shuffle");
        tool.Set("SEED"_id, static_cast<int>(seed)).Set("SuHo"_id, 4).Set("SuVe"_id, 3).Set("Amnt"_id, 0.0F);
        SeedAsShuffle(seed);
        int hole = static_cast<int>(random() % 12);
        std::vector<int> const start = Tiles(tool, 4, 3);
        for (int i = 0; i < 12; ++i) EXPECT_EQ(start[static_cast<std::size_t>(i)], i == hole ? -1 : i);

        std::vector<int> before = start, twoBack;
        for (int moves = 1; moves <= 60; ++moves) {
            // A part of a move is one.
            std::vector<int> const after = Tiles(tool.Set("Amnt"_id, static_cast<float>(moves) - 0.5F), 4, 3);
            EXPECT_EQ(std::set<int>(after.begin(), after.end()).size(), 12U) << "no tile is there twice";
            std::vector<int> moved;
            for (int i = 0; i < 12; ++i)
                if (after[static_cast<std::size_t>(i)] != before[static_cast<std::size_t>(i)])
                    moved.push_back(i);
            ASSERT_EQ(moved.size(), 2U) << "the hole and a neighbour, also round the border";
            int const dx = std::abs(moved[0] % 4 - moved[1] % 4), dy = std::abs(moved[0] / 4 - moved[1] / 4);
            EXPECT_TRUE((dy == 0 && (dx == 1 || dx == 3)) || (dx == 0 && dy >= 1));
            EXPECT_NE(after, twoBack) << "no move is undone by the next";
            twoBack = before;
            before = after;
        }
    }
}

TEST(Shuffle, SwapsRandomTiles)
{
    ToolUnderTest tool("BF_Shuffle");
    tool.Set("Type"_id, 1).Set("SEED"_id, 5).Set("SuHo"_id, 4).Set("SuVe"_id, 3).Set("Amnt"_id, 9.0F);
    SeedAsShuffle(5);
    std::vector<int> expected;
    for (int i = 0; i < 12; ++i) expected.push_back(i);
    for (int i = 0; i < 9; ++i) {
        auto const a = static_cast<std::size_t>(random() % 12), b = static_cast<std::size_t>(random() % 12);
        std::swap(expected[a], expected[b]);
    }
    EXPECT_EQ(Tiles(tool, 4, 3), expected);
    tool.Set("Amnt"_id, 0.0F);
    ExpectIdentity(tool);
}

TEST(Shuffle, TheLastColumnAndRowBelongToTheLastTiles)
{
    ToolUnderTest tool("BF_Shuffle");
    tool.Set("Type"_id, 1).Set("Amnt"_id, 40.0F);
    for (float other : {0.05F, 0.31F, 0.49F}) {
        auto const side = tool.At({1.0F, other}), nearSide = tool.At({0.9999F, other});
        ASSERT_TRUE(side && nearSide);
        EXPECT_NEAR(side->x, nearSide->x + 0.0001F, 1e-6F);
        auto const top = tool.At({other, 0.5F}), nearTop = tool.At({other, 0.4999F});
        ASSERT_TRUE(top && nearTop);
        EXPECT_NEAR(top->y, nearTop->y + 0.0001F, 1e-6F);
    }
    EXPECT_TRUE(tool.At({1.3F, 0.7F})) << "maps ask beyond the picture";
}

TEST(Remap, KnowsItsDirections)
{
    ToolUnderTest tool("BF_Remap");
    tool.Set("Outp"_id, 0);
    ExpectIdentity(tool);
    // Probe from longitudes. The middle of the ball looks along z, which is the middle of the picture.
    tool.Set("Inpu"_id, 1);
    EXPECT_FALSE(tool.At({0.9F, 0.45F})) << "beside the ball";
    // Half way out to the right, sin 30 degrees, lies 60 degrees off the axis: longitude 60 of 180.
    ExpectAt(tool, {{{0.5F, 0.25F}, {0.5F, 0.25F}},
                    {{0.75F, 0.25F}, {0.5F + 1.0F / 6.0F, 0.25F}},
                    {{0.5F, 0.375F}, {0.5F, 0.25F + 1.0F / 6.0F}}});
    // A quarter turn about y, towards x for negative degrees.
    tool.Set("AngY"_id, Degrees(-90));
    ExpectAt(tool, {{{0.5F, 0.25F}, {0.75F, 0.25F}}});
    // About z after y: from x on to y, straight up.
    tool.Set("AngZ"_id, Degrees(-90)).Set("RotO"_id, 2);
    EXPECT_NEAR(tool.At({0.5F, 0.25F})->y, 0.5F, 1e-3F);
}

TEST(Remap, GoesThereAndBack)
{
    ToolUnderTest toSpherical("BF_Remap"), toProbe("BF_Remap");
    toProbe.Set("Inpu"_id, 1).Set("Outp"_id, 0);
    for (float x : {0.02F, 0.2F, 0.5F, 0.61F, 0.97F}) {
        for (float y : {0.03F, 0.25F, 0.4F, 0.46F}) {
            auto const onBall = toSpherical.At({x, y});
            ASSERT_TRUE(onBall);
            ExpectAt(toProbe, {{*onBall, {x, y}}}, 2e-4);
        }
    }
}

} // namespace
} // namespace ombrelune
