#include <numbers>

#include <gtest/gtest.h>

#include "shapes/KStyle.h"
#include "tests/shapes/shape_helpers.h"

namespace ombrelune::test {
namespace {

KShapeEffectOutlineData Pen(float thickness, int joinType, int endType = 0)
{
    KShapeEffectOutlineData data;
    data.pen.thickness = thickness;
    data.pen.joinType = joinType;
    data.pen.endType = endType;
    return data;
}

KShapeEffectDashDotData Dashes(int lineType, float dash, float space)
{
    KShapeEffectDashDotData data;
    data.lineType = lineType;
    data.dashLengths[0] = dash;
    data.spaceLengths[0] = space;
    return data;
}

// Pens.

TEST(Outline, BiasMovesAStrokeToTheRight)
{
    Shape const line = Path("M0,0 L1,0");
    KShapeEffectOutlineData data = Pen(0.2F, kJoinMiter);
    EXPECT_EQ(TextOf(line->OutlineOf(data)), "M0,-0.1 L1,-0.1 L1,0.1 L0,0.1 Z");
    data.pen.bias = 1.0F;
    EXPECT_EQ(data.pen.ThicknessInner(), 0.0);
    EXPECT_EQ(TextOf(line->OutlineOf(data)), "M0,-0.2 L1,-0.2 L1,0 L0,0 Z");
    data.pen.bias = -0.5F;
    EXPECT_EQ(TextOf(line->OutlineOf(data)), "M0,-0.05 L1,-0.05 L1,0.15 L0,0.15 Z");

    Shape const outline(line->OutlineOf(data));
    for (KShapePoint const* p = outline->GetFirstPoint(); p; p = p->next) EXPECT_EQ(p->winding, 2);
    data.pen.winding = 0;
    EXPECT_EQ(Shape(line->OutlineOf(data))->GetFirstPoint()->winding, 0);
}

TEST(Outline, JoinsLieOnTheOuterSideOfATurn)
{
    struct {
        char const* path;
        int join;
        float miterLimit;
        char const* outline;
    } const cases[] = {
        {kCorner, kJoinMiter, 4.0F, "M0,-0.1 L1,-0.1 L1.1,-0.1 L1.1,0 L1.1,1 L0.9,1 L0.9,0 L1,0.1 L0,0.1 Z"},
        // The tip is the root of 2 times 0.1 away, the limit is in thicknesses of 0.2.
        {kCorner, kJoinMiter, 0.71F, "M0,-0.1 L1,-0.1 L1.1,-0.1 L1.1,0 L1.1,1 L0.9,1 L0.9,0 L1,0.1 L0,0.1 Z"},
        {kCorner, kJoinMiter, 0.70F, "M0,-0.1 L1,-0.1 L1.1,0 L1.1,1 L0.9,1 L0.9,0 L1,0.1 L0,0.1 Z"},
        {kCorner, kJoinBevel, 4.0F, "M0,-0.1 L1,-0.1 L1.1,0 L1.1,1 L0.9,1 L0.9,0 L1,0.1 L0,0.1 Z"},
        // 4 parts of 22.5 degrees each.
        {kCorner, kJoinRound, 4.0F,
         "M0,-0.1 L1,-0.1 L1.0383,-0.0924 L1.0707,-0.0707 L1.0924,-0.0383 L1.1,0 L1.1,1 L0.9,1 L0.9,0 L1,0.1 "
         "L0,0.1 Z"},
        {"M0,0 L1,0 L1,-1", kJoinMiter, 4.0F,
         "M0,-0.1 L1,-0.1 L0.9,0 L0.9,-1 L1.1,-1 L1.1,0 L1.1,0.1 L1,0.1 L0,0.1 Z"},
        // Right back: half a circle, no mitre.
        {"M0,0 L1,0 L0.5,0", kJoinMiter, 4.0F,
         "M0,-0.1 L1,-0.1 L1,0.1 L0.5,0.1 L0.5,-0.1 L1,-0.1 L1,0.1 L0,0.1 Z"},
    };
    for (auto const& c : cases) {
        KShapeEffectOutlineData data = Pen(0.2F, c.join);
        data.pen.miterLimit = c.miterLimit;
        EXPECT_EQ(TextOf(Path(c.path)->OutlineOf(data)), c.outline);
    }
    Shape const back(Path("M0,0 L1,0 L0.5,0")->OutlineOf(Pen(0.2F, kJoinRound)));
    EXPECT_EQ(back->GetCount(), 8 + 7);
}

TEST(Outline, AWayStraightBackIsTheSameInAllDirections)
{
    // All on the right of the path: 8 parts of half a circle of radius 0.2, and two sides that cancel where
    // they go back over each other.
    KShapeEffectOutlineData data = Pen(0.2F, kJoinRound);
    data.pen.bias = 1.0F;
    for (char const* path :
         {"M0,0 L1,0 L0.5,0", "M0,0 L0,1 L0,0.5", "M0,0 L-1,0 L-0.5,0", "M0,0 L0,-1 L0,-0.5"}) {
        Shape const outline(Path(path)->OutlineOf(data));
        EXPECT_EQ(outline->GetCount(), 8 + 7) << path;
        double farthest = 0.0; // of the join, 0.2 beyond the end
        for (KVector2 const& p : PointsOf(*outline))
            farthest = std::max({farthest, std::abs(double{p.x}), std::abs(double{p.y})});
        EXPECT_NEAR(farthest, 1.2, 1e-6) << path;
    }
}

TEST(Outline, AClosedPathBecomesTwoRings)
{
    Shape const outline(Path(kSquare)->OutlineOf(Pen(0.2F, kJoinMiter, 1)));
    EXPECT_TRUE(outline->IsClosed(false));
    EXPECT_EQ(TextOf(*outline), "M0,-0.1 L1,-0.1 L1.1,-0.1 L1.1,0 L1.1,1 L1.1,1.1 L1,1.1 L0,1.1 L-0.1,1.1 "
                                "L-0.1,1 L-0.1,0 L-0.1,-0.1 Z "
                                "M0.1,0 L0.1,1 L0,0.9 L1,0.9 L0.9,1 L0.9,0 L1,0.1 L0,0.1 Z");
    EXPECT_NEAR(AreasOf(*outline)[0], 1.44, 1e-6);
}

TEST(Outline, CapsFromSquareToRound)
{
    Shape const line = Path("M0,0 L1,0");
    KShapeEffectOutlineData data = Pen(0.2F, kJoinMiter, 1);
    data.pen.joinPrecision = 4;
    struct {
        float roundness;
        char const* outline;
    } const cases[] = {
        {0.0F, "M0,-0.1 L1,-0.1 L1.1,-0.1 L1.1,0.1 L1,0.1 L0,0.1 L-0.1,0.1 L-0.1,-0.1 Z"},
        {1.0F, "M0,-0.1 L1,-0.1 L1.0707,-0.0707 L1.1,0 L1.0707,0.0707 L1,0.1 L0,0.1 L-0.0707,0.0707 L-0.1,0 "
               "L-0.0707,-0.0707 Z"},
        {0.5F,
         "M0,-0.1 L1,-0.1 L1.05,-0.1 L1.0854,-0.0854 L1.1,-0.05 L1.1,0.05 L1.0854,0.0854 L1.05,0.1 L1,0.1 "
         "L0,0.1 L-0.05,0.1 L-0.0854,0.0854 L-0.1,0.05 L-0.1,-0.05 L-0.0854,-0.0854 L-0.05,-0.1 Z"},
    };
    for (auto const& c : cases) {
        data.pen.endRoundness = c.roundness;
        EXPECT_EQ(TextOf(line->OutlineOf(data)), c.outline) << c.roundness;
    }
}

TEST(Outline, StraightStaysStraight)
{
    // Corners that rounding has bent by up to 1e-4: crossings of nearly parallel lines would be anywhere.
    KShape line;
    for (int i = 0; i <= 2000; ++i) {
        float const t = static_cast<float>(i) / 2000.0F;
        line.To({0.3F + 0.4F * t, 0.2F + 0.1F * t}, i == 0, false);
    }
    KVector2 const along = KVector2(0.4F, 0.1F).Normalize();
    for (int join : {kJoinMiter, kJoinBevel, kJoinRound}) {
        Shape const outline(line.OutlineOf(Pen(0.02F, join)));
        for (KVector2 const& p : PointsOf(*outline)) {
            KVector2 const d = p - KVector2(0.3F, 0.2F);
            EXPECT_NEAR(std::abs(along ^ d), 0.01, 1e-5);
            EXPECT_GT(along * d, -1e-5);
            EXPECT_LT(along * d, KVector2(0.4F, 0.1F).Length() + 1e-5);
        }
    }
    Shape const three(Path("M0,0 L1,0.5 L2,1 L4,2")->OutlineOf(Pen(0.2F, kJoinMiter)));
    EXPECT_EQ(three->GetCount(), 12) << "no join where there is no turn";
}

TEST(Outline, NothingFromNothing)
{
    EXPECT_EQ(TextOf(Path("M0,0")->OutlineOf(Pen(0.2F, 0))), "");
    EXPECT_EQ(TextOf(Path(kSquare)->OutlineOf(Pen(0.0F, 0))), "");
    EXPECT_EQ(TextOf(Path(kSquare)->OutlineOf(Pen(-1.0F, 0))), "");
    EXPECT_EQ(KShapeArray(1).OutlineOf(KPenStyle()), nullptr);
}

// Dashes. A pen of 1/8 and whole lengths, so that every sum is exact.

TEST(Dashes, TheWalkKeepsItsStateRoundCorners)
{
    struct {
        char const* path;
        float dash, space;
        char const* dashes;
    } const cases[] = {
        // The second dash ends at the corner.
        {kCorner, 3, 2, "M0,0 L0.375,0 M0.625,0 L1,0 M1,0.25 L1,0.625 M1,0.875 L1,1"},
        // It goes round it.
        {kCorner, 4, 2, "M0,0 L0.5,0 M0.75,0 L1,0 L1,0.25 M1,0.5 L1,1"},
        // The closing side belongs to the walk, and the result is open.
        {kSquare, 12, 8, "M0,0 L1,0 L1,0.5 M0.5,1 L0,1 L0,0"},
        // Every subpath starts anew.
        {"M0,0 L1,0 M0,2 L1,2", 6, 2, "M0,0 L0.75,0 M0,2 L0.75,2"},
        // Lengths have a minimum of 0.01.
        {"M0,0 L0.5,0", 100, 0, "M0,0 L0.5,0"},
    };
    for (auto const& c : cases)
        EXPECT_EQ(TextOf(Path(c.path)->DashDotOf(Dashes(1, c.dash, c.space), 0.125F)), c.dashes);
}

TEST(Dashes, LineTypes)
{
    Shape const line = Path("M0,0 L2,0");
    KShapeEffectDashDotData data = Dashes(3, 2, 2);
    data.dashCount = 2;
    data.dashLengths[1] = 4;
    data.spaceLengths[1] = 1;
    EXPECT_EQ(TextOf(line->DashDotOf(data, 0.125F)),
              "M0,0 L0.25,0 M0.5,0 L1,0 M1.125,0 L1.375,0 M1.625,0 L2,0");
    data.dashScale = 2.0F;
    EXPECT_EQ(TextOf(line->DashDotOf(data, 0.125F)), "M0,0 L0.5,0 M1,0 L2,0");

    Shape const dots(line->DashDotOf(Dashes(2, 7, 2), 0.125F));
    EXPECT_EQ(ArraysOf(*dots)->Count(), 8) << "one every 0.25125";
    EXPECT_NEAR(First(*ArraysOf(*dots))->Length(), 0.00125, 1e-8);
    EXPECT_EQ(TextOf(line->DashDotOf(Dashes(0, 1, 1), 0.125F)), "M0,0 L2,0");
}

TEST(Dashes, PatternsWithoutLengthLeaveTheLineSolid)
{
    Shape const line = Path("M0,0 L2,0");
    KShapeEffectDashDotData data = Dashes(1, 3, 2);
    for (float scale : {0.0F, -1.0F, 1e-30F, std::nanf("")}) {
        data.dashScale = scale;
        EXPECT_EQ(TextOf(line->DashDotOf(data, 0.125F)), "M0,0 L2,0") << scale;
    }
    EXPECT_EQ(TextOf(line->DashDotOf(Dashes(1, 3, 2), 1e9F)), "M0,0 L2,0") << "the first dash is longer";
}

TEST(Dashes, EachIsStrokedWithItsOwnCaps)
{
    KShapeEffectOutlineData data = Pen(0.125F, kJoinMiter);
    data.pen.dash = Dashes(1, 4, 2);
    EXPECT_EQ(
        TextOf(Path("M0,0 L1,0")->OutlineOf(data)),
        "M0,-0.0625 L0.5,-0.0625 L0.5,0.0625 L0,0.0625 Z M0.75,-0.0625 L1,-0.0625 L1,0.0625 L0.75,0.0625 Z");
    // Dashes too short for single floats do not end the list of subpaths.
    KShapeEffectOutlineData fine = Pen(1e-5F, kJoinMiter);
    fine.pen.dash = Dashes(2, 1, 10000);
    Shape const dots(Path("M0.9,0.9 L1.9,0.9 M5,5 L5,6")->OutlineOf(fine));
    EXPECT_GT(ArraysOf(*dots)->Count(), 0);
    KVector2 min, max;
    dots->Boundary(min, max);
    EXPECT_GT(max.x, 4.0F) << "the second subpath is there";
}

// Offsets.

KShapeEffectOffsetData Offset(float d, int join) { return {d, join, 8, 16}; }

TEST(Offset, OpenPathsMoveToTheRight)
{
    struct {
        float d;
        int join;
        char const* result;
    } const cases[] = {
        {0.1F, kJoinMiter, "M0,-0.1 L1.1,-0.1 L1.1,1"},
        {-0.1F, kJoinMiter, "M0,0.1 L0.9,0.1 L0.9,1"},
        {0.1F, kJoinBevel, "M0,-0.1 L1,-0.1 L1.1,0 L1.1,1"},
        {-0.1F, kJoinBevel, "M0,0.1 L0.9,0.1 L0.9,1"},
        {0.1F, kJoinRound, "M0,-0.1 L1,-0.1 L1.0383,-0.0924 L1.0707,-0.0707 L1.0924,-0.0383 L1.1,0 L1.1,1"},
    };
    for (auto const& c : cases) EXPECT_EQ(TextOf(Path(kCorner)->OffsetOf(Offset(c.d, c.join))), c.result);
    EXPECT_EQ(TextOf(Path("M0,0 L1,0 L1,-1")->OffsetOf(Offset(-0.1F, kJoinBevel))),
              "M0,0.1 L1,0.1 L1.1,0 L1.1,-1");
    EXPECT_EQ(TextOf(Path("M3,3")->OffsetOf(Offset(1.0F, kJoinBevel))), "") << "a single point is no subpath";
}

TEST(Offset, ARightAngleIsFourPartsHoweverItIsTurned)
{
    for (int i = 0; i < 100; ++i) {
        Shape const corner = Path(kCorner);
        corner->Transform(KMatrix4().RotZ(static_cast<float>(i) * 0.0631F));
        EXPECT_EQ(Shape(corner->OffsetOf(Offset(0.1F, kJoinRound)))->GetCount(), 7) << i;
    }
}

TEST(Offset, ClosedPathsGrowAndCollidingOnesMerge)
{
    Shape const square = Path(kSquare);
    EXPECT_NEAR(AreaOf(square->OffsetOf(Offset(0.1F, kJoinMiter))), 1.44, 1e-5);
    EXPECT_NEAR(AreaOf(square->OffsetOf(Offset(-0.1F, kJoinMiter))), 0.64, 1e-5);
    EXPECT_NEAR(AreaOf(square->OffsetOf(Offset(0.1F, kJoinRound))), 1.4 + std::numbers::pi * 0.01, 1e-4);
    EXPECT_EQ(TextOf(square->OffsetOf(Offset(-0.6F, kJoinMiter))), "") << "nothing is left";
    Shape const two(
        Path("M0,0 L1,0 L1,1 L0,1 Z M1.1,0 L2.1,0 L2.1,1 L1.1,1 Z")->OffsetOf(Offset(0.1F, kJoinMiter)));
    EXPECT_EQ(AreasOf(*two).size(), 1U);
    EXPECT_NEAR(AreaOf(*two), 1.2 * 2.3, 1e-5);
    EXPECT_TRUE(two->IsClosed(false));
}

TEST(Offset, OneOpenSubpathSendsAllOfThemAlone)
{
    EXPECT_EQ(TextOf(Path("M0,0 L1,0 L1,1 L0,1 Z M5,5 L6,5")->OffsetOf(Offset(0.1F, kJoinMiter))),
              "M-0.1,-0.1 L1.1,-0.1 L1.1,1.1 L-0.1,1.1 Z M5,4.9 L6,4.9");
}

TEST(Offset, NoneIsACopyAndTooMuchIsNothing)
{
    EXPECT_EQ(TextOf(Path("M0,0 C0,1 1,1 1,0")->OffsetOf(Offset(0.0F, kJoinMiter))), "M0,0 C0,1 C1,1 C1,0");
    for (float d : {1e9F, -1e9F, std::nanf(""), HUGE_VALF})
        EXPECT_EQ(TextOf(Path(kSquare)->OffsetOf(Offset(d, kJoinRound))), "") << d;
}

TEST(Offset, SimpleMovesThePointsOfAnArray)
{
    auto const arrays = ArraysOf(*Path(kSquare));
    First(*arrays)->OffsetSimple(-0.25F);
    EXPECT_EQ(TextOf(First(*arrays)->ShapeOf()), "M0.25,0.25 L0.75,0.25 L0.75,0.75 L0.25,0.75 Z");
}

TEST(Replicate, CopiesOnTheChosenSides)
{
    KShapeEffectReplicateData data;
    data.number = 2;
    data.offset = 0.1F;
    struct {
        bool keep;
        int sides;
        std::vector<double> areas;
    } const cases[] = {
        {true, 0, {1, 0.64, 1.44, 0.36, 1.96}},
        {false, 1, {0.64, 0.36}},
        {false, 2, {1.44, 1.96}},
    };
    for (auto const& c : cases) {
        data.keepOriginal = c.keep;
        data.sides = c.sides;
        std::vector<double> const areas = AreasOf(*Shape(Path(kSquare)->ReplicateOf(data)));
        ASSERT_EQ(areas.size(), c.areas.size());
        for (std::size_t i = 0; i < areas.size(); ++i) EXPECT_NEAR(areas[i], c.areas[i], 1e-5);
    }
}

} // namespace
} // namespace ombrelune::test
