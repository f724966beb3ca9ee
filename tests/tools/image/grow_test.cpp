#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "image/KRandom.h"
#include "tests/framework/Expect.h"

namespace ombrelune {
namespace {

using namespace test;

void ExpectRow(KImage const& picture, std::vector<float> const& values, float limit = 2e-6F)
{
    for (int x = 0; x < picture.Width(); ++x)
        for (int c = 0; c < 4; ++c)
            EXPECT_NEAR(ColorAt(picture, x, 0).GetChannel(c), values[static_cast<std::size_t>(x)], limit)
                << x << ' ' << c;
}

// Grow.

TEST(Grow, ShowsABandOfDistanceWithSoftEnds)
{
    // Seed in pixel 2, a gap at 8. The band is 1 to 5 pixels, soft over 2 at its end and 1 at its start.
    std::vector<float> const mask{1, 1, 1, 1, 1, 1, 1, 1, 0, 1};
    std::vector<float> const shown{1, 0, 0, 0, 1, 1, 0.5F, 0, 0, 0};
    for (int depth : {kDepthInt16, kDepthFloat}) {
        for (bool swaps : {false, true}) {
            Picture const source = GreyRow(depth, mask);
            ToolUnderTest grow("BF_Grow");
            grow.Set("Grow Start", swaps ? 0.5F : 0.1F).Set("Grow End", swaps ? 0.1F : 0.5F);
            grow.Set("Softness Start", 0.1F).Set("Softness End", 0.2F).Set("Seed 1", KVector2(2.5F, 0.0F));
            ExpectRow(*grow.On(*source), shown, 1e-5F);
        }
    }
}

TEST(Grow, BothSoftnessesOfAnIntegerTruncate)
{
    // Distance 1 in a band of 0 to 2: half of 65535 is 32767, and half of that 16383.
    Picture const source = GreyRow(kDepthInt16, {1, 1, 1, 1});
    ToolUnderTest grow("BF_Grow");
    grow.Set("Grow End", 0.5F)
        .Set("Softness Start", 0.5F)
        .Set("Softness End", 0.5F)
        .Set("Seed 1", KVector2());
    Picture const result = grow.On(*source);
    EXPECT_EQ(WordsAt(*result, 0, 0), KColor32(0, 0, 0, 0)) << "the seed lies at the start of the softness";
    EXPECT_EQ(WordsAt(*result, 1, 0), KColor32(16383, 16383, 16383, 16383));
}

// Grow Color.

TEST(GrowColor, StopsAndHardensTheMatte)
{
    struct Case {
        float alpha, interrupt;
        int iterations;
        float result;
    };
    // An even picture is its own blur, so a round takes an alpha of a to 2 a - a^2. The matte ramps from 0.1
    // to 0.2.
    Case const cases[] = {
        {1.0F, 0.05F, 8, 1.0F},        // opaque
        {0.07804555F, 0.05F, 1, 0.5F}, // 0.15
        {0.02F, 0.05F, 1, 0.0F},       // 0.0396
        {0.06F, 0.1F, 8, 0.164F},      // 0.1164, enough to stop
        {0.06F, 0.15F, 8, 1.0F},       // 0.1164, then 0.21925
    };
    for (Case const& each : cases) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            SCOPED_TRACE(each.alpha);
            float const a = each.alpha;
            Picture const source =
                MakePicture(depth, 9, 7, [&](int, int) { return KColor(0.5F * a, 0.25F * a, 0.0F, a); });
            ToolUnderTest tool("BF_GrowColor");
            tool.Set("Iter"_id, each.iterations).Set("ItIn"_id, each.interrupt);
            tool.Set("Thre"_id, 0.1F).Set("ThSo"_id, 0.1F);
            float const r = each.result;
            ExpectNear(ColorAt(*tool.On(*source), 4, 3), {0.5F * r, 0.25F * r, 0.0F, r},
                       depth == kDepthFloat ? 1e-5F : 1e-3F);
        }
    }
}

