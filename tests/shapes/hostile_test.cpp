#include <functional>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "shapes/KStyle.h"
#include "tests/shapes/shape_helpers.h"

// Every operation on paths that no artist would draw: it ends, and does not crash.

namespace ombrelune::test {
namespace {

struct Operation {
    char const* name;
    std::function<KShape*(KShape const&)> run;
};

std::vector<Operation> Operations()
{
    std::vector<Operation> all;
    for (float size : {0.0F, 1e-9F, 0.1F, 1e9F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
        for (int type = 0; type < 4; ++type) {
            KShapeEffectOutlineData pen;
            pen.pen.thickness = size;
            pen.pen.joinType = type;
            pen.pen.endRoundness = static_cast<float>(type) / 3.0F;
            pen.pen.joinPrecision = type * type * 100000;
            pen.pen.dash.lineType = type;
            all.push_back({"outline", [=](KShape const& s) { return s.OutlineOf(pen); }});
            all.push_back({"offset", [=](KShape const& s) {
                               return s.OffsetOf({size, type, type - 1, type});
                           }});
            pen.pen.dash.dashCount = type * 17 - 1;
            pen.pen.dash.dashScale = size;
            all.push_back({"dash", [=](KShape const& s) { return s.DashDotOf(pen.pen.dash, 0.01F); }});
        }
        KShapeEffectResampleData resample;
        resample.distance = resample.offset = size;
        resample.keepOriginalPoints = size == 0.1F;
        all.push_back({"resample", [=](KShape const& s) { return s.ResampleOf(resample); }});
        KShapeEffectWriteOnData write;
        write.range = {size / 3.0F, size};
        all.push_back({"write on", [=](KShape const& s) { return s.WriteOnOf(write); }});
        all.push_back({"start", [=](KShape const& s) { return s.OffsetStartOf(size); }});
        all.push_back({"smooth", [=](KShape const& s) { return s.SmoothOf(size, size); }});
        all.push_back(
            {"zigzag", [=](KShape const& s) { return s.ZigZagOf(kZigZagSegments, size, 3, size); }});
    }
    KShapeEffectReplicateData replicate;
    replicate.number = std::numeric_limits<int>::max();
    replicate.offset = 100.0F;
    replicate.sides = 2;
    all.push_back({"replicate", [=](KShape const& s) { return s.ReplicateOf(replicate); }});
    all.push_back({"kill", [](KShape const& s) { return s.KillOf({}); }});
    all.push_back({"close", [](KShape const& s) { return s.CloseOpenOf(3); }});
    all.push_back({"triangulate", [](KShape const& s) { return s.TriangulateOf({}); }});
    all.push_back({"flatten", [](KShape const& s) { return s.FlattenOf(-3); }});
    all.push_back({"boolean", [](KShape const& s) {
                       KShapeGroup other(new KShapeList, false);
                       other.Get(0)->AddLast(s.CopyOf());
                       KShapeEffectBooleanData data;
                       data.type = 3;
                       data.other = &other;
                       return s.BooleanOf(data);
                   }});
    return all;
}

Shape Random(unsigned seed, int count, std::function<float(std::mt19937&)> const& coordinate)
{
    std::mt19937 random(seed);
    auto shape = std::make_unique<KShape>();
    for (int i = 0; i < count; ++i) {
        auto const type = static_cast<ShapePointType>(i == 0 ? 0 : random() % 9 < 6 ? 1 : random() % 4);
        float const x = coordinate(random);
        shape->AddPoint(new KShapePoint({x, coordinate(random)}, type, random() % 7 == 0));
    }
    return shape;
}

TEST(Hostile, EveryOperationEndsOnEveryPath)
{
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN(),
                    kInf = std::numeric_limits<float>::infinity();
    std::vector<Shape> paths;
    for (char const* text :
         {"", "M0,0", "M0,0 Z", "M0,0 L0,0 L0,0 Z", "M1,1 L2,2 Z", "M0,0 L1,0 L0,0 L1,0 Z",
          "M0,0 L2,2 L2,0 L0,2 Z", "M0,0 L1,0 L2,0 L3,0 Z", "M0,0 M1,1 M2,2 L3,3", "M0,0 C0,0 0,0 0,0 Z",
          "M1e30,1e30 L-1e30,1e30 L0,-1e30 Z", "M1e-40,0 L0,1e-40 L1e-40,1e-40 Z"})
        paths.push_back(Path(text));
    for (unsigned seed = 0; seed < 6; ++seed) {
        paths.push_back(Random(seed, 30, [](std::mt19937& r) { return static_cast<float>(r() % 5); }));
        paths.push_back(
            Random(seed, 30, [](std::mt19937& r) { return static_cast<float>(r() % 1000) / 1000.0F; }));
        paths.push_back(Random(seed, 12, [](std::mt19937& r) {
            float const values[] = {0.0F,
                                    1.0F,
                                    -1.0F,
                                    1e38F,
                                    -1e20F,
                                    1e-38F,
                                    1e12F,
                                    r() % 8 == 0 ? kNan : 2.0F,
                                    r() % 8 == 0 ? kInf : 3.0F};
            return values[r() % 9];
        }));
    }
    for (Operation const& operation : Operations())
        for (Shape const& path : paths) {
            Shape const result(operation.run(*path));
            ASSERT_TRUE(result) << operation.name;
        }
}

Shape Circle(int points)
{
    auto shape = std::make_unique<KShape>();
    for (int i = 0; i < points; ++i) {
        double const angle = 6.283185307179586 * i / points;
        shape->To({static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))}, i == 0, false);
    }
    shape->Close();
    return shape;
}

TEST(Hostile, ManyPoints)
{
    constexpr double kPi = 3.14159265;
    Shape const circle = Circle(100000);
    KShapeEffectOutlineData pen;
    pen.pen.joinType = kJoinRound;
    EXPECT_NEAR(AreaOf(circle->OutlineOf(pen)), kPi * (1.05 * 1.05 - 0.95 * 0.95), 1e-3);
    Shape const triangles(circle->TriangulateOf({}));
    double sum = 0.0;
    for (double area : AreasOf(*triangles)) sum += std::abs(area);
    EXPECT_NEAR(sum, kPi, 1e-3);
    // Offsets take fewer: the integers of the clipping library bend sides that short.
    EXPECT_NEAR(AreaOf(Circle(20000)->OffsetOf({0.5F, kJoinRound, 8, 16})), kPi * 2.25, 1e-3);
}

} // namespace
} // namespace ombrelune::test
