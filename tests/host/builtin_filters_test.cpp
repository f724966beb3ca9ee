#include <cmath>

#include <gtest/gtest.h>

#include "tests/host/builtin_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

TEST(Background, AProxyTellsItsFullSize)
{
    OneOperator source("Background", {.proxy = 4});
    Ref<Image> const made = source.Set("Width", 100).Set("Height", 41).Make();
    ASSERT_TRUE(made) << source.problem;
    EXPECT_EQ(made->Width(), 25);
    EXPECT_EQ(made->Height(), 10);
    EXPECT_EQ(made->attributes.GetInt(Img_OriginalWidth), 100);
    EXPECT_EQ(made->attributes.GetInt(Img_OriginalHeight), 41);
}

TEST(Crop, CutsWhatTheRectangleCovers)
{
    struct Case {
        double xOffset, yOffset, xSize, ySize;
        int width, height;
    };
    for (Case const& c : {Case{2, 1, 5, 4, 5, 4}, Case{-3, -2, 20, 12, 20, 12}, Case{4, 3, 0, 0, 7, 5},
                          Case{30, 0, 2, 2, 2, 2}}) {
        for (int depth : kAllDepths) {
            SCOPED_TRACE(testing::Message() << c.xOffset << ", " << c.yOffset << " depth " << depth);
            Ref<Image> const image = MakeNoise(11, 8, depth, {kChannelZ});
            OneOperator crop("Crop");
            crop.Picture("Input", image).Set("XOffset", c.xOffset).Set("YOffset", c.yOffset);
            Ref<Image> const result = crop.Set("XSize", c.xSize).Set("YSize", c.ySize).Make();
            ASSERT_TRUE(result) << crop.problem;
            ASSERT_EQ(result->Width(), c.width);
            ASSERT_EQ(result->Height(), c.height);
            EXPECT_EQ(result->Depth(), depth);
            for (int y = 0; y < c.height; ++y) {
                for (int x = 0; x < c.width; ++x) {
                    int const fromX = x + static_cast<int>(c.xOffset),
                              fromY = y + static_cast<int>(c.yOffset);
                    auto const made = At<FltPixel>(*result, x, y);
                    bool const isInside = fromX >= 0 && fromX < 11 && fromY >= 0 && fromY < 8;
                    FltPixel expected;
                    expected.Clear();
                    if (isInside) expected = At<FltPixel>(*image, fromX, fromY);
                    for (int w = 0; w < 4; ++w) EXPECT_EQ(made.word[w], expected.word[w]);
                    EXPECT_EQ(made.Aux(kChannelZ), expected.Aux(kChannelZ));
                }
            }
        }
    }
    OneOperator crop("Crop");
    EXPECT_FALSE(crop.Picture("Input", MakeImage(11, 8, kDepthInt8)).Set("XOffset", 11).Make());
    EXPECT_EQ(crop.problem, "Crop.XOffset = 11 leaves nothing of the picture: its side is 11");
}

TEST(Crop, CountsInPixelsOfTheFullPictureAndKeepsAFieldsShift)
{
    Ref<Image> const image = MakeNoise(25, 20, kDepthInt16); // the proxy of 100 x 80
    image->yOffset = 0.025;                                  // half a row
    OneOperator crop("Crop", {.proxy = 4});
    crop.Picture("Input", image).Set("XOffset", 17).Set("YOffset", 8).Set("XSize", 41).Set("YSize", 20);
    Ref<Image> const result = crop.Make();
    ASSERT_EQ(result->Width(), 10);
    ASSERT_EQ(result->Height(), 5);
    EXPECT_EQ(At<Pixel>(*result, 0, 0).red, At<Pixel>(*image, 4, 2).red);
    EXPECT_EQ(result->attributes.GetInt(Img_OriginalWidth), 41);
    EXPECT_EQ(result->attributes.GetInt(Img_OriginalHeight), 20);
    EXPECT_NEAR(result->yOffset * result->Height(), 0.5, 1e-12);
}

/// Button numbers of ChannelBooleans.
enum { kLeave, kRedFg, kGreenFg, kBlueFg, kAlphaFg, kRedBg, kGreenBg, kBlueBg, kAlphaBg, kBlack, kWhite };

TEST(ChannelBooleans, ReckonsChannelsByTheirNames)
{
    // Red only; background red 0.5, alpha 0.8, foreground red 0.25, alpha 0.5.
    struct Case {
        int operation, operand;
        double expected, floatExpected;
    };
    Case const cases[] = {
        {0, kRedFg, 0.25, 0.25},     {0, kAlphaBg, 0.8, 0.8}, {0, kWhite, 1, 1},
        {0, kBlack, 0, 0},           {1, kAlphaFg, 1, 1},     {1, kAlphaBg, 1, 1.3},
        {2, kRedFg, 0.25, 0.25},     {2, kAlphaBg, 0, -0.3},  {3, kRedFg, 0.125, 0.125},
        {4, kAlphaBg, 0.625, 0.625}, {4, kRedFg, 1, 2},       {4, kBlack, 0, 0},
        {5, kAlphaBg, 0.8, 0.8},     {6, kAlphaBg, 0.5, 0.5}, {7, kRedFg, 0.25, 0.25},
        {7, kAlphaBg, 0.3, 0.3},     {8, kRedFg, 0.75, 0.75}, {8, kLeave, 0.5, 0.5},
    };
    for (int depth : kAllDepths) {
        for (int foreDepth : kAllDepths) {
            for (Case const& c : cases) {
                SCOPED_TRACE(testing::Message()
                             << depth << " operation " << c.operation << " with " << c.operand);
                OneOperator op("ChannelBooleans");
                op.Picture("Background", MakeFlat(6, 4, depth, 0.5F, 0.1F, 0.2F, 0.8F));
                op.Picture("Foreground", MakeFlat(6, 4, foreDepth, 0.25F, 0.3F, 0.4F, 0.5F));
                op.Set("Operation", c.operation).Set("ToRed", c.operand);
                op.Set("ToGreen", kLeave).Set("ToBlue", kLeave).Set("ToAlpha", kLeave);
                auto const pixel = At<FltPixel>(*op.Make(), 5, 3);
                double const step = std::min(depth, foreDepth) == kDepthInt8 ? 0.0081 : 2e-3;
                EXPECT_NEAR(pixel.red, depth >= kDepthHalf ? c.floatExpected : c.expected, step);
                EXPECT_NEAR(pixel.green, 0.1, step);
                EXPECT_NEAR(pixel.alpha, 0.8, step);
            }
        }
    }
}