TEST(GrowColor, FillsTransparentPartsWithTheColorBesideThem)
{
    Picture const source = MakePicture(kDepthFloat, 120, 40, [](int x, int) {
        return x < 20 ? KColor(0.8F, 0.2F, 0.0F, 1.0F) : x >= 100 ? KColor(0.0F, 0.0F, 0.6F, 1.0F) : KColor();
    });
    Picture const result = ToolUnderTest("BF_GrowColor").On(*source);
    EXPECT_EQ(ColorAt(*result, 5, 20), KColor(0.8F, 0.2F, 0.0F, 1.0F));
    ExpectNear(ColorAt(*result, 30, 20), {0.8F, 0.2F, 0.0F, 1.0F}, 0.1F);
    ExpectNear(ColorAt(*result, 90, 20), {0.0F, 0.0F, 0.6F, 1.0F}, 0.1F);
    for (int x = 0; x < 120; ++x) EXPECT_EQ(ColorAt(*result, x, 7).alpha, 1.0F);
}

TEST(GrowColor, NegativeAlphaAndColorWithoutAlphaGiveNothing)
{
    // By rounds, an even alpha of -0.2 would go to -0.44, -1.07 and on to a number that is none.
    for (float const alpha : {-0.2F, 0.0F}) {
        Picture const source =
            MakePicture(kDepthFloat, 9, 7, [&](int, int) { return KColor(0.5F, -0.25F, 0.0F, alpha); });
        ToolUnderTest tool("BF_GrowColor");
        tool.Set("Iter"_id, 200).Set("Thre"_id, 0.0F);
        EXPECT_EQ(ColorAt(*tool.On(*source), 4, 3), KColor());
    }
}

// Eat.

TEST(Eat, CountsFromTheLastPlaceOutOfRange)
{
    // Three pixels are eaten from each gap on, the gap's own first; the run before the first gap stays.
    std::vector<float> const along{1, 1, 0, 1, 1, 1, 1, 0, 1, 1};
    std::vector<float> const eaten{1, 1, 0.5F, 0.5F, 0.5F, 1, 1, 0.5F, 0.5F, 0.5F};
    struct Side {
        std::uint32_t id;
        bool isVertical, isReversed;
    };
    // Row 0 is the bottom, so the top is where the rows end.
    for (Side side : {Side{"EaSL"_id, false, false}, Side{"EaSR"_id, false, true},
                      Side{"EaSB"_id, true, false}, Side{"EaST"_id, true, true}}) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            SCOPED_TRACE(side.id);
            auto const place = [&](int x, int y) {
                int const i = side.isVertical ? y : x;
                return static_cast<std::size_t>(side.isReversed ? 9 - i : i);
            };
            Picture const source =
                MakePicture(depth, 10, 10, [&](int x, int y) { return Grey(along[place(x, y)]); });
            ToolUnderTest eat("BF_Eat");
            eat.Set("EaLe"_id, 0.3F).Set("EaNL"_id, 0.0F).Set("EaST"_id, false).Set(side.id, true);
            eat.Set("EaCR"_id, Grey(0.5F));
            Picture const result = eat.On(*source);
            for (int i = 0; i < 10; ++i)
                EXPECT_NEAR(ColorAt(*result, i, 9 - i).blue, eaten[place(i, 9 - i)], 2e-5F) << i;
        }
    }
}

TEST(Eat, NoiseIsOneStreamThroughThePicture)
{
    // Both rows: gap, then distances 1 to 3 with all of the length of 4 frayed.
    Picture const source =
        MakePicture(kDepthFloat, 4, 2, [](int x, int) { return Grey(x == 0 ? 0.0F : 1.0F); });
    ToolUnderTest eat("BF_Eat");
    eat.Set("EaLe"_id, 1.0F).Set("EaNL"_id, 1.0F).Set("EaST"_id, false).Set("EaSL"_id, true);
    Picture const result = eat.On(*source);
    KRandomSeed(1234);
    for (int y = 0; y < 2; ++y)
        for (int x = 1; x < 4; ++x)
            EXPECT_FLOAT_EQ(ColorAt(*result, x, y).red, KRandom(1.0F) * static_cast<float>(x) / 4.0F);
}

