// Tools that take a picture apart, and the order in which parts appear.

#include <limits>
#include <numeric>
#include <vector>

#include <gtest/gtest.h>

#include "framework/KGrow.h"
#include "image/KRandom.h"
#include "tests/framework/ToolUnderTest.h"

namespace ombrelune::test {

namespace {

std::vector<float> OutsOf(int count, KGrowData const& data)
{
    KGrow const grow(count, data);
    std::vector<float> outs;
    for (int i = 0; i < count; ++i) {
        float in, out;
        grow.Get(i, in, out);
        outs.push_back(out);
    }
    return outs;
}

} // namespace

TEST(Grow, SweepsInTheOrderOfItsWaves)
{
    using Outs = std::vector<float>;
    auto const data = [](int type, float high, int seeds = 1) {
        KGrowData made;
        made.type = type;
        made.range.high = high;
        made.seeds = seeds;
        return made;
    };
    EXPECT_EQ(OutsOf(3, data(0, 1.0F)), (Outs{1, 1, 1}));
    EXPECT_EQ(OutsOf(4, data(0, 0.625F)), (Outs{1, 1, 0.5F, 0}));        // 2.5 of 4
    EXPECT_EQ(OutsOf(5, data(1, 0.5F)), (Outs{1, 0.5F, 0, 0, 0.5F}));    // 0 1 2 2 1, 1.5 of 3
    EXPECT_EQ(OutsOf(5, data(0, 0.5F, 2)), (Outs{1, 0.5F, 1, 0.5F, 0})); // 0 1 0 1 2

    KGrowData moved = data(0, 0.625F);
    moved.start = -1; // a list back but for one: the last but two places on
    EXPECT_EQ(OutsOf(4, moved), (Outs{0, 1, 1, 0.5F}));
    KGrowData together = data(0, 0.3F);
    together.overlap = 1.0F;
    EXPECT_EQ(OutsOf(3, together), (Outs{0.3F, 0.3F, 0.3F}));
    KGrowData steps = data(0, 0.5F);
    steps.length = 0.0F;
    EXPECT_EQ(OutsOf(4, steps), (Outs{1, 1, 0, 0})); // 1.5 of 3
}

TEST(Grow, DrawsAsTheProcessWideStreamDoes)
{
    constexpr int kCount = 7;
    for (bool const oneByOne : {false, true}) {
        KRandomSeed(1234);
        std::vector<int> order(kCount);
        std::iota(order.begin(), order.end(), 0);
        for (int i = 0; i < kCount; ++i) {
            auto const item = static_cast<std::size_t>(i);
            if (oneByOne)
                std::swap(order[item], order[item + static_cast<std::size_t>(KRandomInt(kCount - i))]);
            else order[item] = KRandomInt(kCount * 10) % kCount;
        }
        KGrowData data;
        data.type = 2;
        data.seed = 1234;
        data.oneByOne = oneByOne;
        int const first = *std::min_element(order.begin(), order.end()),
                  last = *std::max_element(order.begin(), order.end()) + 1;
        for (int shown = 0; shown <= last - first; ++shown) {
            data.range.high = static_cast<float>(shown) / static_cast<float>(last - first);
            std::vector<float> const outs = OutsOf(kCount, data);
            for (std::size_t i = 0; i < kCount; ++i)
                EXPECT_NEAR(outs[i], order[i] < first + shown ? 1.0F : 0.0F, 1e-5F);
        }
    }
}

TEST(Grow, StrangeValuesDoNoHarm)
{
    float in = 5.0F, out = 5.0F;
    KGrow(0, {}).Get(0, in, out);
    EXPECT_EQ(in, 0.0F);
    EXPECT_EQ(out, 1.0F);
    KGrowData data;
    data.seeds = std::numeric_limits<int>::max();
    data.start = data.seed = std::numeric_limits<int>::min();
    data.seedsJitter = 1e30F;
    data.lengthJitter = std::numeric_limits<float>::quiet_NaN();
    for (data.type = -1; data.type < 4; ++data.type) EXPECT_EQ(OutsOf(1000, data).size(), 1000U);
}

TEST(Pack, FillsOnlyWhatIsFree)
{
    auto const isEmpty = [](KImage const& image) {
        return SameBytes(image, *Plain(image.Depth(), KColor(), image.Width(), image.Height()));
    };
    Picture const full = Plain(kDepthFloat, Grey(0.5F), 40, 30),
                  free = Plain(kDepthInt16, Grey(1.0F), 40, 30);
    EXPECT_TRUE(isEmpty(*ToolUnderTest("BF_Pack").On(*full))); // a half is forbidden too
    EXPECT_TRUE(isEmpty(*ToolUnderTest("BF_Pack").Set("MaxS"_id, 0.0F).On(*free)));
    EXPECT_FALSE(isEmpty(*ToolUnderTest("BF_Pack").On(*free)));
    EXPECT_TRUE(isEmpty(*ToolUnderTest("BF_Pack").Set("RTRL"_id, KRange(0.0F, 0.0F)).On(*free)));

    // The left half is free: marks end a pixel after it at most, where their soft edge does.
    Picture const half =
        MakePicture(kDepthInt16, 80, 60, [](int x, int) { return Grey(x < 40 ? 1.0F : 0.0F); });
    for (int shape = 0; shape < 3; ++shape) {
        Picture const packed = ToolUnderTest("BF_Pack").Set("Shap"_id, shape).On(*half);
        int used = 0;
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 40; ++x) used += ColorAt(*packed, x, y).alpha > 0.5F;
            for (int x = 42; x < 80; ++x) ASSERT_EQ(ColorAt(*packed, x, y).alpha, 0.0F) << shape << ' ' << x;
        }
        EXPECT_GT(used, 40 * 60 / 3) << shape;
    }
    // A shape that is hardly there is a circle.
    Picture const nothing = Plain(kDepthInt16, KColor(), 8, 8);
    Picture const asShape = ToolUnderTest("BF_Pack").Set("Shap"_id, 3).Set("Shape", nothing.get()).On(*half);
    EXPECT_TRUE(SameBytes(*asShape, *ToolUnderTest("BF_Pack").On(*half)));
}

