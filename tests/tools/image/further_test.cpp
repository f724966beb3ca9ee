// Tools that crop, shift, frame, multiply and extrude.

#include <gtest/gtest.h>

#include "image/KFigure.h"
#include "tests/framework/ToolUnderTest.h"

namespace ombrelune::test {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

/// Red tells the column, green the row.
Picture Grid(int depth, int width, int height)
{
    return MakePicture(depth, width, height, [](int x, int y) {
        return KColor(static_cast<float>(x) / 64.0F, static_cast<float>(y) / 64.0F, 0.0F, 1.0F);
    });
}

TEST(CropMonsieur, TakesAWindowAtACornerOrAroundACentre)
{
    struct {
        int crop;
        KVector2 center;
        KVector2i offset;
        KVector2 part;
        int scale;
        int w, h, x, y; // the frame, and the source's pixel in its corner
    } const cases[] = {
        {1, {0.0F, 0.0F}, {3, 2}, {1.0F, 1.0F}, 1, 10, 6, 3, 2},
        {1, {0.0F, 0.0F}, {4, 2}, {0.5F, 0.25F}, 2, 3, 1, 2, 1}, // half of 5 and a quarter of 3, rounded
        {0, {0.5F, 0.5F}, {0, 0}, {1.0F, 1.0F}, 1, 10, 6, 15, 7},
        {0, {0.25F, 0.5F}, {-2, 3}, {1.0F, 1.0F}, 1, 10, 6, 3, 10},
    };
    for (auto const& c : cases) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            Picture const source = Grid(depth, 40, 20);
            ToolUnderTest tool("BF_CropMonsieur");
            tool.Set("Crop"_id, c.crop)
                .Set("CrCe"_id, c.center)
                .Set("CrOH"_id, c.offset.x)
                .Set("CrOV"_id, c.offset.y);
            tool.Set("CrWi"_id, 10).Set("CrHe"_id, 6).Set("CrNW"_id, c.part.x).Set("CrNH"_id, c.part.y);
            // At half size, the source of the proxy is told by its original one.
            if (c.scale == 2) source->Set(1, 80);
            Picture const cut = Resized(tool, *source, c.scale);
            ASSERT_EQ(cut->Width(), c.w);
            ASSERT_EQ(cut->Height(), c.h);
            EXPECT_NEAR(ColorAt(*cut, 0, 0).red * 64.0F, c.x, 1e-2);
            EXPECT_NEAR(ColorAt(*cut, 0, 0).green * 64.0F, c.y, 1e-2);
        }
    }
}

TEST(CropMonsieur, ShowsItsEdgeBeyondThePictureHoweverFar)
{
    Picture const source = Grid(kDepthFloat, 4, 4);
    for (int offset : {-3, -2147483647}) {
        ToolUnderTest tool("BF_CropMonsieur");
        tool.Set("CrOH"_id, offset).Set("CrWi"_id, 4).Set("CrHe"_id, 4).Set("CrCR"_id, KColor(0, 0, 1, 1));
        EXPECT_EQ(ColorAt(*Resized(tool, *source), 0, 0), KColor(0, 0, 1, 1));
        EXPECT_EQ(ColorAt(*Resized(tool.Set("CrEd"_id, 2), *source), 0, 2), ColorAt(*source, 0, 2));
    }
}

TEST(ChannelShifter, MovesEachChannelToTheRightAndUp)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const source = MakeBusyPicture(depth, 20, 10);
        ToolUnderTest tool("BF_ChannelShifter");
        // 1 pixel of 20 is 0.05; all by (1, 0), red by (2, 1) more, green by half of (2, 2) less.
        tool.Set("Overall Effect", 0.5F).Set("All Horizontal", 0.1F);
        tool.Set("Red Horizontal", 0.2F).Set("Red Vertical", 0.1F).Set("Green Horizontal", -0.1F);
        Picture const moved = tool.On(*source);
        KColor const at = ColorAt(*moved, 10, 5);
        EXPECT_NEAR(at.red, ColorAt(*source, 7, 4).red, 2e-5);
        EXPECT_NEAR(at.green, ColorAt(*source, 10, 5).green, 2e-5);
        EXPECT_NEAR(at.blue, ColorAt(*source, 9, 5).blue, 2e-5);
        EXPECT_NEAR(at.alpha, ColorAt(*source, 9, 5).alpha, 2e-5);
        EXPECT_NEAR(ColorAt(*moved, 0, 0).blue, ColorAt(*source, 0, 0).blue, 2e-5) << "the edge repeats";
        EXPECT_TRUE(SameBytes(*ToolUnderTest("BF_ChannelShifter").On(*source), *source));
    }
}