TEST(Eat, LeavesWhatItCannotReach)
{
    Picture const bright = MakePicture(kDepthFloat, 20, 20, [](int x, int y) {
        return Grey(0.1F + 0.2F * static_cast<float>((x * y) % 7));
    });
    ToolUnderTest all("BF_Eat");
    for (std::uint32_t side : {"EaSL"_id, "EaSR"_id, "EaST"_id, "EaSB"_id}) all.Set(side, true);
    EXPECT_TRUE(SameBytes(*all.On(*bright), *bright)) << "wholly in range, beyond 1 too";
    Picture const busy = MakeBusyPicture(kDepthFloat, 20, 20);
    all.Set("EaLe"_id, 0.0F);
    EXPECT_TRUE(SameBytes(*all.On(*busy), *busy)) << "a length of 0";
    ToolUnderTest none("BF_Eat");
    none.Set("EaST"_id, false).Set("EaLe"_id, 1.0F);
    EXPECT_TRUE(SameBytes(*none.On(*busy), *busy)) << "no side";
}

// Clean Edges.

TEST(CleanEdges, KeepsTheInside)
{
    struct Case {
        int width, lock, left, right, top, bottom;
        int fromX0, fromX6, fromY0, fromY4; // where the corners are read
    };
    // Five rows, "top" from row 0 on. Half the width at most; with nothing left the upper bound wins.
    Case const cases[] = {{7, 2, 1, 2, 0, 1, 1, 4, 0, 3},   {7, 0, 1, 9, 9, 9, 1, 5, 1, 3},
                          {7, 1, 2, 9, 1, 9, 2, 4, 1, 3},   {7, 2, 90, 90, 90, 90, 3, 3, 2, 2},
                          {6, 2, 90, 90, 0, 0, 2, 2, 0, 4}, {7, 2, 90, 0, 0, 0, 3, 6, 0, 4}};
    for (Case const& c : cases) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            Picture const source = MakeBusyPicture(depth, c.width, 5);
            ToolUnderTest tool("BF_CleanEdges");
            tool.Set("Lock"_id, c.lock).Set("PixL"_id, c.left).Set("PixR"_id, c.right);
            tool.Set("PixT"_id, c.top).Set("PixB"_id, c.bottom);
            Picture const result = tool.On(*source);
            EXPECT_EQ(ColorAt(*result, 0, 0), ColorAt(*source, c.fromX0, c.fromY0));
            EXPECT_EQ(ColorAt(*result, c.width - 1, 4), ColorAt(*source, c.fromX6, c.fromY4));
            tool.Set("Type"_id, 0).Set("ColR"_id, KColor(1.0F, 0.0F, 0.0F, 1.0F));
            EXPECT_EQ(ColorAt(*tool.On(*source), 0, c.fromY0), c.width / 2 * 2 == c.width || c.fromX0 > 0
                                                                   ? KColor(1.0F, 0.0F, 0.0F, 1.0F)
                                                                   : ColorAt(*source, 0, c.fromY0));
        }
    }
}

// Matte Cleaner.

/// Grey levels of a 5 x 5 picture, in its centre and for what surrounds it.
Picture Speck(int depth, float centre, float around)
{
    return MakePicture(depth, 5, 5, [&](int x, int y) { return Grey(x == 2 && y == 2 ? centre : around); });
}

