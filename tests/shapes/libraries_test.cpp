#include <chrono>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "shapes/ClipperPaths.h"
#include "tests/image/kimage_helpers.h"
#include "tests/shapes/shape_helpers.h"

namespace ombrelune::test {
namespace {

// Boolean operations.

TEST(Boolean, AreasOfTwoSquares)
{
    auto* list = new KShapeList;
    list->AddLast(Path("M0.5,0.5 L1.5,0.5 L1.5,1.5 L0.5,1.5 Z").release());
    KShapeGroup other(list, false), none;
    KShapeEffectBooleanData data;
    data.other = &other;
    double const areas[] = {0.25, 1.75, 0.75, 1.5, 0.25};
    for (data.type = 0; data.type < 5; ++data.type)
        EXPECT_NEAR(AreaOf(Path(kSquare)->BooleanOf(data)), areas[data.type], 1e-5) << data.type;

    data.other = &none;
    double const alone[] = {0.0, 1.0, 1.0, 1.0};
    for (data.type = 0; data.type < 4; ++data.type)
        EXPECT_NEAR(AreaOf(Path(kSquare)->BooleanOf(data)), alone[data.type], 1e-5) << data.type;
    data.other = nullptr;
    data.type = 1;
    EXPECT_NEAR(AreaOf(Path(kSquare)->BooleanOf(data)), 1.0, 1e-5);

    // Where the subject overlaps itself.
    Shape const both = Path("M0,0 L1,0 L1,1 L0,1 Z M0.5,0.5 L1.5,0.5 L1.5,1.5 L0.5,1.5 Z");
    data.fill = 0;
    EXPECT_NEAR(AreaOf(both->BooleanOf(data)), 1.5, 1e-5);
    data.fill = 1;
    EXPECT_NEAR(AreaOf(both->BooleanOf(data)), 1.75, 1e-5);
}

TEST(Boolean, ListsCombineEachShapeWithAllOfTheOther)
{
    auto* list = new KShapeList;
    list->AddLast(Path("M0.5,0 L1,0 L1,1 L0.5,1 Z").release());
    list->AddLast(Path("M2,0 L2.25,0 L2.25,1 L2,1 Z").release());
    KShapeGroup other(list, false);
    KShapeList subject;
    subject.AddLast(Path(kSquare).release());
    subject.AddLast(Path("M2,0 L3,0 L3,1 L2,1 Z").release());
    KShapeEffectBooleanData data;
    data.type = 2;
    data.other = &other;
    std::unique_ptr<KShapeList> const result(subject.BooleanOf(data));
    ASSERT_EQ(result->Count(), 2);
    EXPECT_NEAR(AreaOf(*static_cast<KShape*>(result->First())), 0.5, 1e-5);
    EXPECT_NEAR(AreaOf(*static_cast<KShape*>(result->Last())), 0.75, 1e-5);
}

TEST(Boolean, WhatLiesFarAwayChangesNothing)
{
    // Two lists of squares in rows, shifted by half a side: each shape meets four of the others.
    auto const squares = [](int side, float shift) {
        auto group = std::make_unique<KShapeGroup>();
        for (int i = 0; i < side * side; ++i) {
            auto* list = new KShapeList;
            float const x = static_cast<float>(i % side) + shift, y = static_cast<float>(i / side) + shift;
            KShape* const square = Path(kSquare).release();
            for (KShapePoint* p = square->GetFirstPoint(); p; p = p->next) p->position += {x, y};
            list->AddLast(square);
            group->Add(list, false);
        }
        return group;
    };
    constexpr int kSide = 40;
    auto const subject = squares(kSide, 0.0F), other = squares(kSide, 0.5F);
    KShapeEffectBooleanData data;
    data.other = other.get();
    data.fill = 1;
    auto const start = std::chrono::steady_clock::now();
    for (data.type = 0; data.type < 4; data.type += 2) {
        std::unique_ptr<KShapeGroup> const result(subject->BooleanOf(data));
        ASSERT_EQ(result->GetCount(), kSide * kSide);
        double area = 0.0;
        for (int i = 0; i < kSide * kSide; ++i)
            area += AreaOf(*static_cast<KShape*>(result->Get(i)->First()));
        // All but the half sides at the left and the bottom is covered.
        double const covered = (kSide - 0.5) * (kSide - 0.5);
        EXPECT_NEAR(area, data.type == 0 ? covered : kSide * kSide - covered, 1e-3);
    }
    // 0.03 seconds without sanitizers; 6 where each shape meets all 1600 others.
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST(Clipper, WhatWouldTakeMinutesIsGivenUp)
{
    // A star of n points in turns of 2.4 radians: each side crosses about a quarter of the others. 8000
    // points took 18 seconds; 400 are clipped as ever.
    auto const star = [](int n) {
        auto shape = std::make_unique<KShape>();
        for (int i = 0; i < n; ++i)
            shape->To(
                {static_cast<float>(0.3 * std::cos(2.4 * i)), static_cast<float>(0.3 * std::sin(2.4 * i))},
                i == 0, false);
        shape->Close();
        return shape;
    };
    auto const start = std::chrono::steady_clock::now();
    auto const pointsOf = [](KShape const* made) { return std::unique_ptr<KShape const>(made)->GetCount(); };
    for (int join : {kJoinMiter, kJoinRound})
        EXPECT_EQ(pointsOf(star(8000)->OffsetOf({0.01F, join, 8, 16})), 0);
    EXPECT_GT(pointsOf(star(400)->OffsetOf({0.01F, kJoinMiter, 8, 16})), 0);
    // 700 alone are clipped, and too much for each of 256 copies.
    EXPECT_GT(pointsOf(star(700)->OffsetOf({0.01F, kJoinMiter, 8, 16})), 0);
    EXPECT_EQ(pointsOf(star(700)->OffsetOf({0.01F, kJoinMiter, 8, 16, 256})), 0);

    KShapeGroup others;
    auto* list = new KShapeList;
    list->AddLast(star(8000).release());
    others.Add(list, false);
    KShapeEffectBooleanData data;
    data.other = &others;
    data.type = 1;
    EXPECT_EQ(pointsOf(star(400)->BooleanOf(data)), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(8));
}

TEST(Replicate, CopiesShareTheirPoints)
{
    EXPECT_EQ(CopiesOf(16, 4), 16);
    EXPECT_EQ(CopiesOf(1000000, 4), 1024);
    EXPECT_EQ(CopiesOf(1000000, 16384), 16);
    EXPECT_EQ(CopiesOf(-5, 4), 0);
    EXPECT_EQ(CopiesOf(5, 0), 5);
}

TEST(Clipper, CoordinatesAreTruncatedAndThoseThatDoNotFitRefused)
{
    ClipperLib::Paths paths;
    PathsFromShape(paths, Path("M0.5,-0.5 L1.5,0 L0.0000019,-0.0000019 Z").get(), kClipperScale);
    ASSERT_EQ(paths.size(), 1U);
    EXPECT_EQ(paths[0][0], ClipperLib::IntPoint(500000, -500000));
    EXPECT_EQ(paths[0][2], ClipperLib::IntPoint(1, -1));

    Shape const mixed = Path("M0,0 L1e13,0 L1,1 Z M0,0 L1,0 L1,1 Z");
    mixed->AddShape(Path("M0,0 L1,0 L1,1 Z").get(), false, kWindingKeep);
    for (KShapePoint* p = mixed->GetFirstPoint(); p; p = p->next)
        if (!p->next) p->position.x = std::nanf("");
    paths.clear();
    PathsFromShape(paths, mixed.get(), kClipperScale);
    EXPECT_EQ(paths.size(), 1U);
    // As far out as it goes, nothing overflows.
    EXPECT_GT(
        AreaOf(
            Path("M-1e12,-1e12 L1e12,-1e12 L1e12,1e12 L-1e12,1e12 Z")->OffsetOf({900.0F, kJoinRound, 8, 16})),
        3.9e24);
}

TEST(Clipper, NumbersOfChoicesFallBackToTheFirst)
{
    EXPECT_EQ(ToClipType(3), ClipperLib::ctXor);
    EXPECT_EQ(ToClipType(-1), ClipperLib::ctIntersection);
    EXPECT_EQ(ToClipType(4), ClipperLib::ctIntersection);
    EXPECT_EQ(ToPolyFillType(1), ClipperLib::pftNonZero);
    EXPECT_EQ(ToPolyFillType(2), ClipperLib::pftEvenOdd);
    EXPECT_EQ(ToJoinType(1), ClipperLib::jtSquare);
    EXPECT_EQ(ToJoinType(2), ClipperLib::jtRound);
    EXPECT_EQ(ToJoinType(7), ClipperLib::jtMiter);
}

// Triangulation.

double SumOfTriangles(KShape const& shape)
{
    double sum = 0.0;
    for (double area : AreasOf(shape)) sum += std::abs(area);
    return sum;
}

TEST(Triangulate, CoversTheOddParts)
{
    KShapeEffectTriangulateData data;
    Shape const square(Path(kSquare)->TriangulateOf(data));
    EXPECT_EQ(square->GetCount(), 6);
    EXPECT_TRUE(square->IsClosed(false));
    EXPECT_NEAR(SumOfTriangles(*square), 1.0, 1e-6);

    Shape const ring(
        Path("M0,0 L1,0 L1,1 L0,1 Z M0.25,0.25 L0.75,0.25 L0.75,0.75 L0.25,0.75 Z")->TriangulateOf(data));
    EXPECT_NEAR(SumOfTriangles(*ring), 0.75, 1e-6);
    EXPECT_EQ(AreasOf(*ring).size(), 8U) << "an annulus of 8 corners";

    Shape const bow(Path("M0,0 L2,2 L2,0 L0,2 Z")->TriangulateOf(data)); // crosses itself at 1, 1
    EXPECT_NEAR(SumOfTriangles(*bow), 2.0, 1e-6);

    data.type = 1;
    EXPECT_EQ(TextOf(Path(kSquare)->TriangulateOf(data)), "");
    data.type = 0;
    EXPECT_EQ(TextOf(KShape().TriangulateOf(data)), "");
    EXPECT_EQ(TextOf(Path("M0,0 L1e20,0 L1e20,1e20 Z")->TriangulateOf(data)), "") << "beyond single floats";
}

// Tracing.

Owned Blocks(int width, int height, std::vector<std::array<int, 5>> const& blocks, int depth)
{
    Owned image(KImage::ImageFromHost(MakeImage(width, height, depth).Release(), true));
    image->Clear();
    for (auto [x0, y0, x1, y1, level] : blocks) {
        FltPixel p;
        p.Clear();
        p.red = static_cast<float>(level) / 10.0F;
        for (int y = y0; y < y1; ++y)
            for (int x = x0; x < x1; ++x) image->SetPixel(x, y, p);
    }
    return image;
}

TEST(Trace, OutlinesAreInWidthsOfTheImage)
{
    for (int depth : kAllDepths) {
        // A block with a hole, wider than a word of bits, and a faint one.
        Owned const image =
            Blocks(160, 80, {{20, 10, 140, 60, 9}, {60, 20, 100, 50, 0}, {2, 70, 20, 78, 3}}, depth);
        KShapeList list;
        list.Trace(image.get(), 0, 0.5F, false, 8);
        ASSERT_EQ(list.Count(), 1);
        KShape const& shape = *static_cast<KShape*>(list.First());
        EXPECT_TRUE(shape.IsClosed(false));
        KVector2 min, max;
        shape.Boundary(min, max);
        EXPECT_EQ(min, KVector2(20.0F / 160, 10.0F / 160));
        EXPECT_EQ(max, KVector2(140.0F / 160, 60.0F / 160));

        list.Trace(image.get(), 0, 0.5F, true, 8); // a second one, and both become flat
        ASSERT_EQ(list.Count(), 2);
        EXPECT_TRUE(static_cast<KShape*>(list.First())->IsFlat());
        std::vector<double> const areas = AreasOf(*static_cast<KShape*>(list.Last()));
        ASSERT_EQ(areas.size(), 2U);
        // Corners may be rounded by a pixel or so; a hole runs the other way.
        EXPECT_NEAR(std::abs(areas[0]), 120.0 * 50 / 25600, 4.0 / 25600);
        EXPECT_NEAR(areas[1], -areas[0] / (120 * 50) * (40 * 30), 5.0 / 25600);
    }
}

TEST(Trace, SinglePixelsCountAndNothingIsAnEmptyShape)
{
    Owned const image = Blocks(65, 3, {{64, 1, 65, 2, 10}}, kDepthInt8); // in the second word of its row
    KShapeList list;
    list.Trace(image.get(), 0, 0.5F, true, 4);
    ASSERT_EQ(list.Count(), 1);
    EXPECT_GT(std::abs(AreaOf(*static_cast<KShape*>(list.First()))), 0.4 / (65 * 65));
    KShapeList none;
    none.Trace(image.get(), 1, 0.5F, true, 4);
    ASSERT_EQ(none.Count(), 1);
    EXPECT_EQ(static_cast<KShape*>(none.First())->GetCount(), 0);
    none.Trace(nullptr, 0, 0.5F, true, 4);
    EXPECT_EQ(none.Count(), 1);
}

} // namespace
} // namespace ombrelune::test
