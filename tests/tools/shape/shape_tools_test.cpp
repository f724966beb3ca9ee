#include <sstream>

#include "shapes/KEffectShape.h"
#include "tests/tools/shape/shape_flow.h"

namespace ombrelune::test {
namespace {

/// Makes shapes from a text.
struct KEffectTestPaths : KEffectShape {
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "TPa", "Test Paths"); }
    KEffectTestPaths() { parameters.AddText(&paths, "", "Paths", "Path"_id, 0, 1); }
    KShapeGroup* FShape() override
    {
        auto* list = new KShapeList;
        std::istringstream all(paths);
        for (std::string one; std::getline(all, one, '|');) list->AddLast(Path(one).release());
        return new KShapeGroup(list, false);
    }
    FuStringT<char> paths;
};

OMBRELUNE_TOOL(BF_TestPaths, BF_ThreadedOperator, KEffectTestPaths, .outputType = KShapeParameter::kClassId);

/// A tool on paths, and the paths that it makes.
struct TextCase {
    char const* paths;
    char const* tool;
    Settings settings;
    char const* result;
};

void ExpectPaths(std::vector<TextCase> const& cases)
{
    for (auto const& [paths, tool, settings, result] : cases)
        EXPECT_EQ(TextOf(*After(paths, tool, settings)), result) << tool << " on " << paths;
}

// Sides that point to 135, 225, 315 and 45 degrees.
constexpr char const* kDiamond = "M1,0 L0,1 L-1,0 L0,-1 Z";
constexpr char const* kTwoLines = "M0,0 L1,0 M0,1 L3,1";

TEST(ShapeKill, KeepsTheSidesInRange)
{
    ExpectPaths({
        {kDiamond, "ShapeKill", {}, "M0,-1 L1,0"},
        {kDiamond, "ShapeKill", {{"AngleMinimum", 100}, {"AngleMaximum", 200}}, "M1,0 L0,1"},
        {kDiamond, "ShapeKill", {{"AngleOffset", 90}}, "M1,0 L0,1"},
        {kDiamond, "ShapeKill", {{"AngleMinimum", 300}, {"AngleMaximum", 400}}, "M-1,0 L0,-1"},
        {kDiamond, "ShapeKill", {{"ByAngle", 0}}, kDiamond},
        {"M0,0 L4,0 L4,1 L9,1",
         "ShapeKill",
         {{"ByAngle", 0}, {"ByLength", 1}, {"LengthMinimum", 3}, {"LengthMaximum", 4.5}},
         "M0,0 L4,0"},
    });
}

TEST(ShapeWriteOn, SpreadsShiftsAndWrapsTheRange)
{
    ExpectPaths({
        // 2 of 4 units, or half of each.
        {kTwoLines, "ShapeWriteOn", {{"Level", 1}, {"RangeEnd", 0.5}}, "M0,0 L1,0 M0,1 L1,1"},
        {kTwoLines, "ShapeWriteOn", {{"Level", 2}, {"RangeEnd", 0.5}}, "M0,0 L0.5,0 M0,1 L1.5,1"},
        {"M0,0 L1,0|M0,1 L3,1", "ShapeWriteOn", {{"RangeEnd", 0.5}}, "M0,0 L1,0 | M0,1 L1,1"},
        {"M0,0 L10,0",
         "ShapeWriteOn",
         {{"RangeStart", 0.2}, {"RangeEnd", 0.6}, {"Shift", 0.6}},
         "M8,0 L10,0 || M0,0 L2,0"},
        {"M0,0 L10,0",
         "ShapeWriteOn",
         {{"RangeStart", 0.2}, {"RangeEnd", 0.6}, {"Shift", 1.125}},
         "M3.25,0 L7.25,0"},
        {"M0,0 L10,0",
         "ShapeWriteOn",
         {{"RangeStart", 0.2}, {"RangeEnd", 0.6}, {"Shift", 0.6}, {"ShiftWrap", 0}},
         "M8,0 L10,0"},
        {kSquare, "ShapeWriteOn", {{"RangeStart", 0.125}, {"RangeEnd", 0.625}}, "M0.5,0 L1,0 L1,1 L0.5,1"},
    });
}