TEST(MatteCleaner, TakesOutSpecks)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        ToolUnderTest tool("BF_MatteCleaner");
        ExpectNear(ColorAt(*tool.On(*Speck(depth, 1.0F, 0.0F)), 2, 2), Grey(0.0F));
        // Four differences of 0.45 are below the 2 that a threshold of 0.5 means.
        ExpectNear(ColorAt(*tool.On(*Speck(depth, 0.85F, 0.4F)), 2, 2), Grey(0.85F), 1e-5F);
        // A corner has two neighbours outside, which are black: a difference of 1.8.
        ExpectNear(ColorAt(*tool.On(*Speck(depth, 0.0F, 0.9F)), 0, 0), Grey(0.9F), 1e-5F);
        tool.Set("Thr0"_id, 0.4F);
        ExpectNear(ColorAt(*tool.On(*Speck(depth, 0.0F, 0.9F)), 0, 0), Grey(0.45F), 2e-5F);
        tool.Set("Thr0"_id, 1.0F).Set("Thr1"_id, 1.0F);
        ExpectNear(ColorAt(*tool.On(*Speck(depth, 1.0F, 0.0F)), 2, 2), Grey(1.0F));
    }
}

TEST(MatteCleaner, RingsOpenByTheirScaledThresholds)
{
    struct Case {
        float normal, fine;
        int count; // neighbours in the mean
    };
    // Each ring in a grey of its own: 0 beside, 0.2 at the corners, 0.4 beyond; the centre is 1.
    Case const cases[] = {{0.13F, 1.0F, 4}, {0.12F, 1.0F, 8}, {1.0F, 0.051F, 4}, {1.0F, 0.049F, 20}};
    for (Case const& each : cases) {
        SCOPED_TRACE(each.count);
        Picture const source = MakePicture(kDepthFloat, 5, 5, [](int x, int y) {
            int const d = std::abs(x - 2) + std::abs(y - 2),
                      most = std::max(std::abs(x - 2), std::abs(y - 2));
            return Grey(d == 0 ? 1.0F : d == 1 ? 0.0F : most == 1 ? 0.2F : 0.4F);
        });
        ToolUnderTest tool("BF_MatteCleaner");
        tool.Set("Thr1"_id, each.normal).Set("Thr2"_id, each.fine);
        float const mean = each.count == 4   ? 0.0F
                           : each.count == 8 ? 0.8F / 8.0F
                                             : (0.8F + 12 * 0.4F) / 20.0F;
        ExpectNear(ColorAt(*tool.On(*source), 2, 2), Grey(mean), 1e-6F);
    }
}

TEST(MatteCleaner, MeansOfIntegersTruncate)
{
    int const around[] = {10, 11, 12, 14};
    Picture const source = MakePicture(kDepthInt16, 3, 3, [&](int x, int y) {
        if (x == 1 && y == 1) return Grey(1.0F);
        return Grey(static_cast<float>(around[y == 1 ? x / 2 : 2 + y / 2]) / 65535.0F);
    });
    EXPECT_EQ(WordsAt(*ToolUnderTest("BF_MatteCleaner").On(*source), 1, 1).green, 11) << "47 / 4";
}

TEST(MatteCleaner, JoinsASoftMatteAtTheEdge)
{
    // Even pictures are their own blur: an alpha of 0.5 is all edge, one of 0.75 half, one of 1 none.
    struct Case {
        float alpha, isEdge;
    };
    for (Case each : {Case{0.5F, 1.0F}, Case{0.75F, 0.5F}, Case{1.0F, 0.0F}}) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            Picture const source =
                MakePicture(depth, 3, 3, [&](int, int) { return KColor(0.4F, 0.2F, 0.0F, each.alpha); });
            Picture const soft = MakePicture(depth, 3, 3, [](int, int) { return Grey(0.1F); });
            ToolUnderTest tool("BF_MatteCleaner");
            tool.Set("ClMa"_id, false).Set("Image With Soft Matte", soft.get());
            float const alpha = each.isEdge * 0.1F + (1.0F - each.isEdge) * each.alpha;
            ExpectNear(ColorAt(*tool.On(*source), 1, 1), {0.4F, 0.2F, 0.0F, alpha}, 3e-5F);
            tool.Set("PoMu"_id, true).Set("Over"_id, true).Set("OCol"_id, KColor(0.0F, 0.0F, 1.0F, 0.5F));
            float const part = 0.5F * each.isEdge;
            ExpectNear(ColorAt(*tool.On(*source), 1, 1),
                       {(1.0F - part) * 0.4F * alpha, (1.0F - part) * 0.2F * alpha, part, alpha}, 5e-5F);
        }
    }
    Picture const source = MakeBusyPicture(kDepthFloat, 9, 9), other = MakeBusyPicture(kDepthFloat, 8, 9);
    ToolUnderTest tool("BF_MatteCleaner");
    tool.Set("ClMa"_id, false).Set("Image With Soft Matte", other.get());
    EXPECT_TRUE(SameBytes(*tool.On(*source), *source)) << "of another size";
}

