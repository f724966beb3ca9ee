#include <gtest/gtest.h>

#include "image/CombineImages.h"
#include "tests/image/kimage_helpers.h"

namespace ombrelune::test {
namespace {

Owned Flat(int width, int height, int depth, float blue, float green, float red, float alpha)
{
    Owned image(KImage::ImageFromHost(MakeImage(width, height, depth).Release(), true));
    image->Fill(KColor(red, green, blue, alpha), true);
    return image;
}

TEST(CombineImages, CopiesAndMergesWithOpacityAndTheColoursAlpha)
{
    // Expected words as fractions. Opacity 0.5; the colour's alpha is 0.4.
    struct {
        int depth;
        CombineMode mode;
        float green, alpha;
    } const cases[] = {
        {kDepthInt16, kCombineCopy, 0.2F, 0.16F},
        // 1 - 0.5 * 0.8 = 0.6 of the old one stays.
        {kDepthInt16, kCombineMerge, 0.6F * 0.5F + 0.2F, 0.6F * 1.0F + 0.16F},
        {kDepthFloat, kCombineCopy, 0.2F, 0.16F},
        // In floats the thinned alpha covers: 1 - 0.5 * 0.32 = 0.84.
        {kDepthFloat, kCombineMerge, 0.84F * 0.5F + 0.2F, 0.84F * 1.0F + 0.16F},
    };
    ChannelStyle style;
    style.opacity = 0.5F;
    style.color.alpha = 26214;
    style.floatColor.alpha = 0.4F;
    for (auto const& c : cases) {
        Owned const source = Flat(3, 2, c.depth, 0.1F, 0.4F, 0.0F, 0.8F);
        Owned const target = Flat(6, 5, c.depth, 0.0F, 0.5F, 0.0F, 1.0F);
        CombineImages(target.get(), source.get(), {2, 1, 3, 2}, c.mode, style);
        for (int y = 0; y < 5; ++y)
            for (int x = 0; x < 6; ++x) {
                bool const inside = x >= 2 && x < 5 && y >= 1 && y < 3;
                FltPixel const p = At<FltPixel>(*target, x, y);
                EXPECT_NEAR(p.green, inside ? c.green : 0.5F, 3e-5) << c.depth << c.mode;
                EXPECT_NEAR(p.alpha, inside ? c.alpha : 1.0F, 3e-5) << c.depth << c.mode;
            }
    }
}

TEST(CombineImages, AColourBeyondRangeIsWorkedInFloatsAndLimited)
{
    ChannelStyle style;
    style.floatColor.alpha = 2.0F;
    Owned const source = Flat(4, 4, kDepthInt8, 0.0F, 0.0F, 0.0F, 0.8F);
    Owned const target = Flat(4, 4, kDepthInt8, 0.0F, 0.0F, 0.0F, 0.0F);
    CombineImages(target.get(), source.get(), {-2, 1, 4, 4}, kCombineMerge,
                  style); // reaches beyond two sides
    EXPECT_EQ(At<Pixel>(*target, 0, 0).alpha, 0U);
    EXPECT_EQ(At<Pixel>(*target, 1, 1).alpha, 65535U) << "1.6 is limited";
    EXPECT_EQ(At<Pixel>(*target, 2, 1).alpha, 0U);
}

TEST(ChannelStyle, BitmapPlacesAreTurnedAndScaledAboutTheMiddle)
{
    // Twice the size, a quarter turn: what is at 0.5, 0.5 of the bitmap stays the end of the way.
    ChannelStyle style;
    style.bitmapSize = 2.0;
    style.bitmapAngle = std::acos(0.0);
    KMatrix4 const m = style.GetImageTransformInverse();
    // Moved first: (0.5, 0) becomes (1, 0.5), halved (0.5, 0.25), turned by -90 degrees (0.25, -0.5).
    KVector2 const p = m * KVector2(0.5F, 0.0F);
    EXPECT_NEAR(p.x, 0.25F, 1e-6);
    EXPECT_NEAR(p.y, -0.5F, 1e-6);
}

} // namespace
} // namespace ombrelune::test
