#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "host/value/Parallel.h"
#include "tests/host/builtin_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

double Limited(int depth, double value) { return depth >= kDepthHalf ? value : std::clamp(value, 0.0, 1.0); }

/// One word by the formulas of the operators as Porter and Duff give them.
double Merged(int operation, double blend, double b, double backAlpha, double f, double foreAlpha)
{
    double const results[] = {f + b * (1.0 - foreAlpha), f * backAlpha, f * (1.0 - backAlpha),
                              f * backAlpha + b * (1.0 - foreAlpha),
                              f * (1.0 - backAlpha) + b * (1.0 - foreAlpha)};
    return b + (results[operation] - b) * blend;
}

TEST(Merge, EveryOperatorAndDepthAsWrittenOut)
{
    // The foreground is smaller along x and larger along y: 7 x 9 in the centre of 12 x 6, from (2, -2) on.
    constexpr int width = 12, height = 6, foreWidth = 7, foreHeight = 9, left = 2, low = -2;
    for (int backDepth : kAllDepths) {
        for (int foreDepth : kAllDepths) {
            for (int operation = 0; operation < 5; ++operation) {
                double const blend = operation % 2 ? 0.3 : 1.0;
                SCOPED_TRACE(testing::Message() << backDepth << " " << foreDepth << " " << operation);
                Ref<Image> const back = MakeNoise(width, height, backDepth, {}, 3);
                Ref<Image> const fore = MakeNoise(foreWidth, foreHeight, foreDepth, {}, 4);
                OneOperator merge("Merge");
                merge.Picture("Background", back).Picture("Foreground", fore);
                merge.Set("Operator", operation).Set("Blend", blend);
                Ref<Image> const result = merge.Make();
                ASSERT_TRUE(result) << merge.problem;
                for (int y = 0; y < height; ++y) {
                    for (int x = 0; x < width; ++x) {
                        FltPixel f;
                        f.Clear();
                        int const fx = x - left, fy = y - low;
                        if (fx >= 0 && fx < foreWidth && fy >= 0 && fy < foreHeight)
                            f = At<FltPixel>(*fore, fx, fy);
                        auto const b = At<FltPixel>(*back, x, y), r = At<FltPixel>(*result, x, y);
                        for (int w = 0; w < 4; ++w) {
                            double const expected = Limited(
                                backDepth, Merged(operation, blend, b.word[w], b.alpha, f.word[w], f.alpha));
                            ASSERT_NEAR(r.word[w], expected, RoundingOf(backDepth, expected))
                                << x << ", " << y << " word " << w;
                        }
                    }
                }
            }
        }
    }
}

TEST(Merge, LeavesTheBackgroundWhereNothingCoversIt)
{
    for (int depth : kAllDepths) {
        Ref<Image> const back = MakeNoise(31, 17, depth, {kChannelZ});
        Ref<Image> const fore = MakeNoise(9, 9, depth);
        EXPECT_TRUE(SameBytes(*OneOperator("Merge").Picture("Background", back).Make(), *back));
        OneOperator merge("Merge");
        merge.Picture("Background", back).Picture("Foreground", fore);
        EXPECT_TRUE(SameBytes(*merge.Set("Blend", 0.0).Make(), *back));
        EXPECT_TRUE(SameBytes(*merge.Set("Blend", 1.0).Set("Size", 0.0).Make(), *back));
        EXPECT_TRUE(SameBytes(*merge.Set("Size", 1.0).Set("Center", 9.0, -1e12).Make(), *back));
        Ref<Image> const clear = MakeFlat(9, 9, depth, 0, 0, 0, 0);
        EXPECT_TRUE(SameBytes(*merge.Picture("Foreground", clear).Set("Center", 0.2, 0.7).Make(), *back));
    }
    OneOperator merge("Merge");
    EXPECT_FALSE(merge.Make());
    EXPECT_EQ(merge.problem, "Merge.Background has no picture: connect an output to it");
}

TEST(Merge, AnOpaqueForegroundHidesWhatIsNotANumber)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    OneOperator merge("Merge");
    merge.Picture("Background", MakeFlat(4, 4, kDepthFloat, nan, nan, nan, 1.0F));
    merge.Picture("Foreground", MakeFlat(4, 4, kDepthFloat, 0.5F, 0.25F, 2.0F, 1.0F));
    auto const pixel = At<FltPixel>(*merge.Make(), 2, 2);
    EXPECT_EQ(pixel.red, 0.5F);
    EXPECT_EQ(pixel.blue, 2.0F);
}