// Extend.

TEST(Extend, HoldsTheLastAcceptableValueOutward)
{
    struct Case {
        int hold;
        KRange range;
        std::vector<float> result;
    };
    // From pixel 3 to both sides.
    std::vector<float> const values{0.9F, 0.3F, 0.5F, 0.4F, 0.2F, 0.6F, 0.1F};
    Case const cases[] = {{0, {0.0F, 1.0F}, values},
                          {2, {0.0F, 1.0F}, {0.9F, 0.5F, 0.5F, 0.4F, 0.4F, 0.6F, 0.6F}},
                          {1, {0.0F, 1.0F}, {0.3F, 0.3F, 0.4F, 0.4F, 0.2F, 0.2F, 0.1F}},
                          {0, {0.25F, 0.55F}, {0.3F, 0.3F, 0.5F, 0.4F, 0.4F, 0.4F, 0.4F}},
                          {0, {0.5F, 1.0F}, {0.9F, 0.5F, 0.5F, 0.0F, 0.0F, 0.6F, 0.6F}}};
    for (Case const& each : cases) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            for (int channel : {0, 4, 5}) {
                Picture const row = GreyRow(depth, values);
                ToolUnderTest tool("BF_Extend");
                tool.Set("Strt"_id, KVector2(3.9F, 0.0F)).Set("ThCh"_id, channel);
                tool.Set("Hold"_id, each.hold).Set("Range low", each.range);
                ExpectRow(*tool.On(*row), each.result, 1e-5F);

                Picture const column = MakePicture(
                    depth, 2, 7, [&](int, int y) { return Grey(values[static_cast<std::size_t>(y)]); });
                tool.Set("Strt"_id, KVector2(0.0F, 3.9F)).Set("Dire"_id, 1);
                Picture const result = tool.On(*column);
                for (int y = 0; y < 7; ++y)
                    EXPECT_NEAR(ColorAt(*result, 1, y).red, each.result[static_cast<std::size_t>(y)], 1e-5F);
            }
        }
    }
}

TEST(Extend, EachChannelHoldsItsOwn)
{
    Picture const source = MakePicture(kDepthFloat, 2, 1, [](int x, int) {
        return x == 0 ? KColor(0.5F, 0.1F, 0.5F, 1.0F) : KColor(0.2F, 0.9F, 0.6F, 0.5F);
    });
    ToolUnderTest tool("BF_Extend");
    tool.Set("Strt"_id, KVector2(-5.0F, 0.0F));
    EXPECT_EQ(ColorAt(*tool.On(*source), 1, 0), KColor(0.5F, 0.9F, 0.6F, 1.0F));
    tool.Set("ThCh"_id, 0);
    EXPECT_EQ(ColorAt(*tool.On(*source), 1, 0), KColor(0.5F, 0.1F, 0.5F, 1.0F)) << "red holds them all";
}

// Cut and Bleed.

