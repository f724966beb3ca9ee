#include <gtest/gtest.h>

#include <cmath>

#include "host/value/Parallel.h"
#include "image/PlaneSampling.h"
#include "tests/image/kimage_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

TEST(KImageSampling, PlacesAreTruncatedTo16Bits)
{
    Owned const image = NoiseImage(9, 7, kDepthFloat);
    float const places[][2] = {{2.25F, 3.5F}, {-0.3F, 1.0F}, {8.7F, 6.9F}, {1e30F, -1e30F}};
    for (auto const& [x, y] : places) {
        double const limit = 2147483647.0;
        auto const fixed = [&](float v) {
            return static_cast<int>(std::trunc(std::min(std::max(v * 65536.0, -limit - 1), limit)));
        };
        for (EdgeModes edges : kAllEdges) {
            FltPixel p, expected;
            image->GetSamplePixel(x, y, p, edges);
            Sample(*image->FImage(), fixed(x), fixed(y), edges, expected);
            for (int i = 0; i < 4; ++i) EXPECT_EQ(p.word[i], expected.word[i]) << x << ", " << y;
        }
    }
}

TEST(KImageSampling, AWholeImageAreaIsItsMean)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Owned const image = NoiseImage(12, 10, depth);
        image->PrepareAreaSampling();
        KColor const mean = image->GetSamples(0, 0, {}, 0, 0);
        for (EdgeModes edges : kAllEdges) {
            FltPixel p;
            // pixel 0 reaches from -0.5 to 0.5
            image->GetSampleArea(-0.5F, -0.5F, 11.5F, -0.5F, 11.5F, 9.5F, -0.5F, 9.5F, p, edges);
            EXPECT_NEAR(p.red, mean.red, 2e-5F);
            EXPECT_NEAR(p.alpha, mean.alpha, 2e-5F);
        }
    }
}

TEST(OffsetOf, MovesByPartsOfTheSize)
{
    for (int depth : kAllDepths) {
        Owned const image = NoiseImage(12, 8, depth);
        for (EdgeModes edges : kAllEdges) {
            Owned const same(image->OffsetOf({0.5F, 0.5F}, edges));
            EXPECT_TRUE(SameBytes(*image, *same));
            // a quarter of the width to the right, half of the height down
            Owned const moved(image->OffsetOf({0.75F, 0}, edges));
            for (int y = 0; y < 8; ++y) {
                for (int x = 0; x < 12; ++x) {
                    Pixel expected;
                    image->GetSample(x - 3, y + 4, expected, edges);
                    ASSERT_EQ(At<Pixel>(*moved, x, y).green, expected.green) << x << ", " << y;
                }
            }
        }
    }
}

TEST(PlaneSampling, NearestTruncatesTowardZero)
{
    Owned const image = NoiseImage(10, 5, kDepthInt16);
    auto const at = [&](double x, double y, EdgeModes edges) {
        return GetImagePixelValueAt(x, y, KMatrix4(), image.get(), kSampleNearest, edges, 10, 5).red;
    };
    EXPECT_EQ(at(0.35, 0.5, kEdgeBlack), At<Pixel>(*image, 3, 2).red);
    EXPECT_EQ(at(-0.05, 0.5, kEdgeBlack), At<Pixel>(*image, 0, 2).red) << "-0.5 is column 0";
    EXPECT_EQ(at(-0.15, 0.5, kEdgeBlack), 0U);
    EXPECT_EQ(at(-0.15, 1.3, kEdgeWrap), At<Pixel>(*image, 9, 1).red);
    EXPECT_EQ(at(-0.15, 1.3, kEdgeDuplicate), At<Pixel>(*image, 0, 4).red);
}

TEST(PlaneSampling, FollowsTheRayToThePlane)
{
    Owned const image = NoiseImage(64, 64, kDepthFloat);
    // Turned about x by an angle with cosine 0.8 and sine 0.6: z = 0.6 y / 0.8, and y' = 0.8 y - 0.6 z = 0.35
    // y.
    KMatrix4 tilted;
    tilted.RotX(std::acos(0.8F));
    FltPixel const tilt = GetImageFltPixelValueAt(0.25, 0.625, tilted, image.get(), kSampleInterpolated,
                                                  kEdgeDuplicate, 64, 64);
    FltPixel expected;
    image->SamplePixelD(16, 14, expected);
    EXPECT_NEAR(tilt.green, expected.green, 1e-3F);

    // Element 10 of 0 counts as 1: z = -(x + 1/8), and x' = x + z is -1/8 everywhere.
    KMatrix4 const flat(1, 0, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0.125F, 1);
    FltPixel const seen =
        GetImageFltPixelValueAt(0.75, 0.5, flat, image.get(), kSampleNearest, kEdgeWrap, 64, 64);
    EXPECT_EQ(seen.red, At<FltPixel>(*image, 56, 32).red);
}

TEST(PlaneSampling, AreaIsTheMeanOfAPixelOfThePicture)
{
    Owned const image = NoiseImage(40, 20, kDepthFloat);
    image->PrepareAreaSampling();
    // A picture of 10 by 10 pixels: each covers 4 by 2 pixels of the image, here 16 to 19 and 8 to 9.
    float mean = 0;
    for (int y = 8; y < 10; ++y)
        for (int x = 16; x < 20; ++x) mean += At<FltPixel>(*image, x, y).red / 8;
    for (EdgeModes edges : kAllEdges) {
        FltPixel const p =
            GetImageFltPixelValueAt(0.4375, 0.425, KMatrix4(), image.get(), kSampleArea, edges, 10, 10);
        EXPECT_NEAR(p.red, mean, 1e-4F) << edges;
        // The same through a matrix that moves by one whole image.
        KMatrix4 const moved = KMatrix4().Move(1, -2, 0);
        FltPixel const q =
            GetImageFltPixelValueAt(0.4375, 0.425, moved, image.get(), kSampleArea, edges, 10, 10);
        if (edges == kEdgeWrap) {
            EXPECT_NEAR(q.red, mean, 1e-4F);
        }
        if (edges == kEdgeBlack) {
            EXPECT_EQ(q.red, 0.0F);
        }
    }
}

TEST(PlaneSampling, TheWrappingShortCutAgreesWithTheHost)
{
    Owned const image = NoiseImage(7, 5, kDepthFloat);
    image->PrepareAreaSampling();
    int const w = 7 << 16, h = 5 << 16, d = 40000;
    // within one repetition, across in y, across in x, across in both, far below 0
    int const corners[][2] = {{d, d},  {d, h - d}, {w - d, d}, {w - d, h - d}, {-9 * w + d, -4 * h + d},
                              {-w, -h}};
    for (auto const& [x, y] : corners) {
        int const x2 = x + 2 * d, y2 = y + 3 * d;
        FltPixel fast, slow;
        ImageSampleAreaW(image.get(), x, y, x, y2, x2, y, x2, y2, fast);
        image->SampleAreaW(x, y, x, y2, x2, y, x2, y2, slow);
        for (int i = 0; i < 4; ++i) EXPECT_NEAR(fast.word[i], slow.word[i], 1e-5F) << x << ", " << y;
    }
}

} // namespace
} // namespace ombrelune