TEST(Merge, MovesByWholePixelsWithoutFiltering)
{
    // 5 on 8 in the centre starts at 1; 3/8 further right at 4, one eighth down at 0.
    Ref<Image> const back = MakeFlat(8, 8, kDepthInt16, 0, 0, 0, 0), fore = MakeNoise(5, 5, kDepthInt16);
    OneOperator merge("Merge");
    merge.Picture("Background", back).Picture("Foreground", fore).Set("Center", 0.875, 0.375);
    Ref<Image> const result = merge.Make();
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            for (int w = 0; w < 4; ++w)
                EXPECT_EQ(At<Pixel>(*result, x, y).word[w],
                          x >= 4 && y < 5 ? At<Pixel>(*fore, x - 4, y).word[w] : 0U);
    // Half a pixel to the right: the mean of two neighbours, and half of the border at each end.
    Ref<Image> const half = merge.Set("Center", 0.5625, 0.5).Make();
    auto const at = [&](int x) { return x < 0 || x > 4 ? 0.0F : At<FltPixel>(*fore, x, 2).green; };
    for (int x = 0; x < 8; ++x)
        EXPECT_NEAR(At<FltPixel>(*half, x, 3).green, (at(x - 1) + at(x - 2)) / 2.0F, 1e-4) << x;
}

TEST(Merge, TurnsAndScalesAboutTheForegroundsCentre)
{
    Ref<Image> const back = MakeFlat(40, 30, kDepthFloat, 0, 0, 0, 0), fore = MakeNoise(8, 8, kDepthFloat);
    OneOperator merge("Merge");
    merge.Picture("Background", back).Picture("Foreground", fore);
    Ref<Image> const turned = merge.Set("Angle", 90.0).Set("Center", 0.75, 0.5).Make();
    // Centred it starts at (16, 11); a quarter of the width further at 26. Counter-clockwise (x, y) comes
    // from (y, 7 - x).
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            EXPECT_NEAR(At<FltPixel>(*turned, 26 + x, 11 + y).red, At<FltPixel>(*fore, y, 7 - x).red, 1e-3);

    // Half the size: each pixel the mean of four. Twice the size: the sum over the picture is four times.
    Ref<Image> const halved = merge.Set("Angle", 0.0).Set("Center", 0.5, 0.5).Set("Size", 0.5).Make();
    auto const at = [&](int x, int y) { return At<FltPixel>(*fore, x, y).red; };
    EXPECT_NEAR(At<FltPixel>(*halved, 18, 13).red, (at(0, 0) + at(1, 0) + at(0, 1) + at(1, 1)) / 4.0F, 1e-3);
    auto const sum = [](Image const& image) {
        double total = 0.0;
        for (int y = 0; y < image.Height(); ++y)
            for (int x = 0; x < image.Width(); ++x) total += At<FltPixel>(image, x, y).red;
        return total;
    };
    EXPECT_NEAR(sum(*merge.Set("Size", 2.0).Make()), 4.0 * sum(*fore), 0.02);
}

TEST(Merge, OneThreadAndTwoAndProxies)
{
    Ref<Image> const back = MakeNoise(101, 57, kDepthHalf), fore = MakeNoise(40, 50, kDepthInt8);
    OneOperator merge("Merge");
    merge.Picture("Background", back).Picture("Foreground", fore);
    merge.Set("Center", 0.3, 0.6).Set("Angle", 20.0).Set("Size", 1.3);
    SetThreadCount(1);
    Ref<Image> const one = merge.Make();
    SetThreadCount(2);
    EXPECT_TRUE(SameBytes(*merge.Make(), *one));
    SetThreadCount(0);

    // A proxy of both pictures gives the proxy of the result, but for the filters at the border.
    Ref<Image> const wide = MakeFlat(160, 120, kDepthFloat, 0.2F, 0.1F, 0, 1);
    Ref<Image> const patch = MakeFlat(60, 40, kDepthFloat, 1, 0, 0.5F, 1);
    OneOperator full("Merge"), proxy("Merge", {.proxy = 4});
    full.Picture("Background", wide).Picture("Foreground", patch).Set("Center", 0.7, 0.4);
    proxy.Picture("Background", wide->ResizeOfImage(40, 30)).Set("Center", 0.7, 0.4);
    proxy.Picture("Foreground", patch->ResizeOfImage(15, 10));
    Ref<Image> const expected = full.Make()->ResizeOfImage(40, 30), made = proxy.Make();
    double difference = 0.0;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x)
            difference += std::abs(At<FltPixel>(*made, x, y).red - At<FltPixel>(*expected, x, y).red);
    // 15 is odd on 40: half a pixel along each of the two upright borders of 10, by a step of 0.8.
    EXPECT_LE(difference, 2 * 10 * 0.5 * 0.8 + 0.01);
}

} // namespace
} // namespace ombrelune
