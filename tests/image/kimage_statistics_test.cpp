#include <gtest/gtest.h>

#include "host/value/Parallel.h"
#include "image/KImage.h"
#include "image/KLookUpTable.h"
#include "tests/image/kimage_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

Owned Black(int width, int height, int depth)
{
    Owned image = NoiseImage(width, height, depth);
    image->Clear();
    return image;
}

void Put(KImage& image, int x, int y, float red, float alpha)
{
    FltPixel p;
    p.Clear();
    p.red = red;
    p.alpha = alpha;
    image.SetPixel(x, y, p);
}

TEST(BoundingBox, HoldsEveryPixelWithAlpha)
{
    for (int depth : kAllDepths) {
        Owned const image = Black(30, 20, depth);
        EXPECT_TRUE(image->BoundingBox().IsEmpty());
        Put(*image, 3, 9, 0, 0.5F);
        Put(*image, 3, 9, 0, 0.5F);
        Put(*image, 17, 4, 0, 1);
        Put(*image, 29, 7, 1, 0); // no alpha
        Put(*image, 5, 12, 0, 0.1F);
        KImageRegion const box = image->BoundingBox();
        EXPECT_EQ(box.left, 3);
        EXPECT_EQ(box.right, 17);
        EXPECT_EQ(box.low, 4);
        EXPECT_EQ(box.high, 12);
        Put(*image, 29, 0, 0, 1);
        Put(*image, 0, 19, 0, 1);
        EXPECT_EQ(image->BoundingBox().right, 29);
        EXPECT_EQ(image->BoundingBox().left, 0);
    }
}

TEST(BoundingBox, FullPixelsReachFurtherThanFaintOnes)
{
    Owned const image = Black(30, 20, kDepthFloat);
    KVector2 low, high, unused(7, 7);
    EXPECT_FALSE(image->BoundingBox(low, high, unused, 0, {0, 1}));

    // At the top of the range a pixel counts from its own corner, further down from within: 0.25 in range is
    // the place x + 0.75 for the low end and x + 0.25 for the high end.
    Put(*image, 5, 6, 1, 0);
    Put(*image, 9, 3, 0.25F, 0);
    ASSERT_TRUE(image->BoundingBox(low, high, unused, 0, {0, 1}));
    EXPECT_NEAR(low.x, 5.0F, 1e-4F);
    EXPECT_NEAR(high.x, 9.25F, 1e-4F);
    EXPECT_NEAR(low.y, 3.75F, 1e-4F);
    EXPECT_NEAR(high.y, 7.0F, 1e-4F);
    EXPECT_EQ(unused, KVector2(7, 7));

    // A faint pixel alone: both ends meet in its middle.
    ASSERT_TRUE(image->BoundingBox(low, high, unused, 0, {0, 0.9F}));
    EXPECT_NEAR(low.x, 9.5F, 1e-4F);
    EXPECT_NEAR(high.x, 9.5F, 1e-4F);
    EXPECT_NEAR(low.y, 3.5F, 1e-4F);
    EXPECT_FALSE(image->BoundingBox(low, high, unused, 0, {1, 1})) << "the low end is not in range";
}

TEST(GetSamples, GivesMeanLeastLargestAndSum)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Owned const image = Black(8, 4, depth);
        // red (x + 8 y) / 32 and alpha 1
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 8; ++x) Put(*image, x, y, static_cast<float>(x + 8 * y) / 32.0F, 1);
        auto const red = [&](int kind, int area) {
            return image->GetSamples(kind, area, {0.5F, 0.5F}, 0.5F, 0.5F).red;
        };
        EXPECT_NEAR(red(0, 0), 15.5F / 32, 1e-5F);
        EXPECT_EQ(red(1, 0), 0.0F);
        EXPECT_NEAR(red(2, 0), 31.0F / 32, 1e-5F);
        EXPECT_NEAR(red(3, 0), 15.5F, 3e-4F);
        // columns 2 to 5 of rows 1 and 2
        EXPECT_NEAR(red(0, 1), 15.5F / 32, 1e-5F);
        EXPECT_NEAR(red(1, 1), 10.0F / 32, 1e-5F);
        EXPECT_NEAR(red(2, 1), 21.0F / 32, 1e-5F);
        EXPECT_EQ(image->GetSamples(0, 0, {}, 0, 0).alpha, 1.0F);
        EXPECT_EQ(image->GetSamples(0, 2, {}, 1, 1), KColor());
        EXPECT_EQ(image->GetSamples(0, 1, {7, 7}, 1, 1), KColor()) << "outside";
        EXPECT_NEAR(image->GetSamples(0, 1, {0, 0}, 9, 9).red, 15.5F / 32, 1e-5F) << "larger than the image";
    }
}

TEST(GetSamples, KeepsSmallPartsOfLargeSumsOnAnyNumberOfThreads)
{
    Owned const image = Black(512, 512, kDepthFloat);
    image->Fill({1, 0.1F, 0, 1}, true);
    Put(*image, 0, 0, 1 + 1024.0F, 1);
    SetThreadCount(1);
    KColor const one = image->GetSamples(0, 0, {}, 0, 0);
    SetThreadCount(3);
    KColor const three = image->GetSamples(0, 0, {}, 0, 0);
    SetThreadCount(0);
    EXPECT_EQ(one, three);
    EXPECT_EQ(one.red, 1.00390625F); // 1 + 1024 / 512 / 512
    EXPECT_EQ(one.green, static_cast<float>(0.1F * (1 - 1 / 262144.0)));
}

} // namespace
} // namespace ombrelune
