#include <gtest/gtest.h>

#include "host/image/PixPtr.h"
#include "host/image/StoredPixel.h"

namespace ombrelune {
namespace {

TEST(PixelCodec, SixteenBitsSurviveEveryDepthThatCanHoldThem)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Ref<Image> image = NewImageTagList({{Img_Width, 65536}, {Img_Height, 1}, {Img_Depth, depth}});
        ASSERT_TRUE(image);
        PixPtr out(image.Get(), 0, 0), in(image.Get(), 0, 0);
        Pixel pixel;
        for (std::uint32_t v = 0; v < 65536; ++v) {
            pixel.red = pixel.green = pixel.blue = pixel.alpha = v;
            out >>= pixel;
        }
        for (std::uint32_t v = 0; v < 65536; ++v) {
            pixel >>= in;
            ASSERT_EQ(pixel.green, v) << "depth " << depth;
        }
    }
}

TEST(PixelCodec, HalvesLimitLargeNumbersInsteadOfLosingThemToInfinity)
{
    float const huge = std::numeric_limits<float>::max();
    Imath::half stored[4];
    StorePixel(Float4{huge, -huge, 65520.0F, std::numeric_limits<float>::quiet_NaN()}, stored);
    EXPECT_EQ(stored[0].bits(), 0x7BFF) << "65504";
    EXPECT_EQ(stored[1].bits(), 0xFBFF);
    EXPECT_EQ(stored[2].bits(), 0x7BFF) << "the least that would be rounded to infinity";
    EXPECT_TRUE(stored[3].isNan());
    EXPECT_EQ(PixelCodec<Imath::half>::FromFloat(huge).bits(), 0x7BFF);
}

TEST(PixPtr, AuxiliaryChannelsTravelWithTheRecord)
{
    Ref<Image> image = NewImageTagList({{Img_Width, 3},
                                        {Img_Height, 2},
                                        {Img_Depth, kDepthInt8},
                                        {Img_Channel, kChannelVelocityX},
                                        {Img_Channel, kChannelVelocityY}});
    ASSERT_TRUE(image);
    image->Clear();
    Pixel pixel;
    pixel.Clear();
    pixel.red = 65535;
    pixel.SetAux(kChannelVelocityY, -2.5F);
    Pixel const copy = pixel;
    PixPtr cursor(image.Get());
    cursor.SetPixel(2, 1, copy);
    FltPixel read;
    cursor.GetPixel(2, 1, read);
    EXPECT_EQ(read.red, 1.0F);
    EXPECT_EQ(read.Aux(kChannelVelocityX), 0.0F);
    EXPECT_EQ(read.Aux(kChannelVelocityY), -2.5F);
}

TEST(Image, RefusesSizesOutOfBounds)
{
    EXPECT_FALSE(NewImageTagList({{Img_Width, 0}, {Img_Height, 4}}));
    EXPECT_FALSE(NewImageTagList({{Img_Width, 200000}, {Img_Height, 200000}}));
}

} // namespace
} // namespace ombrelune