TEST(CutAndBleed, CutsAndBleedsBesideTheEdge)
{
    // Even pictures are their own blurs. The matte has c = 0.25 in alpha, so B = 2 (2 x 0.75 x 0.25) = 0.75.
    KColor const color(0.4F, 0.2F, 0.1F, 0.6F), solid(1.0F, 0.5F, 0.0F, 1.0F);
    auto const scaled = [](float f, KColor c) { return c *= f; };
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const source = MakePicture(depth, 8, 6, [&](int, int) { return color; });
        Picture const matte =
            MakePicture(depth, 4, 3, [](int, int) { return KColor(0.1F, 0.05F, 0.3F, 0.25F); });
        ToolUnderTest tool("BF_CutAndBleed");
        EXPECT_TRUE(SameBytes(*tool.On(*source), *source)) << "nothing to cut with";

        auto const result = [&] { return ColorAt(*tool.On(*source), 5, 2); };
        tool.Set("Cutting image", matte.get()).Set("Brig"_id, 2.0F).Set("Blnd"_id, 0.5F);
        ExpectNear(result(), scaled(0.5F * 0.25F + 0.75F, color), 5e-5F);
        tool.Set("CutO"_id, 0.0F);
        ExpectNear(result(), scaled(0.5F + 0.75F, color), 5e-5F);
        tool.Set("CutO"_id, 0.5F).Set("ChIn"_id, true); // 1 - c = 0.75, so K = 0.5 (1 - 0.125)
        ExpectNear(result(), scaled(0.4375F + 0.75F, color), 5e-5F);
        tool.Set("Type"_id, 0).Set("ColR"_id, solid); // the bleed's alpha is 0.6
        ExpectNear(result(), scaled(0.4375F, color) + scaled(0.6F * 0.75F, solid), 5e-5F);
        // The sum of 0.3 and 0.05 is not halved: B = 2 (2 x 0.65 x 0.35) = 0.91, K = 0.5 (1 - 0.175).
        tool.Set("Chan"_id, 4).Set("Type"_id, 1);
        ExpectNear(result(), scaled(0.4125F + 0.91F, color), depth == kDepthFloat ? 5e-5F : 1e-4F);
    }
}

// Find.

TEST(Find, MarksRectanglesOfItsSize)
{
    // Bright rectangles of 6 x 4, and one that is a row too low to be found.
    auto const isIn = [](int x, int y, int left, int low, int w, int h) {
        return x >= left && x < left + w && y >= low && y < low + h;
    };
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const source = MakePicture(depth, 40, 24, [&](int x, int y) {
            return Grey(isIn(x, y, 5, 5, 6, 4) || isIn(x, y, 20, 12, 6, 4) || isIn(x, y, 30, 4, 6, 3) ? 0.8F
                                                                                                      : 0.3F);
        });
        Picture const result = ToolUnderTest("BF_Find").On(*source);
        for (int y = 0; y < 24; ++y)
            for (int x = 0; x < 40; ++x) {
                float blue = 0.0F;
                // The softness is one row.
                for (auto [left, low] : {std::pair(5, 5), std::pair(20, 12)}) {
                    if (isIn(x, y, left, low - 1, 6, 6)) blue = std::max(blue, 0.5F);
                    if (isIn(x, y, left, low, 6, 4)) blue = 1.0F;
                }
                ASSERT_NEAR(ColorAt(*result, x, y).blue, blue, 1e-5F) << x << ", " << y;
            }
        EXPECT_EQ(ColorAt(*result, 7, 5), KColor(1.0F, 0.0F, 1.0F, 0.0F)) << "the lower line";
        EXPECT_EQ(ColorAt(*result, 7, 8), KColor(0.0F, 1.0F, 1.0F, 0.0F)) << "the upper line";
        EXPECT_EQ(ColorAt(*result, 5, 8), KColor(1.0F, 1.0F, 1.0F, 0.0F)) << "the left line meets the upper";
        EXPECT_EQ(ColorAt(*result, 7, 6), KColor(0.0F, 0.0F, 1.0F, 0.0F));
    }
    Picture const plain = MakePicture(kDepthFloat, 30, 30, [](int, int) { return Grey(0.5F); });
    Picture const black =
        MakePicture(kDepthFloat, 30, 30, [](int, int) { return KColor(0.0F, 0.0F, 0.0F, 0.0F); });
    EXPECT_TRUE(SameBytes(*ToolUnderTest("BF_Find").On(*plain), *black));
}

} // namespace
} // namespace ombrelune
