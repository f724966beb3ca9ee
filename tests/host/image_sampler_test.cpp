#include <cmath>

#include <gtest/gtest.h>

#include "host/image/Sampler.h"
#include "tests/host/image_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

/// Weighted mean of the four neighbours in doubles.
double Bilinear(Image const& image, int x, int y, int word, EdgeModes edges)
{
    int const column = static_cast<int>(std::floor(x / 65536.0)),
              row = static_cast<int>(std::floor(y / 65536.0));
    double const u = x / 65536.0 - column, v = y / 65536.0 - row;
    double sum = 0.0;
    for (int j = 0; j < 2; ++j)
        for (int i = 0; i < 2; ++i)
            sum += (i ? u : 1.0 - u) * (j ? v : 1.0 - v) * WordAt(image, column + i, row + j, word, edges);
    return sum;
}

TEST(Sampler, AgreesWithTheWeightedMeanAtEveryDepthAndEdge)
{
    std::mt19937 random(11);
    for (int depth : kAllDepths) {
        for (bool withAux : {false, true}) {
            Ref<Image> image = withAux ? MakeNoise(7, 5, depth, {kChannelVelocityX}) : MakeNoise(7, 5, depth);
            for (EdgeModes edges : kAllEdges) {
                for (int n = 0; n < 2000; ++n) {
                    // Two pictures' worth of outside on each side; every fourth place is whole along an axis.
                    int x = static_cast<int>(random() % (35U << 16)) - (14 << 16);
                    int y = static_cast<int>(random() % (25U << 16)) - (10 << 16);
                    if (n % 4 == 0) x &= ~0xffff;
                    if (n % 8 < 2) y &= ~0xffff;
                    Pixel integer;
                    FltPixel real;
                    Sample(*image, x, y, edges, integer);
                    Sample(*image, x, y, edges, real);
                    for (int word = 0; word < 4; ++word) {
                        double const expected = Bilinear(*image, x, y, word, edges);
                        double const scale = image->IsFloat() ? 65535.0 : 1.0;
                        // A float picture is rounded to an integer twice: once per pixel, once in the mean.
                        ASSERT_NEAR(integer.word[word], expected * scale, image->IsFloat() ? 1.01 : 0.52)
                            << "depth " << depth << " edges " << edges << " at " << x << ", " << y;
                        ASSERT_NEAR(real.word[word], expected * scale / 65535.0, 3e-7)
                            << "depth " << depth << " edges " << edges << " at " << x << ", " << y;
                    }
                }
            }
        }
    }
}

TEST(Sampler, AuxiliaryWordsAreInterpolatedInsideAndLeftAloneOutside)
{
    Ref<Image> image = MakeImage(2, 1, kDepthFloat, {kChannelVelocityX});
    for (int x = 0; x < 2; ++x) {
        FltPixel pixel;
        pixel.Clear();
        pixel.SetAux(kChannelVelocityX, x ? 6.0F : 2.0F);
        PixPtr(image.Get(), x, 0).SetPixel(pixel);
    }
    FltPixel record;
    image->SamplePixelB(16384, 0, record);
    EXPECT_EQ(record.Aux(kChannelVelocityX), 3.0F);
    image->SamplePixelW(65536 + 32768, 0, record); // half way from the last pixel to the first
    EXPECT_EQ(record.Aux(kChannelVelocityX), 4.0F);

    record.SetAux(kChannelVelocityX, 9.0F);
    record.SetAux(40, -1.0F);
    record.red = 5.0F;
    image->SamplePixelB(2 << 16, 0, record);
    EXPECT_EQ(record.red, 0.0F);
    EXPECT_EQ(record.Aux(kChannelVelocityX), 9.0F);
    EXPECT_EQ(record.Aux(40), -1.0F);
}

TEST(Sampler, ANeighbourWithoutWeightDoesNotMatter)
{
    Ref<Image> image = MakeNoise(2, 2, kDepthFloat);
    FltPixel broken;
    for (float& word : broken.word) word = std::numeric_limits<float>::infinity();
    PixPtr(image.Get(), 0, 0).SetPixel(broken);
    FltPixel record;
    image->SamplePixelW(1 << 16, 1 << 16, record); // its right and upper neighbours are the broken pixel
    EXPECT_EQ(record.red, At<FltPixel>(*image, 1, 1).red);
}

} // namespace
} // namespace ombrelune
