#include <gtest/gtest.h>

#include "host/value/Parallel.h"
#include "tests/host/image_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

TEST(Transform, WholeStepsMovePixelsAndFourQuarterTurnsGiveTheSameBytes)
{
    for (int depth : kAllDepths) {
        Ref<Image> image = MakeNoise(16, 16, depth, {kChannelVelocityX});
        Ref<Image> moved =
            image->TransformOf(0.5 + 3.0 / 16.0, 0.5 - 2.0 / 16.0, 0.5, 0.5, 1.0, 1.0, 0.0, kEdgeBlack);
        EXPECT_EQ(At<FltPixel>(*moved, 8, 5).red, At<FltPixel>(*image, 5, 7).red);
        EXPECT_EQ(At<FltPixel>(*moved, 8, 5).Aux(kChannelVelocityX),
                  At<FltPixel>(*image, 5, 7).Aux(kChannelVelocityX));
        EXPECT_EQ(At<FltPixel>(*moved, 2, 5).red, 0.0F);
        EXPECT_EQ(At<FltPixel>(*moved, 2, 5).Aux(kChannelVelocityX), 0.0F);
        Ref<Image> left = image->TransformOf(0.25, 0.5, 0.5, 0.5, 1.0, 1.0, 0.0, kEdgeBlack);
        EXPECT_EQ(At<FltPixel>(*left, 14, 5).Aux(kChannelVelocityX), 0.0F);
        Ref<Image> wrapped = image->TransformOf(3.5, -1.5, 0.5, 0.5, 1.0, 1.0, 0.0, kEdgeWrap);
        EXPECT_TRUE(SameBytes(*wrapped, *image));

        // Counter-clockwise with row 0 at the bottom: the right middle goes to the upper middle.
        Ref<Image> turned = image->TransformOf(0.5, 0.5, 0.5, 0.5, 1.0, 1.0, 90.0, kEdgeDuplicate);
        EXPECT_NEAR(At<FltPixel>(*turned, 6, 14).red, At<FltPixel>(*image, 14, 9).red, 1e-4);
        // A quarter turn is exact up to the sixteen bits of a place.
        for (int i = 0; i < 3; ++i)
            turned = turned->TransformOf(0.5, 0.5, 0.5, 0.5, 1.0, 1.0, 90.0, kEdgeDuplicate);
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 16; ++x)
                ASSERT_NEAR(At<FltPixel>(*turned, x, y).green, At<FltPixel>(*image, x, y).green,
                            depth == kDepthHalf ? 1e-3 : 1e-4);
    }
}

TEST(Transform, ThePivotLandsOnThePlaceAndShrinkingAverages)
{
    Ref<Image> image = MakeNoise(32, 16, kDepthFloat);
    // Half the size about the lower left corner: every pixel is the mean of four.
    Ref<Image> half = image->TransformOf(0.0, 0.0, 0.0, 0.0, 0.5, 0.5, 0.0, kEdgeBlack);
    for (int y = 0; y < 8; ++y) {
        for (int x = 0; x < 16; ++x) {
            float mean = 0.0F;
            for (int i = 0; i < 4; ++i) mean += At<FltPixel>(*image, 2 * x + i % 2, 2 * y + i / 2).red / 4.0F;
            ASSERT_NEAR(At<FltPixel>(*half, x, y).red, mean, 1e-6);
        }
    }
    EXPECT_EQ(At<FltPixel>(*half, 20, 4).alpha, 0.0F);
    // Three times the size: the pixel at the pivot stays in the middle of its nine.
    Ref<Image> large =
        image->TransformOf(4.5 / 32.0, 7.5 / 16.0, 10.5 / 32.0, 3.5 / 16.0, 3.0, 3.0, 0.0, kEdgeBlack);
    EXPECT_NEAR(At<FltPixel>(*large, 4, 7).red, At<FltPixel>(*image, 10, 3).red, 1e-5);
    EXPECT_NEAR(At<FltPixel>(*large, 7, 7).red, At<FltPixel>(*image, 11, 3).red, 1e-4);
    Ref<Image> nothing = image->TransformOf(0.5, 0.5, 0.5, 0.5, 0.0, 1.0, 0.0, kEdgeDuplicate);
    EXPECT_EQ(At<FltPixel>(*nothing, 16, 8).alpha, 0.0F);
}

TEST(Transform, WidePixelsTurnInSquareUnits)
{
    // Twice as wide as high: a quarter turn takes four pixels to the right into eight upwards.
    Ref<Image> image = NewImageTagList(
        {{Img_Width, 33}, {Img_Height, 33}, {Img_Depth, kDepthFloat}, {Img_XScale, 2.0}, {Img_YScale, 1.0}});
    image->Clear();
    FltPixel white;
    white.Clear();
    white.red = 1.0F;
    for (int x : {19, 20, 21}) PixPtr(image.Get(), x, 16).SetPixel(white);
    Ref<Image> turned = image->TransformOf(0.5, 0.5, 0.5, 0.5, 1.0, 1.0, 90.0, kEdgeBlack);
    EXPECT_NEAR(At<FltPixel>(*turned, 16, 24).red, 1.0F, 1e-4);
}

} // namespace
} // namespace ombrelune