TEST(BoundingBox, FillsTheBoxAroundWhatIsOverTheThreshold)
{
    // Pixels (3, 2) and (6, 4) of 20 by 10, the second one half way over a threshold of 0.
    Picture const source = MakePicture(kDepthFloat, 20, 10, [](int x, int y) {
        return x == 3 && y == 2 ? Grey(1.0F) : x == 6 && y == 4 ? Grey(0.5F) : Grey(0.0F);
    });
    ToolUnderTest tool("BF_BooundingBox");
    tool.Set("Chan"_id, 3).Set("Thre"_id, 0.0F).Set("ColR"_id, KColor(1.0F, 0.5F, 0.0F, 0.5F));
    auto const alpha = [&](int x, int y) { return ColorAt(*tool.On(*source), x, y).alpha; };
    // It reaches from (3, 2) to (6.5, 4.5).
    EXPECT_EQ(ColorAt(*tool.On(*source), 4, 3), KColor(0.5F, 0.25F, 0.0F, 0.5F));
    EXPECT_EQ(alpha(2, 3), 0.0F);
    EXPECT_NEAR(alpha(6, 3), 0.25F, 1e-5);
    EXPECT_NEAR(alpha(6, 4), 0.125F, 1e-5);
    EXPECT_EQ(alpha(3, 5), 0.0F);

    // A pixel of 20 is 0.05 of the width: left 2, right 1, top 2 and bottom 1.
    tool.Set("PixL"_id, 0.1F).Set("PixR"_id, 0.05F).Set("PixT"_id, 0.1F).Set("PixB"_id, 0.05F);
    struct {
        int lock;
        int left, right, low, high; // full columns and rows
    } const cases[] = {{2, 1, 6, 1, 5}, {1, 1, 7, 0, 5}, {0, 1, 7, 0, 5}};
    for (auto const& c : cases) {
        Picture const drawn = tool.Set("Lock"_id, c.lock).On(*source);
        for (int x = 0; x < 20; ++x)
            EXPECT_EQ(ColorAt(*drawn, x, 3).alpha > 0.49F, x >= c.left && x <= c.right) << c.lock << " " << x;
        for (int y = 0; y < 10; ++y)
            EXPECT_EQ(ColorAt(*drawn, 4, y).alpha > 0.49F, y >= c.low && y <= c.high) << c.lock << " " << y;
    }
    EXPECT_EQ(ColorAt(*tool.Set("Thre"_id, 1.0F).On(*source), 3, 2), KColor()) << "nothing is over it";
    KProcessImageData redOff = DataFor(*source);
    redOff.channels[0] = false;
    EXPECT_EQ(ColorAt(*Apply(tool.Image(), *source, redOff), 3, 2), KColor(1.0F, 0.0F, 0.0F, 0.0F));
}

TEST(Figure, SpreadsItsPointsEvenly)
{
    auto const expectPoint = [](KFigure const& figure, int i, int count, KVector2 const& expected) {
        KVector2 const point = figure.Point(i, count);
        EXPECT_NEAR(point.x, expected.x, 1e-6) << i << " of " << count;
        EXPECT_NEAR(point.y, expected.y, 1e-6) << i << " of " << count;
    };
    KFigure const line{2, 3.0F, 0.0F}, square{4, 2.0F, kPi / 2};
    expectPoint(line, 0, 3, {3.0F, 0.0F});
    expectPoint(line, 1, 3, {0.0F, 0.0F});
    expectPoint(line, 2, 3, {-3.0F, 0.0F});
    expectPoint(square, 0, 8, {0.0F, 2.0F});
    expectPoint(square, 1, 8, {-1.0F, 1.0F}); // half way down a side
    expectPoint(square, 6, 8, {2.0F, 0.0F});
    expectPoint({-5, 1.0F, 0.0F}, 1, 2, {-1.0F, 0.0F});
    expectPoint(square, 0, 1, {});
}

