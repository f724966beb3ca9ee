#include <algorithm>
#include <cmath>
#include <functional>

#include <gtest/gtest.h>

#include "host/value/Parallel.h"
#include "tests/host/image_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

/// Blur with radii in pixels.
Ref<Image> Blurred(Image const& image, BlurFilter filter, double x, double y, TagList tags = {})
{
    tags.Set({Blur_Type, filter});
    tags.Set({Blur_XSize, x / image.Width()});
    tags.Set({Blur_YSize, y / image.Width()});
    return image.BlurOfImageTagList(tags);
}

/// Weighted mean along both axes with weights that are given by distance, edges repeated.
double Convolved(Image const& image, int x, int y, int word, int reach, std::function<double(int)> weight)
{
    double sum = 0.0, weights = 0.0;
    for (int j = -reach; j <= reach; ++j) {
        for (int i = -reach; i <= reach; ++i) {
            double const w = weight(i) * weight(j);
            sum += w * WordAt(image, x + i, y + j, word, kEdgeDuplicate);
            weights += w;
        }
    }
    return sum / weights;
}

/// A row of black with one pixel of 1 in its middle.
Ref<Image> Impulse(int width, float value = 1.0F)
{
    Ref<Image> image = MakeImage(width, 1, kDepthFloat);
    image->Clear();
    FltPixel pixel;
    pixel.Clear();
    pixel.red = value;
    PixPtr(image.Get(), width / 2, 0).SetPixel(pixel);
    return image;
}

TEST(Blur, BoxAndBartlettAreTheirWeightsUpToTheBorder)
{
    struct Case {
        BlurFilter filter;
        double radius;
        int reach;
        std::function<double(int)> weight;
    };
    Case const cases[] = {
        {kBlurBox, 3.0, 3, [](int) { return 1.0; }},
        {kBlurBox, 2.25, 3, [](int d) { return std::abs(d) == 3 ? 0.25 : 1.0; }},
        {kBlurBartlett, 4.0, 4, [](int d) { return 5.0 - std::abs(d); }},
        {kBlurBox, 20.0, 20, [](int) { return 1.0; }}, // wider than the picture
    };
    for (int depth : kAllDepths) {
        Ref<Image> image = MakeNoise(13, 9, depth);
        double const tolerance = depth == kDepthFloat   ? 2e-6
                                 : depth == kDepthHalf  ? 5e-4
                                 : depth == kDepthInt16 ? 0.51
                                                        : 129.0;
        for (Case const& c : cases) {
            Ref<Image> blurred = Blurred(*image, c.filter, c.radius, c.radius);
            for (int y : {0, 4, 8})
                for (int x : {0, 1, 6, 12})
                    for (int word = 0; word < 4; ++word)
                        ASSERT_NEAR(WordAt(*blurred, x, y, word, kEdgeBlack),
                                    Convolved(*image, x, y, word, c.reach, c.weight), tolerance)
                            << "depth " << depth << " filter " << c.filter << " radius " << c.radius;
        }
    }
}

TEST(Blur, TheGaussianIsCloseToOneAndHasItsVariance)
{
    Ref<Image> image = MakeNoise(24, 20, kDepthFloat);
    double const radius = 6.0, sigma = 3.0;
    Ref<Image> blurred = Blurred(*image, kBlurGaussian, radius, radius);
    auto const gauss = [&](int d) { return std::exp(-d * d / (2.0 * sigma * sigma)); };
    for (int y : {0, 3, 10, 19})
        for (int x : {0, 5, 12, 23})
            EXPECT_NEAR(At<FltPixel>(*blurred, x, y).red, Convolved(*image, x, y, kChannelRed, 15, gauss),
                        0.01);

    // Growing by fractions of a pixel, without steps.
    Ref<Image> impulse = Impulse(401);
    for (double r : {0.1, 0.5, 1.0, 3.3, 10.0, 10.01, 57.0}) {
        Ref<Image> spread = Blurred(*impulse, kBlurGaussian, r, 0.0);
        double sum = 0.0, variance = 0.0;
        for (int x = 0; x < 401; ++x) {
            double const value = At<FltPixel>(*spread, x, 0).red;
            sum += value;
            variance += value * (x - 200) * (x - 200);
        }
        EXPECT_NEAR(sum, 1.0, 1e-5);
        EXPECT_NEAR(variance, r * r / 4.0, 1e-4 * r * r + 1e-6) << "radius " << r;
    }
    Ref<Image> spread = Blurred(*impulse, kBlurGaussian, 10.0, 0.0, {{Blur_Passes, 4.0}});
    double variance = 0.0; // four times as much
    for (int x = 0; x < 401; ++x) variance += At<FltPixel>(*spread, x, 0).red * (x - 200) * (x - 200);
    EXPECT_NEAR(variance, 100.0, 0.01);
}