TEST(ChannelBooleans, SwapsTheChannelsOfOnePictureExactly)
{
    for (int depth : kAllDepths) {
        Ref<Image> const image = MakeNoise(9, 5, depth, {kChannelVelocityX});
        OneOperator op("ChannelBooleans");
        op.Picture("Background", image).Set("ToRed", kBlueFg).Set("ToBlue", kRedBg).Set("ToAlpha", kLeave);
        Ref<Image> const result = op.Make();
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 9; ++x) {
                auto const from = At<FltPixel>(*image, x, y), made = At<FltPixel>(*result, x, y);
                EXPECT_EQ(made.red, from.blue);
                EXPECT_EQ(made.green, from.green);
                EXPECT_EQ(made.blue, from.red);
                EXPECT_EQ(made.alpha, from.alpha);
                EXPECT_EQ(made.Aux(kChannelVelocityX), from.Aux(kChannelVelocityX));
            }
        }
    }
}

TEST(ChannelBooleans, ASmallForegroundLiesInTheCentreOnBlack)
{
    OneOperator op("ChannelBooleans");
    op.Picture("Background", MakeFlat(6, 4, kDepthInt8, 1, 1, 1, 1));
    op.Picture("Foreground", MakeFlat(2, 2, kDepthInt8, 1, 1, 1, 1)).Set("ToRed", kRedFg);
    Ref<Image> const result = op.Make();
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_EQ(At<Pixel>(*result, x, y).red, (x == 2 || x == 3) && (y == 1 || y == 2) ? 65535U : 0U);
}

TEST(TransformOperator, MovesThePivotToTheCentre)
{
    Ref<Image> const image = MakeNoise(20, 10, kDepthFloat);
    OneOperator op("Transform");
    op.Picture("Input", image);
    EXPECT_TRUE(SameBytes(*op.Make(), *image));
    // Three pixels to the right, two down.
    Ref<Image> const moved = op.Set("Center", 0.65, 0.3).Make();
    EXPECT_NEAR(At<FltPixel>(*moved, 10, 4).green, At<FltPixel>(*image, 7, 6).green, 1e-4);
    EXPECT_EQ(At<FltPixel>(*moved, 2, 4).green, 0.0F);
    Ref<Image> const wrapped = op.Set("Edges", 1).Make();
    EXPECT_NEAR(At<FltPixel>(*wrapped, 2, 4).green, At<FltPixel>(*image, 19, 6).green, 1e-4);

    // Half as wide by the aspect, about the left border: a pixel is the mean of two.
    OneOperator half("Transform");
    half.Picture("Input", image).Set("Center", 0.0, 0.5).Set("Pivot", 0.0, 0.5).Set("Aspect", 0.5);
    Ref<Image> const narrow = half.Make();
    EXPECT_NEAR(At<FltPixel>(*narrow, 3, 5).red,
                (At<FltPixel>(*image, 6, 5).red + At<FltPixel>(*image, 7, 5).red) / 2.0F, 1e-3);
    EXPECT_EQ(At<FltPixel>(*narrow, 12, 5).red, 0.0F);
}

TEST(BlurOperator, CountsIn720thsOfTheWidthAndKeepsChannelsThatAreOff)
{
    // One white column: a box of radius 2 (of 72 pixels 20 / 720) spreads it over 5 columns, 0.2 each.
    Ref<Image> const image = MakeFlat(72, 9, kDepthFloat, 0, 0, 0, 1);
    FltPixel white;
    white.DropAux();
    for (float& word : white.word) word = 1.0F;
    for (int y = 0; y < 9; ++y) PixPtr(image.Get(), 36, y).SetPixel(white);
    OneOperator op("Blur");
    op.Picture("Input", image)
        .Set("Filter", kBlurBox)
        .Set("XBlurSize", 20)
        .Set("YBlurSize", 0)
        .Set("Green", 0);
    Ref<Image> const result = op.Make();
    for (int x = 32; x <= 40; ++x)
        EXPECT_NEAR(At<FltPixel>(*result, x, 4).red, std::abs(x - 36) <= 2 ? 0.2 : 0.0, 1e-6) << x;
    EXPECT_EQ(At<FltPixel>(*result, 36, 4).green, 1.0F);
    EXPECT_EQ(At<FltPixel>(*result, 36, 4).alpha, 1.0F);

    // Along y there is nothing to spread. Unlocked, y alone leaves the column as it is.
    Ref<Image> const upright = op.Set("LockXY", 0).Set("XBlurSize", 0).Set("YBlurSize", 20).Make();
    EXPECT_NEAR(At<FltPixel>(*upright, 36, 4).red, 1.0, 1e-6);
    EXPECT_EQ(At<FltPixel>(*upright, 35, 4).red, 0.0F);
}

} // namespace
} // namespace ombrelune