TEST(Duplicate, LaysCopiesAlongItsFigure)
{
    // Copies 2 pixels to each side of a row with one bright pixel, then on the second figure, up and down.
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const source =
            MakePicture(depth, 10, 9, [](int x, int y) { return Grey(x == 5 && y == 4 ? 1.0F : 0.25F); });
        ToolUnderTest tool("BF_Duplicate");
        tool.Set("DuSa"_id, 2).Set("Shape corners 1", 2).Set("Shape size 1", 0.2F);
        tool.Set("Shape corners 2", 2).Set("Shape size 2", 0.2F).Set("Shape angle 2", kPi / 2);
        auto const red = [&](int x, int y) { return ColorAt(*tool.On(*source), x, y).red; };
        EXPECT_NEAR(red(7, 4), 0.625F, 2e-5);
        EXPECT_NEAR(red(3, 4), 0.625F, 2e-5);
        EXPECT_NEAR(red(5, 4), 0.25F, 2e-5);
        tool.Set("DuCo"_id, 1);
        EXPECT_NEAR(red(7, 4), 1.0F, 2e-5);
        tool.Set("DuSM"_id, 1.0F);
        EXPECT_NEAR(red(7, 4), 0.25F, 2e-5);
        EXPECT_NEAR(red(5, 6), 1.0F, 2e-5);
        tool.Set("DuSM"_id, 0.5F); // (1, 1) and (-1, -1)
        EXPECT_NEAR(red(6, 5), 1.0F, 2e-5);
        tool.Set("DuCo"_id, 2);
        EXPECT_NEAR(red(6, 5), 0.25F, 2e-5);
    }
}

TEST(Extrude, DrawsABodyBehindTheMatte)
{
    // One opaque column of ten.
    auto const column = [](int at) {
        return MakePicture(kDepthFloat, 10, 8,
                           [at](int x, int) { return x == at ? KColor(0.2F, 0.4F, 0.6F, 1.0F) : KColor(); });
    };
    ToolUnderTest tool("BF_Extrude");
    tool.Set("ExLe"_id, 0.3F)
        .Set("ExAn"_id, 0.0F)
        .Set("ExSh"_id, false)
        .Set("ExCR"_id, KColor(1.0F, 0.0F, 0.0F, 1.0F));
    Picture drawn = tool.On(*column(2));
    EXPECT_EQ(ColorAt(*drawn, 2, 4), KColor(0.2F, 0.4F, 0.6F, 1.0F));
    for (int x : {3, 4, 5}) EXPECT_EQ(ColorAt(*drawn, x, 4), KColor(1.0F, 0.0F, 0.0F, 1.0F)) << x;
    for (int x : {1, 6}) EXPECT_EQ(ColorAt(*drawn, x, 4), KColor()) << x;
    EXPECT_EQ(ColorAt(*tool.Set("ExCT"_id, 1).On(*column(2)), 4, 4), KColor(0.2F, 0.4F, 0.6F, 1.0F));

    // Towards a centre at the left edge everything shrinks to a half: columns 4 to 7 see column 8.
    tool.Set("ExPe"_id, 1).Set("ExLe"_id, 0.5F).Set("ExCe"_id, KVector2(0.0F, 4.5F));
    drawn = tool.On(*column(8));
    for (int x = 0; x < 10; ++x) EXPECT_EQ(ColorAt(*drawn, x, 4).alpha, x >= 4 && x <= 8 ? 1.0F : 0.0F) << x;
}

TEST(Extrude, LightsTheSidesThatFaceTheLight)
{
    // The right side of a bar, from whose edge the relief falls to the right.
    Picture const bar =
        MakePicture(kDepthFloat, 20, 40, [](int x, int) { return Grey(x < 10 ? 1.0F : 0.0F); });
    struct {
        float angle, importance, expected;
    } const cases[] = {{0.0F, 1.0F, 1.0F}, {kPi, 1.0F, 0.0F}, {kPi / 2, 1.0F, 0.5F}, {kPi, 0.25F, 0.75F}};
    for (auto const& c : cases) {
        ToolUnderTest tool("BF_Extrude");
        tool.Set("ExLe"_id, 0.2F)
            .Set("ExAn"_id, 0.0F)
            .Set("ExCR"_id, Grey(1.0F))
            .Set("ExSA"_id, c.angle)
            .Set("ExSi"_id, c.importance);
        EXPECT_NEAR(ColorAt(*tool.On(*bar), 12, 20).red, c.expected, 1e-5);
    }
}

} // namespace
} // namespace ombrelune::test
