#include <atomic>

#include <gtest/gtest.h>

#include "framework/KEffectWarp.h"
#include "tests/framework/ToolUnderTest.h"

namespace ombrelune {
namespace {

using namespace test;

/// Moves the picture by whole or part pixels; declines every destination on request.
struct Shift : KEffectWarp {
    Shift(float pixelsX, float pixelsY) : dx(pixelsX), dy(pixelsY) {}
    bool F(KVector2& source, KVector2 const& destination) override
    {
        ++calls;
        auto const scaleX = static_cast<float>(width - 1),
                   scaleY = static_cast<float>(height - 1) * frameAspect;
        source = {destination.x + dx / scaleX, destination.y + dy / scaleY};
        return finds;
    }
    float dx, dy;
    bool finds = true;
    std::atomic<int> calls = 0;
};

// 17 x 17 gives scales of 16, so that places are exact. Columns differ by 1 / 16, rows do not.
Picture Columns(int depth)
{
    return MakePicture(depth, 17, 17, [](int x, int) {
        float const v = static_cast<float>(x) / 16.0F;
        return KColor(v, v, v, 1.0F);
    });
}

KProcessImageData WithFiltering(KImage const& source, int filtering, int edges)
{
    KProcessImageData data = DataFor(source);
    data.filtering = filtering;
    data.edges = edges;
    return data;
}

TEST(WarpEngine, FilteringNoneTruncatesTowardZero)
{
    Picture const source = Columns(kDepthFloat);
    Shift effect(-0.5F, 0.0F);
    Picture const result = Apply(effect, *source, WithFiltering(*source, 0, 0));
    EXPECT_EQ(ColorAt(*result, 0, 3).alpha, 1.0F) << "the place -0.5 reads column 0, which is not outside";
    EXPECT_EQ(ColorAt(*result, 5, 3).red, 4.0F / 16.0F);
}

TEST(WarpEngine, FilteringPixelInterpolates)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const source = Columns(depth);
        Shift effect(0.5F, 0.0F);
        Picture const result = Apply(effect, *source, WithFiltering(*source, 1, 0));
        EXPECT_NEAR(ColorAt(*result, 4, 9).red, 4.5F / 16.0F, 1.0 / 65535);
        EXPECT_NEAR(ColorAt(*result, 16, 9).alpha, 0.5F, 1.0 / 65535) << "half of it lies outside";
    }
}

TEST(WarpEngine, FilteringAreaTakesTheMeanOfTheCell)
{
    // Every other column is white: a shift by half a pixel covers half of a white and half of a black one.
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const source = MakePicture(depth, 17, 17, [](int x, int) {
            auto const v = static_cast<float>(x % 2);
            return KColor(v, v, v, 1.0F);
        });
        Shift effect(0.5F, 0.25F);
        Picture const result = Apply(effect, *source, WithFiltering(*source, 2, 2));
        EXPECT_NEAR(ColorAt(*result, 7, 8).red, 0.5F, 2.0 / 65535);
        EXPECT_NEAR(ColorAt(*result, 7, 8).alpha, 1.0F, 1e-6);
        // The effect is asked for two places per pixel and two more for the left edge of each row.
        EXPECT_EQ(effect.calls, 17 * (2 * 17 + 2));
    }
}

TEST(WarpEngine, ADestinationWithoutSourceIsTransparentBlackWhateverTheEdges)
{
    for (int filtering : {0, 1, 2}) {
        Picture const source = Columns(kDepthInt16);
        Shift effect(0.0F, 0.0F);
        effect.finds = false;
        Picture const result = Apply(effect, *source, WithFiltering(*source, filtering, 1));
        EXPECT_EQ(WordsAt(*result, 8, 8), KColor32(0, 0, 0, 0)) << "filtering " << filtering;
    }
}

TEST(WarpEngine, AFailedNodeOfTheMapIsTheCornerAndNotBlack)
{
    Picture const source = MakePicture(kDepthFloat, 17, 17, [](int x, int y) {
        return x == 0 && y == 0 ? KColor(0.25F, 0.5F, 0.75F, 1.0F) : KColor(0, 0, 0, 0);
    });
    KProcessImageData data = WithFiltering(*source, 1, 0);
    data.underSample = 2;
    Shift effect(0.0F, 0.0F);
    effect.finds = false;
    EXPECT_EQ(ColorAt(*Apply(effect, *source, data), 9, 4), KColor(0.25F, 0.5F, 0.75F, 1.0F));
}

TEST(WarpEngine, UnderSamplingAsksOncePerNode)
{
    Picture const source = Columns(kDepthFloat);
    for (int u : {2, 4}) {
        for (int filtering : {1, 2}) {
            KProcessImageData data = WithFiltering(*source, filtering, 2);
            data.underSample = u;
            Shift effect(1.0F, 0.0F);
            Picture const result = Apply(effect, *source, data);
            EXPECT_EQ(effect.calls, (17 / u + 2) * (17 / u + 2));
            // A shift is linear, so the map between its nodes is exact. Mapped cells start at their pixel,
            // hence the half pixel of area sampling.
            double const expected = filtering == 1 ? 6.0 / 16 : 6.5 / 16;
            EXPECT_NEAR(ColorAt(*result, 5, 7).red, expected, 1e-5)
                << "under-sample " << u << " filtering " << filtering;
        }
    }
}

TEST(WarpEngine, TheMaskFadesTheDisplacement)
{
    Picture const source = Columns(kDepthInt16);
    Picture const mask = MakePicture(kDepthInt16, 17, 17, [](int x, int) {
        return KColor(0, 0, 0, x < 4 ? 0.0F : x < 8 ? 0.5F : 1.0F);
    });
    for (int u : {1, 2}) {
        KProcessImageData data = WithFiltering(*source, 1, 2);
        data.warpMask = mask.get();
        data.underSample = u;
        Shift effect(2.0F, 0.0F);
        Picture const result = Apply(effect, *source, data);
        EXPECT_EQ(WordsAt(*result, 3, 5), WordsAt(*source, 3, 5)) << "alpha 0 is the source pixel itself";
        // Alpha 32768 of 65535 moves by 2 x 0.5000076 pixels.
        EXPECT_NEAR(WordsAt(*result, 6, 5).red, 7.0 / 16 * 65535, 2.0);
        EXPECT_NEAR(WordsAt(*result, 10, 5).red, 12.0 / 16 * 65535, 2.0);
        int const asked = u == 1 ? 17 * 13 : 10 * 10; // places that cannot move are not asked for
        EXPECT_EQ(effect.calls, asked);
    }
}

TEST(WarpEngine, AMaskOfAnotherSizeIsFitted)
{
    Picture const source = Columns(kDepthInt16);
    Picture const mask = MakePicture(kDepthInt8, 3, 2, [](int, int) { return KColor(0, 0, 0, 0); });
    KProcessImageData data = WithFiltering(*source, 1, 0);
    data.warpMask = mask.get();
    Shift effect(3.0F, 0.0F);
    EXPECT_TRUE(SameBytes(*Apply(effect, *source, data), *source));
}

} // namespace
} // namespace ombrelune