TEST(ShapeTools, MoveAndBendPoints)
{
    ExpectPaths({
        {"M0,0 L1,0",
         "ShapeResample",
         {{"Distance", 0.25}, {"Offset", 0.125}},
         "M0.125,0 L0.375,0 L0.625,0 L0.875,0"},
        {"M0,0 L1,0",
         "ShapeResample",
         {{"Distance", 0.5}, {"Offset", 0.125}, {"KeepEndPoints", 1}},
         "M0,0 L0.125,0 L0.625,0 L1,0"},
        {"M0,0 L0.1,0 M2,0 L3,0", "ShapeResample", {{"Distance", 0.5}}, "M2,0 L2.5,0"},
        {"M0,0 L3,0 L3,3", "ShapeSmooth", {{"Smooth", 0}}, "M0,0 C1,0 C2,0 C3,0 C3,1 C3,2 C3,3"},
        // A quarter of the way between the neighbours.
        {"M0,0 L4,0 L4,4 L0,4 Z",
         "ShapeSmooth",
         {},
         "M0,0 C1,-1 C3,-1 C4,0 C5,1 C5,3 C4,4 C3,5 C1,5 C0,4 C-1,3 C-1,1 C0,0 Z"},
        {"M0,0 L4,0", "ShapeZigZag", {{"Steps", 2}, {"Offset", 1}}, "M0,1 L2,-1 L4,1"},
        {"M0,0 L4,0", "ShapeZigZag", {{"Type", 1}, {"Offset", 1}}, "M0,0 L4,0"},
        {kSquare, "ShapeTools", {{"StartOffset", 0.125}}, "M0.5,0 L1,0 L1,1 L0,1 L0,0 Z"},
        {kSquare, "ShapeTools", {{"StartOffset", 0.125}, {"OpenClose", 2}}, "M0.5,0 L1,0 L1,1 L0,1 L0,0"},
        {"M0,0 L1,0 L1,1 M5,5 L6,5 L6,6 Z",
         "ShapeTools",
         {{"OpenClose", 3}},
         "M0,0 L1,0 L1,1 Z M5,5 L6,5 L6,6"},
        {kSquare, "ShapeTriangulate", {{"Type", 1}}, ""},
    });
}

TEST(ShapeOffset, RingsOnTheSidesThatAreWanted)
{
    // Unit squares grown and shrunk by 0.1 and 0.2 on each side.
    struct {
        Settings settings;
        std::vector<double> areas;
    } const cases[] = {
        {{}, {1.02 * 1.02}},
        {{{"Number", 2}, {"Offset", 0.1}}, {1.44, 1.96}},
        {{{"Offset", 0.1}, {"Sides", 0}}, {0.64, 1.44}},
        {{{"Number", 2}, {"Offset", 0.1}, {"Sides", 1}, {"Keeporiginal", 1}}, {1.0, 0.64, 0.36}},
    };
    for (auto const& each : cases) {
        std::vector<double> const areas = AreasOf(FirstShape(*After(kSquare, "ShapeOffset", each.settings)));
        ASSERT_EQ(areas.size(), each.areas.size());
        for (std::size_t i = 0; i < areas.size(); ++i) EXPECT_NEAR(areas[i], each.areas[i], 1e-5);
    }
}

TEST(ShapeTriangulate, LeavesTheHoleOut)
{
    auto const group = After("M0,0 L3,0 L3,3 L0,3 Z M1,1 L2,1 L2,2 L1,2 Z", "ShapeTriangulate");
    double sum = 0.0;
    for (double area : AreasOf(FirstShape(*group))) sum += std::abs(area);
    EXPECT_NEAR(sum, 8.0, 1e-5);
    EXPECT_EQ(AreasOf(FirstShape(*group)).size(), 8U) << "as many triangles as corners of the ring";
}

