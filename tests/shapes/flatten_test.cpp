#include <gtest/gtest.h>

#include "tests/shapes/shape_helpers.h"

namespace ombrelune::test {
namespace {

TEST(Flatten, CurvesAtEvenParameters)
{
    EXPECT_EQ(TextOf(Path("M0,0 C0,1 1,1 1,0 Z")->FlattenOf(2)), "M0,0 L0.5,0.75 L1,0 Z");
    EXPECT_EQ(TextOf(Path("M0,0 Q1,2 2,0 L3,0")->FlattenOf(4)), "M0,0 L0.5,0.75 L1,1 L1.5,0.75 L2,0 L3,0");
    Shape const eight(Path("M0,0 C0,1 1,1 1,0")->FlattenOf(8));
    EXPECT_EQ(eight->GetCount(), 9);
    EXPECT_NEAR(PointsOf(*eight)[8].x, 1.0F, 1e-6);
    EXPECT_EQ(TextOf(Path(kSquare)->FlattenOf(8)), kSquare);
    EXPECT_EQ(TextOf(Path("M0,0 C0,3 3,3 3,0")->FlattenOf(0)), "M0,0 L3,0") << "one segment at least";
}

TEST(Flatten, ChainsThatStartOrStopWithinACurve)
{
    // The first point of a chain is its own start; what is left of a run becomes corners.
    EXPECT_EQ(TextOf(Path("Q1,1 2,0")->FlattenOf(2)), "L1.25,0.75 L2,0");
    KShape cut;
    cut.MoveTo({0, 0});
    cut.AddPoint(new KShapePoint({1, 1}, kShapeBezier, false));
    cut.AddPoint(new KShapePoint({2, 0}, kShapeBezier, true));
    Shape const flat(cut.FlattenOf(4));
    EXPECT_EQ(TextOf(*flat), "M0,0 L1,1 L2,0 Z");
    EXPECT_TRUE(flat->IsFlat());
}

TEST(ConvertTo, OutlinesBecomeRingsSortedByRow)
{
    Shape const shape = Path("M0,0 L1,0 L1,1 L0,1 Z M5,5 L6,0.3 C6,1 5,1 5,0 Z");
    for (KShapePoint* p = shape->GetFirstPoint(); p; p = p->next) p->winding = p->closed ? 2 : 1;
    ShapeArrays const arrays = shape->ConvertTo(10.0F, -1.0F, 2.0F, 3.0F, 4);
    ASSERT_EQ(arrays.points.size(), 10U);
    ASSERT_EQ(arrays.indices.size(), 10U);
    EXPECT_EQ(arrays.points[2].x, 12.0F);
    EXPECT_EQ(arrays.points[2].y, 2.0F);
    EXPECT_EQ(arrays.points[0].row, -1);
    EXPECT_EQ(arrays.points[5].row, -1) << "-0.1 is rounded down";
    // The curve at 1/2: x 5.5, y 0.125 * 0.3 + 0.375 * 2.
    EXPECT_NEAR(arrays.points[7].x, 21.0F, 1e-5);
    EXPECT_NEAR(arrays.points[7].y, 3 * 0.7875F - 1, 1e-5);
    EXPECT_EQ(arrays.points[3].winding, 2);
    EXPECT_EQ(arrays.points[4].winding, 1);
    EXPECT_EQ(arrays.points[6].winding, 2) << "samples have the label of the curve's end";

    std::vector<int> next(10), previous(10);
    for (std::size_t i = 0; i < 10; ++i) {
        ShapeArrayPointIndex const& index = arrays.indices[i];
        EXPECT_LE(arrays.indices[i > 0 ? i - 1 : 0].row, index.row);
        EXPECT_EQ(index.row, arrays.points[static_cast<std::size_t>(index.point)].row);
        next[static_cast<std::size_t>(index.point)] = index.next;
        previous[static_cast<std::size_t>(index.point)] = index.previous;
    }
    EXPECT_EQ(next, (std::vector<int>{1, 2, 3, 0, 5, 6, 7, 8, 9, 4}));
    EXPECT_EQ(previous, (std::vector<int>{3, 0, 1, 2, 9, 4, 5, 6, 7, 8}));
}

TEST(ConvertTo, OpenEndsHaveTheirNeighboursInTheChain)
{
    ShapeArrays const arrays = Path("M0,1 L1,2 M5,3 L6,4")->ConvertTo(0, 0, 1, 1, 8);
    int const previous[] = {0, 0, 1, 2}, next[] = {1, 2, 3, 3};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(arrays.indices[i].previous, previous[i]);
        EXPECT_EQ(arrays.indices[i].next, next[i]);
    }
    EXPECT_TRUE(KShape().ConvertTo(0, 0, 1, 1, 8).indices.empty());
}

} // namespace
} // namespace ombrelune::test
