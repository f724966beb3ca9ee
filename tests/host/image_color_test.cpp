#include <cmath>

#include <gtest/gtest.h>

#include "tests/host/image_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

constexpr ColorSpaceType kSpaces[] = {kSpaceRGB, kSpaceHLS, kSpaceYUV, kSpaceYIQ,
                                      kSpaceCMY, kSpaceHSV, kSpaceXYZ, kSpaceLAB};

/// First, second and third component of one converted colour.
std::array<float, 3> Converted(std::array<float, 3> rgb, ColorSpaceType to)
{
    Ref<Image> image = MakeImage(1, 1, kDepthFloat);
    FltPixel pixel;
    pixel.Clear();
    pixel.red = rgb[0];
    pixel.green = rgb[1];
    pixel.blue = rgb[2];
    PixPtr(image.Get(), 0, 0).SetPixel(pixel);
    image->CSConvertTagList(kSpaceRGB, to, {});
    auto const result = At<FltPixel>(*image, 0, 0);
    return {result.red, result.green, result.blue};
}

TEST(ColorSpace, KnownColours)
{
    auto const f = [](double t) { return std::cbrt(t); };
    double const x = 0.4124 / 0.9505, y = 0.2126, z = 0.0193 / 1.089; // red relative to white
    struct Case {
        ColorSpaceType space;
        std::array<float, 3> rgb;
        double first, second, third;
    };
    Case const cases[] = {
        {kSpaceHLS, {1, 0, 0}, 0.0, 0.5, 1.0},
        {kSpaceHLS, {0.25F, 0.75F, 0.25F}, 1.0 / 3.0, 0.5, 0.5},
        {kSpaceHLS, {0.5F, 0.5F, 1.0F}, 2.0 / 3.0, 0.75, 1.0},
        {kSpaceHLS, {1, 0, 0.5F}, 11.0 / 12.0, 0.5, 1.0},
        {kSpaceHLS, {0.3F, 0.3F, 0.3F}, 0.0, 0.3, 0.0},
        {kSpaceHSV, {0.5F, 0.5F, 0.25F}, 1.0 / 6.0, 0.5, 0.5},
        {kSpaceHSV, {0, 0, 0}, 0.0, 0.0, 0.0},
        {kSpaceYUV, {1, 0, 0}, 0.299, 0.5 - 0.299 / 1.772, 1.0},
        {kSpaceYUV, {0, 0, 1}, 0.114, 1.0, 0.5 - 0.114 / 1.402},
        {kSpaceYUV, {0.4F, 0.4F, 0.4F}, 0.4, 0.5, 0.5},
        {kSpaceYIQ, {1, 0, 0}, 0.299, 1.0, 0.5 + 0.2115 / 1.0454},
        {kSpaceYIQ, {0, 1, 0}, 0.587, 0.5 - 0.2746 / 1.1918, 0.0},
        {kSpaceCMY, {1, 0.25F, 0}, 0.0, 0.75, 1.0},
        {kSpaceXYZ, {1, 1, 1}, 1.0, 1.0, 1.0},
        {kSpaceXYZ, {1, 0, 0}, x, y, z},
        {kSpaceLAB, {1, 1, 1}, 1.0, 0.5, 0.5},
        {kSpaceLAB, {0, 0, 0}, 0.0, 0.5, 0.5},
        {kSpaceLAB, {0.001F, 0.001F, 0.001F}, 0.001 * 24389.0 / 2700.0, 0.5, 0.5}, // the straight part
        {kSpaceLAB,
         {1, 0, 0},
         (116.0 * f(y) - 16.0) / 100.0,
         0.5 + 500.0 * (f(x) - f(y)) / 256.0,
         0.5 + 200.0 * (f(y) - f(z)) / 256.0},
    };
    for (Case const& c : cases) {
        auto const got = Converted(c.rgb, c.space);
        EXPECT_NEAR(got[0], c.first, 1e-6) << "space " << c.space;
        EXPECT_NEAR(got[1], c.second, 1e-6) << "space " << c.space;
        EXPECT_NEAR(got[2], c.third, 1e-6) << "space " << c.space;
    }
}

