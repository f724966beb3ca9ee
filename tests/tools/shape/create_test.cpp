#include <cmath>
#include <numbers>

#include "shapes/KEffectShape.h"
#include "tests/framework/ToolUnderTest.h"
#include "tests/tools/shape/shape_flow.h"

namespace ombrelune::test {
namespace {

void ExpectAt(KVector2 const& p, double x, double y)
{
    EXPECT_NEAR(p.x, x, 2e-6);
    EXPECT_NEAR(p.y, y, 2e-6);
}

// Primitive.

TEST(ShapePrimitive, OutlinesAndTheirTextures)
{
    struct {
        Settings settings;
        char const* path;
        KVector2 corner, texture; // a place and where the texture has it
    } const cases[] = {
        {{{"SizeX", 0.8}, {"SizeY", 0.4}},
         "M0.2,0.4 L-0.2,0.4 L-0.2,0.2 L-0.4,0.2 L-0.4,-0.2 L-0.2,-0.2 L-0.2,-0.4 L0.2,-0.4 L0.2,-0.2 "
         "L0.4,-0.2 L0.4,0.2 L0.2,0.2 Z",
         {0.4F, -0.4F},
         {1.0F, 0.0F}},
        {{{"Type", 1}, {"AngleStart", 0}},
         "M0.25,0 L0,0.125 L-0.25,0 L0,-0.125 Z",
         {0.25F, 0.125F},
         {1.0F, 1.0F}},
        // The angle turns clockwise.
        {{{"Type", 1}, {"AngleStart", 90}},
         "M0,-0.125 L0.25,0 L0,0.125 L-0.25,0 Z",
         {-0.25F, -0.125F},
         {0.0F, 0.0F}},
        {{{"Type", 2}}, "M-0.25,-0.125 L0.25,-0.125 L0.25,0.125 L-0.25,0.125 Z", {0.25F, 0.0F}, {1.0F, 0.5F}},
        {{{"Type", 3}, {"AngleStart", -45}, {"SizeY", 0.25}, {"Steps", 4}},
         "M0.1768,0.1768 L0,0.125 L-0.1768,0.1768 L-0.125,0 L-0.1768,-0.1768 L0,-0.125 L0.1768,-0.1768 "
         "L0.125,0 Z",
         {0.0F, 0.25F},
         {0.5F, 1.0F}},
        {{{"Type", 2}, {"SizeX", 0}},
         "M0,-0.125 L0,-0.125 L0,0.125 L0,0.125 Z",
         {0.25F, 0.125F},
         {0.75F, 1.0F}},
    };
    for (auto const& each : cases) {
        auto const group = Made("ShapePrimitiveCreate", each.settings);
        EXPECT_EQ(TextOf(*group), each.path);
        KVector2 const texture = group->Get(0)->mapping * each.corner;
        ExpectAt(texture, each.texture.x, each.texture.y);
    }
}

TEST(ShapePrimitive, HasTheShadingAndTheTransformOfItsOwn)
{
    auto const group =
        Made("ShapePrimitiveCreate", {{"Type", 2}, {"TransformPositionY", 1}, {"PenThickness", 3}});
    EXPECT_EQ(TextOf(*group), "M-0.25,0.875 L0.25,0.875 L0.25,1.125 L-0.25,1.125 Z");
    EXPECT_EQ(group->Get(0)->styles[0].pen.thickness, 3.0F);
    ExpectAt(group->Get(0)->mapping * KVector2(0.25F, 1.125F), 1.0, 1.0);
}

// Spiral.

std::vector<KVector2> SpiralOf(Settings const& settings)
{
    return PointsOf(FirstShape(*Made("ShapeSpiralCreate", settings)));
}

TEST(ShapeSpiral, TurnsTwiceByDefault)
{
    auto const points = SpiralOf({});
    // A start, 36 steps of 20 degrees, and the end again.
    ASSERT_EQ(points.size(), 38U);
    for (std::size_t i = 0; i <= 36; ++i) {
        double const angle = static_cast<double>(i) * std::numbers::pi / 9.0;
        double const radius = 0.1 + 0.2 * static_cast<double>(i) / 36.0;
        ExpectAt(points[i], radius * std::cos(angle), radius * std::sin(angle));
    }
    EXPECT_EQ(points[37], points[36]) << "no side of rounding alone";
}

TEST(ShapeSpiral, StepsAreCountedRight)
{
    for (double step : {0.5, 0.7, 1.1, 3.0, 7.2, 13.0, 20.0, 33.3, 77.7, 90.0}) {
        for (int whole : {1, 2, 3, 7, 18, 36, 100, 1001}) {
            for (double start : {0.0, -137.5, 5000.0}) {
                for (double sign : {1.0, -1.0}) {
                    double const angle = sign * step * whole;
                    Settings const even{
                        {"AngleStart", start}, {"AngleEnd", start + angle}, {"AngleStep", step}};
                    Settings const half{{"AngleStart", start},
                                        {"AngleEnd", start + angle + sign * step * 0.5},
                                        {"AngleStep", step}};
                    auto const n = static_cast<std::size_t>(whole);
                    EXPECT_EQ(SpiralOf(even).size(), n + 2) << step << " " << whole << " " << start;
                    EXPECT_EQ(SpiralOf(half).size(), n + 2) << step << " " << whole << " " << start;
                }
            }
        }
    }
}

TEST(ShapeSpiral, EndsAtItsEnd)
{
    struct {
        double end, type;
        std::size_t count;
        double angle, radius;
    } const cases[] = {
        // 50 degrees are two and a half steps of 20: the radius grows by 0.08 each.
        {50, 0, 3, 40, 0.26},  {50, 1, 4, 50, 0.3}, {50, 2, 4, 50, 0.3},
        {-50, 1, 4, -50, 0.3}, {15, 1, 2, 15, 0.3}, {15, 0, 1, 0, 0.1},
        {0, 1, 2, 0, 0.3},     {0, 2, 2, 0, 0.1},   {0, 0, 1, 0, 0.1},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(testing::Message() << c.end << " type " << c.type);
        auto const points = SpiralOf({{"AngleEnd", c.end}, {"AngleEndType", c.type}});
        ASSERT_EQ(points.size(), c.count);
        double const angle = c.angle * std::numbers::pi / 180.0;
        ExpectAt(points.back(), c.radius * std::cos(angle), c.radius * std::sin(angle));
    }
    EXPECT_EQ(SpiralOf({{"AngleEnd", 1e9}, {"AngleStep", 0.5}}).size(), (1U << 14) + 2) << "bounded";
}

// Trace.

TEST(ShapeTrace, OutlinesBrightPixelsAroundTheOrigin)
{
    auto const effect = FindEffectFactory("BF_ShapeTraceCreate")->makeRowForm();
    auto& trace = dynamic_cast<KEffectShape&>(*effect);
    KImage*& image = Target<KImage*>(*effect, 1);
    auto const traced = [&](float brightness) -> KShapeGroup const& {
        Picture const picture = MakePicture(kDepthInt16, 80, 40, [&](int x, int y) {
            bool const isBright = x >= 20 && x < 60 && y >= 10 && y < 20;
            return isBright ? KColor(brightness, brightness, brightness, 1.0F)
                            : KColor(0.0F, 0.0F, 0.0F, 1.0F);
        });
        image = picture.get();
        trace.ProcessData();
        image = nullptr;
        return *trace.output.Get();
    };
    KShapeGroup const& bright = traced(0.7F);
    ASSERT_EQ(bright.GetCount(), 1);
    KVector2 low, high;
    FirstShape(bright).Boundary(low, high);
    ExpectAt(low, -0.25, -0.125); // (20 - 40) / 80, (10 - 20) / 80
    ExpectAt(high, 0.25, 0.0);
    EXPECT_NEAR(AreaOf(FirstShape(bright)), 0.5 * 0.125, 0.002) << "round corners, counter-clockwise";
    ExpectAt(bright.Get(0)->mapping * KVector2(0.5F, -0.25F), 1.0, 0.0);

    KShapeGroup const& dark = traced(0.4F);
    ASSERT_EQ(dark.GetCount(), 1);
    EXPECT_EQ(TextOf(dark), "") << "one shape without points";
    trace.ProcessData();
    EXPECT_EQ(trace.output.Get()->GetCount(), 0) << "no image, no shape";
}

} // namespace
} // namespace ombrelune::test
