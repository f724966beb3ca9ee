#include <gtest/gtest.h>

#include "host/graph/ResColor.h"
#include "tests/tools/shape/shape_flow.h"

namespace ombrelune::test {
namespace {

/// The inputs in order, without those that all tools have and without the groups of shading and
/// transformation.
std::string InputsOf(Operator const& op)
{
    std::string text;
    for (auto const& input : op.Inputs()) text += (text.empty() ? "" : " ") + input->Id().Text();
    return text;
}

TEST(Declaration, ToolsThatGiveShapesHaveTheirTileAndFlags)
{
    struct Case {
        char const* tool;
        bool givesShapes;
        char const* firstInputs; // in the order of the declaration
    };
    FusionDoc document;
    for (Case const& c : {
             Case{"ShapeBoolean", true, "Shape1 Shape2 Type FillType"},
             Case{"ShapeKill", true,
                  "Shape ByAngle AngleMinimum AngleMaximum AngleOffset ByLength LengthMinimum LengthMaximum"},
             Case{"ShapeMerge", true, "Shape1 Shape2"},
             Case{"ShapeOffset", true,
                  "Shape Keeporiginal Number Offset JoinType JoinPrecision Sides CurvePrecision"},
             Case{"ShapeResample", true,
                  "Shape Distance Offset KeepEndPoints KeepOriginalPoints MinimumAngleAtPointsToKeep "
                  "CurvePrecision"},
             Case{"ShapeShading", true, "Offset ModeFill"},
             Case{"ShapeSmooth", true, "Shape Smooth SmoothCurvature"},
             Case{"ShapeTransform", true, "Shape Transform"},
             Case{"ShapeTriangulate", true, "Shape Type"},
             Case{"ShapeTools", true, "Shape StartOffset OpenClose"},
             Case{"ShapeWriteOn", true, "Shape Level RangeStart RangeEnd Shift ShiftWrap CurvePrecision"},
             Case{"ShapeZigZag", true, "Shape Type Steps Distance Offset"},
             Case{"ShapePrimitiveCreate", true, "Type SizeX SizeY Steps AngleStart"},
             Case{"ShapeSpiralCreate", true,
                  "RadiusStart RadiusEnd AngleStart AngleEnd AngleStep AngleEndType"},
             Case{"ShapeTraceCreate", true, "Image MapChannel Threshold CurvePrecision"},
             Case{"ShapeRender", false, ""},
             Case{"Connect", false, ""},
             Case{"Spiral", false, ""},
         }) {
        Registry const* const registry = ClassRegistry().Find(std::string("Brassfennel.BF_") + c.tool);
        ASSERT_TRUE(registry) << c.tool;
        TagList const& tags = registry->Tags();
        ResColor const* tile = nullptr;
        if (TagValue const* value = tags.Find(Reg_TileColor))
            tile = static_cast<ResColor const*>(std::get<void*>(*value));
        EXPECT_EQ(tile != nullptr, c.givesShapes) << c.tool;
        EXPECT_EQ(tags.Has(Reg_TileFlag), c.givesShapes) << c.tool;
        for (std::uint32_t flag : {0x10000003U, 0x10000017U, 0x10000019U})
            EXPECT_EQ(tags.Has(flag), c.givesShapes) << c.tool;
        std::string const inputs = InputsOf(*document.AddOperator(*registry, c.tool));
        EXPECT_NE(inputs.find(c.firstInputs), std::string::npos) << c.tool << ": " << inputs;
        if (!tile) continue;
        EXPECT_EQ(std::get<std::int64_t>(*tags.Find(Reg_TileFlag)), 0) << c.tool;
        EXPECT_EQ(tile->upper.red, 187) << c.tool;
        EXPECT_EQ(tile->upper.green, 11) << c.tool;
        EXPECT_EQ(tile->upper.blue, 139) << c.tool;
        EXPECT_EQ(tile->lower.red + tile->lower.green + tile->lower.blue, 0) << c.tool;
    }
}

} // namespace
} // namespace ombrelune::test