TEST(Fragments, FadesPartsInTurn)
{
    Picture const source = GreyRow(kDepthInt16, {0.4F, 0, 0.8F, 0.8F, 0, 0.6F});
    ToolUnderTest tool("BF_Fragments");
    EXPECT_EQ(Letters(*tool.On(*source)), "d.hh.f");
    // 1.5 of 3 parts.
    EXPECT_EQ(Letters(*tool.Set("RTRL"_id, KRange(0.0F, 0.5F)).On(*source)), "d.dd..");
    EXPECT_EQ(Letters(*tool.Set("RTRL"_id, KRange(0.5F, 1.0F)).On(*source)), "..dd.f");
    EXPECT_EQ(Letters(*tool.On(*Plain(kDepthFloat, KColor(), 3, 1))), "...");
}

TEST(Reassemble, CopiesRegionsTheLastOnTop)
{
    Picture const source = FromLetters(kDepthFloat, ".abc/def.");
    ToolUnderTest tool("BF_Reassemble");
    auto const region = [&](std::uint32_t i, std::vector<int> const& values) {
        char const* const ids[] = {"SoT0", "SoX0", "SoY0", "SoW0", "SoH0", "DeT0",
                                   "DeX0", "DeY0", "DeS0", "DeW0", "DeH0"};
        for (std::size_t n = 0; n < values.size(); ++n) {
            auto const* id = reinterpret_cast<unsigned char const*>(ids[n]);
            tool.Set((std::uint32_t{id[0]} << 24 | std::uint32_t{id[1]} << 16 | std::uint32_t{id[2]} << 8 |
                      id[3]) +
                         i,
                     values[n]);
        }
    };
    tool.Set("CrWi"_id, 5).Set("CrHe"_id, 2).Set("Coun"_id, 2);
    region(0, {0, 0, 0, 3, 1, 0, 0, 0, 0}); // the lower row, where it is
    region(1, {3, 4, 2, 2, 1, 2, 2, 2,
               0}); // the end of the upper row, up to (4, 2) there, from (2, 2) downwards
    EXPECT_EQ(Letters(*Resized(tool, *source)), "..bc./def..");
    region(1, {0, 1, 1, 1, 1, 0, 1, 0, 1, 2, 2}); // one pixel stretched, over the first region
    EXPECT_EQ(Letters(*Resized(tool, *source)).substr(0, 2), ".a");
    EXPECT_EQ(Letters(*Resized(tool, *source)).substr(6, 2), "da");
    region(1, {0, 1, 1, 1, 1, 0, 1, 0, 1, 0, 2}); // no width: nothing
    EXPECT_EQ(Letters(*Resized(tool, *source)), "...../def..");
    constexpr int kMost = std::numeric_limits<int>::max(), kLeast = std::numeric_limits<int>::min();
    for (int const corner : {0, 3})
        for (int const huge : {kMost, kLeast}) {
            region(1, {corner, huge, huge, huge, huge, corner, huge, huge, 1, huge, huge});
            // As large as it lies far away: it begins at 0.
            char const* const expected = corner == 3 && huge == kMost ? ".abc./def.." : "...../def..";
            EXPECT_EQ(Letters(*Resized(tool, *source)), expected);
        }
}

} // namespace ombrelune::test
