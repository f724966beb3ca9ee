#include <gtest/gtest.h>

#include "tests/image/kimage_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

TEST(ConvertSpace, KnowsItsNumbersAndTakesAnyOtherAsRgb)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Owned const image = NoiseImage(9, 7, depth), before(image->CopyOf());
        image->ConvertSpace(3, 3);
        image->ConvertSpace(0, 99);
        image->ConvertSpace(-1, 8);
        EXPECT_TRUE(SameBytes(*image, *before));
        image->ConvertSpace(42, 4); // cyan is what red lacks
        EXPECT_NEAR(At<FltPixel>(*image, 4, 3).red, 1 - At<FltPixel>(*before, 4, 3).red, 1e-6F);
        image->ConvertSpace(4, 0);
        EXPECT_NEAR(At<FltPixel>(*image, 4, 3).red, At<FltPixel>(*before, 4, 3).red, 1e-6F);
    }
}

TEST(BlurOf, CountsIn720thsAndKeepsOtherChannels)
{
    Owned const image = NoiseImage(72, 40, kDepthFloat);
    Owned const both(image->BlurOf(20, 20, kBlurBox, 15, 2.0, 0.5));
    EXPECT_TRUE(SameBytes(*both, *Owned(image->BlurOf(20, -1, kBlurBox, 15, 2.0, 0.5)))) << "y as x";
    EXPECT_FALSE(SameBytes(*both, *Owned(image->BlurOf(20, 0, kBlurBox, 15, 2.0, 0.5))));
    Owned const host(KImage::ImageFromHost(image->FImage()
                                               ->BlurOfImageTagList({{Blur_Type, kBlurBox},
                                                                     {Blur_Red, true},
                                                                     {Blur_Green, true},
                                                                     {Blur_Blue, true},
                                                                     {Blur_Alpha, true},
                                                                     {Blur_XSize, 20.0 / 720},
                                                                     {Blur_YSize, 20.0 / 720},
                                                                     {Blur_Passes, 2.0},
                                                                     {Blur_Blend, 0.5}})
                                               .Release(),
                                           true));
    EXPECT_TRUE(SameBytes(*both, *host));
    for (int bit = 0; bit < 4; ++bit) {
        Owned const one(image->BlurOf(20, 20, kBlurBox, 1 << bit, 2.0, 0.5));
        for (int channel = 0; channel < 4; ++channel) {
            auto const& expected = channel == bit ? both : image;
            EXPECT_EQ(PixelGetChannel(At<FltPixel>(*one, 30, 20), channel),
                      PixelGetChannel(At<FltPixel>(*expected, 30, 20), channel));
        }
    }
}

TEST(TransformOf, CopiesWhenNothingMoves)
{
    Owned const image = NoiseImage(12, 8, kDepthFloat);
    // The pivot alone changes nothing, and neither does what is below the float's step.
    Owned const same(image->TransformOf(0.5 + 1e-8, 0.5, 0.1, 0.9, 1.0, 1.0, -1e-8, kEdgeBlack));
    EXPECT_TRUE(SameBytes(*same, *image));
    for (EdgeModes edges : kAllEdges) {
        Owned const moved(image->TransformOf(0.25, 0.75, 0.5, 0.5, 1.5, 0.5, 30.0, edges));
        Owned const host(KImage::ImageFromHost(
            image->FImage()->TransformOf(0.25, 0.75, 0.5, 0.5, 1.5, 0.5, 30.0, edges).Release(), true));
        EXPECT_TRUE(SameBytes(*moved, *host));
        EXPECT_FALSE(SameBytes(*moved, *image));
    }
}

} // namespace
} // namespace ombrelune