TEST(Blur, SoftenSharpenAndBlendAreMixesOfThePictureAndItsGaussian)
{
    Ref<Image> image = MakeNoise(17, 11, kDepthFloat);
    Ref<Image> gauss = Blurred(*image, kBlurGaussian, 4.0, 2.0);
    struct Case {
        BlurFilter filter;
        double blend, ofPicture, ofGauss;
    };
    for (Case c : {Case{kBlurSoften, 1.0, 0.5, 0.5}, Case{kBlurSharpen, 1.0, 2.0, -1.0},
                   Case{kBlurGaussian, 0.25, 0.75, 0.25}, Case{kBlurSharpen, 0.5, 1.5, -0.5}}) {
        Ref<Image> result = Blurred(*image, c.filter, 4.0, 2.0, {{Blur_Blend, c.blend}});
        for (int x = 0; x < 17; ++x)
            EXPECT_NEAR(At<FltPixel>(*result, x, 5).green,
                        c.ofPicture * At<FltPixel>(*image, x, 5).green +
                            c.ofGauss * At<FltPixel>(*gauss, x, 5).green,
                        1e-6);
    }
}

TEST(Blur, AHighlightLeavesNoTraceBeyondItsReach)
{
    Ref<Image> spread = Blurred(*Impulse(1001, 60000.0F), kBlurGaussian, 20.0, 0.0);
    EXPECT_GT(At<FltPixel>(*spread, 500, 0).red, 1000.0F);
    for (int x = 560; x < 1001; ++x) ASSERT_NEAR(At<FltPixel>(*spread, x, 0).red, 0.0F, 1e-9);
}

TEST(Blur, AnEvenPictureStaysEvenAndOneThreadDoesWhatManyDo)
{
    for (int depth : kAllDepths) {
        Ref<Image> grey = MakeImage(31, 70, depth);
        Pixel pixel;
        pixel.red = pixel.green = pixel.blue = 0x5a5a;
        pixel.alpha = 65535;
        pixel.DropAux();
        grey->Fill(pixel);
        Ref<Image> noise = MakeNoise(31, 70, depth);
        for (BlurFilter filter : {kBlurBox, kBlurSoften, kBlurBartlett, kBlurSharpen, kBlurGaussian}) {
            for (double radius : {1.5, 11.0, 500.0}) {
                Ref<Image> even = Blurred(*grey, filter, radius, radius);
                EXPECT_EQ(At<Pixel>(*even, 15, 35).red, At<Pixel>(*grey, 15, 35).red)
                    << depth << " " << filter;
                EXPECT_EQ(At<Pixel>(*even, 0, 69).alpha, 65535U);
                SetThreadCount(1);
                Ref<Image> one = Blurred(*noise, filter, radius, radius);
                SetThreadCount(3);
                Ref<Image> many = Blurred(*noise, filter, radius, radius);
                SetThreadCount(0);
                EXPECT_TRUE(SameBytes(*one, *many));
            }
        }
    }
}

} // namespace
} // namespace ombrelune
