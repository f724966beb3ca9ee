#include <gtest/gtest.h>

#include "host/image/PixPtr.h"
#include "host/value/Parallel.h"

namespace ombrelune {
namespace {

/// A picture of one row whose red holds the given numbers; alpha is 1.
Ref<Image> RowOf(int depth, std::vector<float> const& reds)
{
    Ref<Image> image = NewImageTagList({{Img_Width, static_cast<int>(reds.size())},
                                        {Img_Height, 1},
                                        {Img_Depth, depth},
                                        {Img_Channel, +kChannelZ}});
    PixPtr out(image.Get(), 0, 0);
    FltPixel pixel;
    pixel.Clear();
    pixel.alpha = 1.0F;
    for (float red : reds) {
        pixel.red = red;
        pixel.SetAux(kChannelZ, 100.0F * red);
        out >>= pixel;
    }
    return image;
}

void ExpectReds(Image const& image, std::vector<float> const& expected, float tolerance)
{
    ASSERT_EQ(image.Width(), static_cast<int>(expected.size()));
    for (int y = 0; y < image.Height(); ++y) {
        PixPtr in(const_cast<Image*>(&image), 0, y);
        FltPixel pixel;
        for (float red : expected) {
            pixel >>= in;
            EXPECT_NEAR(pixel.red, red, tolerance) << "row " << y;
            EXPECT_NEAR(pixel.Aux(kChannelZ), 100.0F * red, 100.0F * tolerance) << "row " << y;
            EXPECT_NEAR(pixel.alpha, 1.0F, tolerance);
        }
    }
}

TEST(Resize, ShrinkingAveragesTheCoveredIntervalGrowingIsLinear)
{
    for (int depth : {kDepthInt16, kDepthHalf, kDepthFloat}) {
        // Rounding of what goes in and of what comes out.
        float const tolerance = depth == kDepthFloat ? 1e-6F : depth == kDepthHalf ? 5e-4F : 1.6e-5F;
        Ref<Image> const image = RowOf(depth, {0.1F, 0.3F, 0.5F, 0.9F, 0.2F});
        // Two intervals of 2.5 pixels: (0.1 + 0.3 + 0.5 / 2) / 2.5 and (0.5 / 2 + 0.9 + 0.2) / 2.5.
        ExpectReds(*image->ResizeOfImage(2, 1), {0.26F, 0.54F}, tolerance);
        ExpectReds(*image->ResizeOfImage(1, 3), {0.4F}, tolerance);
        // Twice as many: a quarter from each neighbour, the border repeated.
        ExpectReds(*RowOf(depth, {0.2F, 1.0F})->ResizeOfImage(4, 2), {0.2F, 0.4F, 0.8F, 1.0F}, tolerance);
        ExpectReds(*image->ResizeOfImage(5, 1), {0.1F, 0.3F, 0.5F, 0.9F, 0.2F}, tolerance);
    }
}

TEST(Resize, WhatLiesOutsideAnIntervalDoesNotLeakIn)
{
    float const infinity = std::numeric_limits<float>::infinity();
    Ref<Image> const image = RowOf(kDepthFloat, {1.0F, 0.5F, infinity, 0.25F});
    Ref<Image> const half = image->ResizeOfImage(2, 1);
    FltPixel pixel;
    PixPtr(half.Get(), 0, 0).GetPixel(pixel);
    EXPECT_EQ(pixel.red, 0.75F);
    Ref<Image> const same = image->ResizeOfImage(4, 1);
    PixPtr(same.Get(), 1, 0).GetPixel(pixel);
    EXPECT_EQ(pixel.red, 0.5F);
}

TEST(Resize, KeepsFormatAndRefusesBadSizes)
{
    Ref<Image> image =
        NewImageTagList({{Img_Width, 300}, {Img_Height, 171}, {Img_Depth, kDepthInt8}, {Img_XScale, 2.0}});
    image->attributes.Set({Img_Field, 1});
    for (int y = 0; y < image->Height(); ++y)
        for (std::size_t i = 0; i < image->RowBytes(); ++i)
            image->MainRow(y)[i] = static_cast<std::byte>(i * 7 + y * 13);
    SetThreadCount(1);
    Ref<Image> const one = image->ResizeOfImage(133, 200);
    SetThreadCount(4);
    Ref<Image> const many = image->ResizeOfImage(133, 200);
    SetThreadCount(0);
    EXPECT_EQ(one->Depth(), kDepthInt8);
    EXPECT_EQ(one->XScale(), 2.0);
    EXPECT_EQ(one->attributes.GetInt(Img_Field), 1);
    for (int y = 0; y < 200; ++y) ASSERT_EQ(std::memcmp(one->MainRow(y), many->MainRow(y), 133 * 4), 0) << y;
    EXPECT_FALSE(image->ResizeOfImage(0, 5));
    EXPECT_FALSE(image->ResizeOfImage(5, Image::kMaxSide + 1));
}

} // namespace
} // namespace ombrelune
