#include <gtest/gtest.h>

#include "tests/shapes/shape_helpers.h"

namespace ombrelune::test {
namespace {

TEST(Resample, EvenDistancesAlongThePath)
{
    struct {
        char const* path;
        float offset, distance;
        bool ends, originals;
        char const* result;
    } const cases[] = {
        {kCorner, 0, 0.5F, false, false, "M0,0 L0.5,0 L1,0 L1,0.5"},
        {kCorner, 0.25F, 0.75F, false, false, "M0.25,0 L1,0 L1,0.75"},
        {kCorner, 0, 0.75F, true, false, "M0,0 L0.75,0 L1,0.5 L1,1"},
        {kCorner, 0, 0.75F, false, true, "M0,0 L0.75,0 L1,0 L1,0.5 L1,1"},
        {kCorner, 3, 0.75F, false, false, ""},
        {kSquare, 0, 1.5F, true, false, "M0,0 L1,0.5 L0,1 Z"},
        {"M0,0 C0,1 1,1 1,0", 0, 1, false, false, "M0,0 L0,1 L1,1"}, // control points count as corners
    };
    for (auto const& c : cases) {
        KShapeEffectResampleData data;
        data.offset = c.offset;
        data.distance = c.distance;
        data.keepEndPoints = c.ends;
        data.keepOriginalPoints = c.originals;
        EXPECT_EQ(TextOf(Path(c.path)->ResampleOf(data)), c.result);
    }
}

TEST(Resample, DistancesOfNothingHaveABound)
{
    KShapeEffectResampleData data;
    for (float distance : {0.0F, -1.0F, std::nanf("")}) {
        data.distance = distance;
        EXPECT_NEAR(Shape(Path("M0,0 L1,0")->ResampleOf(data))->GetCount(), 10000, 1);
    }
    data.offset = -1e9F;
    EXPECT_LE(Shape(Path("M0,0 L1e9,0")->ResampleOf(data))->GetCount(), (1 << 16) + 1);
}

TEST(Smooth, ControlsFollowTheNeighbours)
{
    EXPECT_EQ(TextOf(Path("M0,0 L3,0 L3,3")->SmoothOf(0.0F, 1.0F)), "M0,0 C1,0 C2,0 C3,0 C3,1 C3,2 C3,3");
    // k = 1/4: the first control is p0 + (p1 - before) / 4, and before the open start lies its mirror image.
    EXPECT_EQ(TextOf(Path("M0,0 L4,0 L4,4")->SmoothOf(1.0F, 1.0F)), "M0,0 C2,0 C3,-1 C4,0 C5,1 C4,2 C4,4");
    EXPECT_EQ(TextOf(Path("M0,0 L4,0 L4,4 Z")->SmoothOf(1.0F, 1.0F)),
              "M0,0 C0,-1 C3,-1 C4,0 C5,1 C5,4 C4,4 C3,4 C0,1 C0,0 Z");
    EXPECT_EQ(TextOf(Path("M0,0 L4,0")->SmoothOf(1.0F, 1.0F)), "M0,0 L4,0") << "two points have no corner";
}

TEST(ZigZag, PointsLieOnBothSidesInTurn)
{
    EXPECT_EQ(TextOf(Path("M0,0 L1,0")->ZigZagOf(kZigZagSegments, 0.1F, 2, 0)), "M0,0.1 L0.5,-0.1 L1,0.1");
    // At the corners of a square the lean is the diagonal, 0.1 long, in and out in turn.
    EXPECT_EQ(TextOf(Path(kSquare)->ZigZagOf(kZigZagSegments, 0.1F, 1, 0)),
              "M0.0707,0.0707 L1.0707,-0.0707 L0.9293,0.9293 L-0.0707,1.0707 Z");
    for (ShapeZigZagType type : {kZigZagNone, kZigZagDistance})
        EXPECT_EQ(TextOf(Path(kSquare)->ZigZagOf(type, 0.1F, 1, 0.1F)), kSquare);
}

TEST(Kill, KeepsSidesByDirectionAndLength)
{
    KShapeEffectKillData all;
    all.byAngle = false;
    EXPECT_EQ(TextOf(Path(kSquare)->KillOf(all)), kSquare) << "still closed";
    EXPECT_EQ(TextOf(Path(kCorner)->KillOf(all)), kCorner);

    struct {
        float minimum, maximum, offset;
        char const* result;
    } const angles[] = {
        {0.0F, 1.6F, 0.0F, "M0,0 L1,0 L1,1"},
        {-0.1F, 0.1F, 0.0F, "M0,0 L1,0"},          // round 0
        {4.6F, 6.4F, 0.0F, "M0,0 L1,0 M0,1 L0,0"}, // the last side ends where the first one starts
        {0.0F, 0.2F, 3.1F, "M1,1 L0,1"},           // moved to 180 degrees
        {0.5F, 1.0F, 0.0F, ""},
    };
    for (auto const& c : angles) {
        KShapeEffectKillData data;
        data.angleMinimum = c.minimum;
        data.angleMaximum = c.maximum;
        data.angleOffset = c.offset;
        EXPECT_EQ(TextOf(Path(kSquare)->KillOf(data)), c.result);
    }
    all.byLength = true;
    all.lengthMinimum = 1.5F;
    all.lengthMaximum = 2.0F;
    EXPECT_EQ(TextOf(Path("M0,0 L2,0 L2,1 L0,1 Z")->KillOf(all)), "M0,0 L2,0 M2,1 L0,1");
}

TEST(OffsetStart, TheSamePolygonFromAnotherPlace)
{
    struct {
        char const* path;
        float part;
        char const* result;
    } const cases[] = {
        {kSquare, 0.125F, "M0.5,0 L1,0 L1,1 L0,1 L0,0 Z"},
        {kSquare, 0.25F, "M1,0 L1,1 L0,1 L0,0 Z"},
        {kSquare, 2.125F, "M0.5,0 L1,0 L1,1 L0,1 L0,0 Z"},
        {kSquare, -0.125F, "M0,0.5 L0,0 L1,0 L1,1 L0,1 Z"},
        {kSquare, 3.0F, kSquare},
        {kCorner, 0.5F, kCorner},
    };
    for (auto const& c : cases) EXPECT_EQ(TextOf(Path(c.path)->OffsetStartOf(c.part)), c.result) << c.part;
}

TEST(CloseOpen, EverySubpathByMode)
{
    char const* const path = "M0,0 L1,0 L1,1 Z M5,5 L6,5";
    char const* const results[] = {path, "M0,0 L1,0 L1,1 Z M5,5 L6,5 Z", "M0,0 L1,0 L1,1 M5,5 L6,5",
                                   "M0,0 L1,0 L1,1 M5,5 L6,5 Z", path};
    for (int mode = 0; mode < 5; ++mode)
        EXPECT_EQ(TextOf(Path(path)->CloseOpenOf(mode)), results[mode]) << mode;
}

// Write-on.

KShapeEffectWriteOnData Range(float low, float high, int level = kLevelElement)
{
    KShapeEffectWriteOnData data;
    data.range = {low, high};
    data.level = level;
    return data;
}

TEST(WriteOn, PartsOfOnePath)
{
    struct {
        char const* path;
        float low, high;
        char const* result;
    } const cases[] = {
        {kSquare, 0.25F, 0.75F, "M1,0 L1,1 L0,1"},
        {kSquare, 0.125F, 1.0F, "M0.5,0 L1,0 L1,1 L0,1 L0,0"},
        {kSquare, 0.125F, 0.1875F, "M0.5,0 L0.75,0"},
        {kSquare, 0.0F, 1.0F, kSquare},
        {kSquare, -3.0F, 0.25F, "M0,0 L1,0"},
        {kSquare, 0.5F, 0.5F, ""},
        {kSquare, 1.5F, 2.0F, ""},
        {kSquare, -2.0F, -1.0F, ""},
        {"M0,0 C0,1 1,1 1,0 C1,-1 2,-1 2,0", 0.0F, 2.0F, "M0,0 C0,1 C1,1 C1,0 C1,-1 C2,-1 C2,0"},
    };
    for (auto const& c : cases) EXPECT_EQ(TextOf(Path(c.path)->WriteOnOf(Range(c.low, c.high))), c.result);
}

TEST(WriteOn, LevelsSpreadTheRange)
{
    // Two subpaths of 1 and 3: a quarter and the rest.
    char const* const path = "M0,0 L1,0 M0,1 L3,1";
    EXPECT_EQ(TextOf(Path(path)->WriteOnOf(Range(0.125F, 0.5F, kLevelElement))),
              "M0.125,0 L0.5,0 M0.375,1 L1.5,1");
    EXPECT_EQ(TextOf(Path(path)->WriteOnOf(Range(0.125F, 0.5F, kLevelShape))), "M0.5,0 L1,0 M0,1 L1,1");
    EXPECT_EQ(TextOf(Path(path)->WriteOnOf(Range(0.25F, 0.5F, kLevelShape))), "M0,1 L1,1")
        << "no piece of a single point where one subpath ends";

    KShapeList list;
    list.AddLast(Path("M0,0 L1,0").release());
    list.AddLast(Path("M0,1 L3,1").release());
    auto const text = [](KShapeList* owned) {
        std::unique_ptr<KShapeList> const result(owned);
        std::string all;
        for (KShape const* shape : result->Each<KShape>()) all += "[" + TextOf(*shape) + "]";
        return all;
    };
    EXPECT_EQ(text(list.WriteOnOf(Range(0.125F, 0.5F, kLevelGlobal))), "[M0.5,0 L1,0][M0,1 L1,1]");
    EXPECT_EQ(text(list.WriteOnOf(Range(0.125F, 0.5F, kLevelShape))), "[M0.125,0 L0.5,0][M0.375,1 L1.5,1]");
}

std::string TextOfLists(KShapeGroup* owned)
{
    std::unique_ptr<KShapeGroup> const result(owned);
    std::string all;
    for (int i = 0; i < result->GetCount(); ++i) {
        all += "{";
        for (KShape const* shape : result->Get(i)->Each<KShape>()) all += TextOf(*shape);
        all += "}";
    }
    return all;
}

TEST(WriteOn, ShiftsWrapRoundTheEnd)
{
    auto* line = new KShapeList;
    line->AddLast(Path("M0,0 L8,0").release());
    KShapeGroup group(line, false);
    KShapeEffectWriteOnData data = Range(0.25F, 0.625F, kLevelGlobal);
    struct {
        float shift;
        bool wrap;
        char const* result;
    } const cases[] = {
        {0.625F, true, "{M7,0 L8,0}{M0,0 L2,0}"},
        {-1.125F, true, "{M1,0 L4,0}"},
        {0.625F, false, "{M7,0 L8,0}"},
        {2.0F, true, "{M2,0 L5,0}"},
        {1e9F, true, "{M0,0 L3,0}"}, // the shift swallows the range's start
    };
    for (auto const& c : cases) {
        data.shift = c.shift;
        data.wrap = c.wrap;
        EXPECT_EQ(TextOfLists(group.WriteOnOf(data)), c.result) << c.shift;
    }
    // Two lists, one after the other.
    auto* second = new KShapeList;
    second->AddLast(Path("M0,1 L8,1").release());
    group.Add(second, false);
    data = Range(0.25F, 0.75F, kLevelGlobal);
    EXPECT_EQ(TextOfLists(group.WriteOnOf(data)), "{M4,0 L8,0}{M0,1 L4,1}");
    data.shift = 0.5F;
    EXPECT_EQ(TextOfLists(group.WriteOnOf(data)), "{}{M4,1 L8,1}{M0,0 L4,0}{}");
}

} // namespace
} // namespace ombrelune::test