TEST(ColorSpace, FromAnySpaceToAnyAndBackIsTheSamePicture)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Ref<Image> image = MakeNoise(300, 3, depth, {kChannelVelocityX}); // more than one block of a row
        for (ColorSpaceType a : kSpaces) {
            Ref<Image> inA = image->CopyOfImage(false);
            inA->CSConvertTagList(kSpaceRGB, a, {});
            for (ColorSpaceType b : kSpaces) {
                if (depth == kDepthInt16 && b != kSpaceRGB) continue; // errors of several trips add up
                Ref<Image> copy = inA->CopyOfImage(false);
                copy->CSConvertTagList(a, b, {});
                copy->CSConvertTagList(b, a, {});
                copy->CSConvertTagList(a, kSpaceRGB, {});
                // A step of 16 bits grows on the way back by the slope of the space: at most 5 steps, and 13
                // for LAB, whose differences span 256 units.
                double const tolerance =
                    depth == kDepthFloat ? 1e-5 : (a == kSpaceLAB ? 13.0 : 5.0) / 65535.0;
                for (int y = 0; y < 3; ++y) {
                    for (int x = 0; x < 300; ++x) {
                        auto const before = At<FltPixel>(*image, x, y), after = At<FltPixel>(*copy, x, y);
                        for (int word = 0; word < 3; ++word)
                            ASSERT_NEAR(before.word[word], after.word[word], tolerance)
                                << a << " to " << b << " depth " << depth;
                        ASSERT_EQ(before.alpha, after.alpha);
                        ASSERT_EQ(before.Aux(kChannelVelocityX), after.Aux(kChannelVelocityX));
                    }
                }
            }
        }
    }
}

TEST(ColorSpace, ValuesBeyondTheNominalRangeComeBack)
{
    Ref<Image> image = MakeNoise(50, 1, kDepthFloat);
    for (int x = 0; x < 50; ++x) {
        auto pixel = At<FltPixel>(*image, x, 0);
        for (int word = 0; word < 3; ++word) pixel.word[word] = pixel.word[word] * 5.0F - 1.0F;
        PixPtr(image.Get(), x, 0).SetPixel(pixel);
    }
    for (ColorSpaceType space : kSpaces) {
        if (space == kSpaceHLS) continue; // has no colour left at lightness 1
        Ref<Image> copy = image->CopyOfImage(false);
        copy->CSConvertTagList(kSpaceRGB, space, {});
        copy->CSConvertTagList(space, kSpaceRGB, {});
        for (int x = 0; x < 50; ++x)
            for (int word = 0; word < 3; ++word)
                ASSERT_NEAR(At<FltPixel>(*copy, x, 0).word[word], At<FltPixel>(*image, x, 0).word[word], 1e-4)
                    << space;
    }
}

TEST(Levels, RangeContractAndGammaOfTheNamedChannels)
{
    struct Case {
        double contract, gamma;
        int low, high;
        float before;
        double after;
    };
    Case const cases[] = {
        {0.0, 1.0, 0, 65535, 0.3F, 0.3},   {0.0, 1.0, 13107, 39321, 0.3F, 0.25}, // 0.2 to 0.6
        {0.0, 2.0, 0, 65535, 0.25F, 0.5},  {0.5, 1.0, 0, 65535, 0.3F, 0.6},
        {0.5, 1.0, 0, 65535, 0.7F, 1.0},   {-0.5, 1.0, 0, 65535, 0.75F, 0.5},
        {-0.5, 1.0, 0, 65535, 0.4F, 0.0},  {1.0, 1.0, 0, 65535, 0.01F, 1.0},
        {-1.0, 1.0, 0, 65535, 0.99F, 0.0}, {0.0, 1.0, 30000, 30000, 0.9F, 1.0},
    };
    for (Case const& c : cases) {
        Ref<Image> image = MakeImage(1, 1, kDepthFloat);
        FltPixel pixel;
        pixel.Clear();
        pixel.red = pixel.alpha = c.before;
        PixPtr(image.Get(), 0, 0).SetPixel(pixel);
        image->DoLevels(c.contract, c.gamma, c.low, c.high, 3, 3);
        EXPECT_NEAR(At<FltPixel>(*image, 0, 0).alpha, c.after, 1e-6) << c.contract << " " << c.gamma;
        EXPECT_EQ(At<FltPixel>(*image, 0, 0).red, c.before);
    }
}

} // namespace
} // namespace ombrelune