TEST(ShapeBoolean, CombinesEachShapeWithTheWholeOther)
{
    constexpr char const* first = "M0,0 L2,0 L2,2 L0,2 Z";
    constexpr char const* second = "M1,1 L3,1 L3,3 L1,3 Z M1.5,1.5 L2.5,1.5 L2.5,2.5 L1.5,2.5 Z";
    struct {
        int type, fill;
        double area;
    } const cases[] = {
        // The second is 4, of which 1 lies over the first; as a ring 3 and 0.75.
        {0, 1, 1.0}, {1, 1, 7.0}, {2, 1, 3.0}, {3, 1, 6.0}, {0, 0, 0.75}, {2, 0, 3.25},
    };
    for (auto const& each : cases) {
        Flow flow;
        Operator* const both = flow.Then(
            "ShapeBoolean", {flow.Paths(first), flow.Paths(second)},
            {{"Type", static_cast<double>(each.type)}, {"FillType", static_cast<double>(each.fill)}});
        EXPECT_NEAR(AreaOf(FirstShape(*flow.Result(both))), each.area, 1e-5) << each.type << each.fill;
    }
    auto const none = After("M0,0 L2,0 L2,2 Z|M5,5 L6,5 L6,6 Z", "ShapeBoolean");
    EXPECT_EQ(none->Get(0)->Count(), 2) << "a shape for each, without points";
    EXPECT_EQ(TextOf(*none), " | ");
    EXPECT_EQ(AreaOf(FirstShape(*After(first, "ShapeBoolean", {{"Type", 1}}))), 4.0);
}

TEST(ShapeMerge, KeepsOrderAndLooks)
{
    Flow flow;
    Operator* const red = flow.Then("ShapeShading", {flow.Paths("M0,0 L1,0")}, {{"PenThickness", 7}});
    Operator* const both = flow.Then("ShapeMerge", {red, flow.Paths("M0,1 L3,1")});
    auto const group = flow.Result(both);
    EXPECT_EQ(TextOf(*group), "M0,0 L1,0 || M0,1 L3,1");
    EXPECT_EQ(group->Get(0)->styles[0].pen.thickness, 7.0F);
    EXPECT_EQ(group->Get(1)->styles[0].pen.thickness, KPenStyle().thickness);
    // Half of all four units: the first list is over, the second starts at its first third.
    EXPECT_EQ(TextOf(*flow.Result(flow.Then("ShapeWriteOn", {both}, {{"RangeStart", 0.5}}))),
              " || M1,1 L3,1");
}

TEST(ShapeShading, ReplacesAllSlots)
{
    auto const group =
        After(kSquare, "ShapeShading",
              {{"BrushEnabled", 0}, {"PenLineType", 3}, {"PenLineDash16", 9}, {"PenLineSpace2", 4}});
    for (KStyle const& style : group->Get(0)->styles) {
        EXPECT_FALSE(style.brush.enabled);
        EXPECT_TRUE(style.penChannel.enabled);
        EXPECT_EQ(style.fill.color, KColor(0.8F, 0.2F, 0.3F, 1.0F));
        EXPECT_EQ(style.pen.thickness, 1.0F);
        EXPECT_EQ(style.pen.dash.lineType, 3);
        EXPECT_EQ(style.pen.dash.dashLengths[14], 16.0F);
        EXPECT_EQ(style.pen.dash.dashLengths[15], 9.0F);
        EXPECT_EQ(style.pen.dash.spaceLengths[1], 4.0F);
    }
}

TEST(ShapeTransform, ScalesThenTurnsThenMoves)
{
    auto const group = After("M1,0 L0,1", "ShapeTransform",
                             {{"TransformPositionX", 3}, {"TransformRotationZ", 90}, {"TransformScaleX", 2}});
    EXPECT_EQ(TextOf(*group), "M3,2 L1,0");
    KVector2 const texture = group->Get(0)->mapping * KVector2(3, 2);
    EXPECT_NEAR(texture.x, 1.0, 1e-5) << "textures go along";
    EXPECT_NEAR(texture.y, 0.0, 1e-5);
}

TEST(ShapeTools, GiveNothingForNothing)
{
    for (KEffectFactory const& factory : EffectFactories()) {
        auto const effect = factory.makeRowForm();
        auto* const shapes = dynamic_cast<KEffectShape*>(effect.get());
        if (!shapes || factory.tool == "BF_TestPaths") continue;
        bool takesShapes = false;
        for (KParameter const* each : effect->parameters.Each<KParameter>())
            takesShapes |= each->type == KPT_Shape;
        if (!takesShapes) continue;
        for (int again = 0; again < 2; ++again) {
            shapes->ProcessData();
            ASSERT_TRUE(shapes->output.Get()) << factory.tool;
            EXPECT_EQ(shapes->output.Get()->GetCount(), 0) << factory.tool;
        }
    }
}

} // namespace
} // namespace ombrelune::test
