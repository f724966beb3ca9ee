#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "image/KRandomStream.h"
#include "tests/framework/Expect.h"

namespace ombrelune::test {
namespace {

TEST(Painterly, TakesTheMeanOfOneStepOfLuminanceUnderTheBrush)
{
    // A radius of 90 720ths of 8 pixels is 1 pixel. Around pixel 3: 0.9, 0.64, 0.66.
    Picture const row = GreyRow(kDepthInt16, {0, 0, 0.9F, 0.64F, 0.66F, 0.1F, 0.1F, 0.7F});
    ToolUnderTest painterly("BF_Painterly");
    painterly.Set("Radi"_id, 90.0F).Set("Step"_id, 10);
    auto const red = [&](int mode, int x) {
        return ColorAt(*painterly.Set("Mode"_id, mode).On(*row), x, 0).red;
    };
    EXPECT_NEAR(red(0, 3), 0.65F, 4e-5F) << "two of three lie in the step from 0.6 to 0.7";
    EXPECT_NEAR(red(1, 4), 0.1F, 4e-5F);
    EXPECT_NEAR(red(2, 4), 0.65F, 4e-5F);
    EXPECT_NEAR(red(2, 3), 0.9F, 4e-5F);
    EXPECT_NEAR(red(0, 7), 0.7F, 4e-5F) << "the border repeats";
    Picture const even =
        MakePicture(kDepthInt16, 2, 1, [](int x, int) { return Grey(x == 0 ? 0.2F : 0.8F); });
    ToolUnderTest custom("BF_Painterly");
    Picture const brush = GreyRow(kDepthInt16, {1, 1}); // the pixel and the one before it
    custom.Set("Type"_id, 2).Set<void*>(2U, brush.get());
    EXPECT_NEAR(ColorAt(*custom.On(*even), 1, 0).red, 0.2F, 4e-5F) << "the darker of two equal steps";
}

TEST(Painterly, LeavesConstantPicturesAndTinyBrushesAlone)
{
    for (int type : {0, 1, 2}) { // a custom brush that is missing is a square
        for (float radius : {0.0F, 9.0F, 1e30F}) {
            ToolUnderTest painterly("BF_Painterly");
            painterly.Set("Type"_id, type).Set("Radi"_id, radius);
            Picture const plain = Plain(kDepthInt16, KColor(0.2F, 0.4F, 0.6F, 0.5F), 6, 3);
            EXPECT_TRUE(SameBytes(*painterly.On(*plain), *plain)) << type << ' ' << radius;
            Picture const busy = MakeBusyPicture(kDepthInt16, 6, 3);
            if (radius == 0.0F) {
                EXPECT_TRUE(SameBytes(*painterly.On(*busy), *busy)) << type;
            }
        }
    }
}

TEST(Bevel, LightsAnOpaquePictureByTheHeightOfTheLightAlone)
{
    // The light of (-0.5, -0.5, 0.2), where the frame is square; its z is 0.2 / sqrt(0.54).
    float const z = 0.2F / std::sqrt(0.54F);
    for (int depth : {kDepthInt16, kDepthFloat}) {
        ToolUnderTest bevel("BF_Bevel");
        ExpectNear(ColorAt(*bevel.On(*Plain(depth, KColor(0.5F, 1, 0.2F, 1), 8, 8)), 3, 3),
                   KColor(0.5F * z, z, 0.2F * z, 1), 4e-5);
        // Alpha rises by 1 / 7 to the right, so the slope looks to the left; z is 8 times 7.2 / 8 / 0.1.
        Picture const ramp = MakePicture(
            depth, 8, 8, [](int x, int) { return KColor(0.5F, 0.5F, 0.5F, static_cast<float>(x) / 7); });
        auto const lit = [&](float x) {
            return ColorAt(*bevel.Set("LiPo"_id, KVector2(x, 0.5F)).On(*ramp), 4, 4).red;
        };
        EXPECT_NEAR(lit(0.25F), 0.190153F, 4e-5F);
        EXPECT_NEAR(lit(0.75F), 0.181220F, 4e-5F);
        bevel.Set("BeSX"_id, 0.0F).Set("BeSY"_id, 9.0F);
        EXPECT_TRUE(SameBytes(*bevel.On(*ramp), *ramp)) << "locked to a size of 0";
    }
}

TEST(Plastic, CombinesTheHighlightOfAFlatFilm)
{
    // Flat, so d is the z of the light, 0.5: halfway from 0.4 to 0.6.
    KColor const under(0.4F, 0.2F, 0.8F, 1), over(1, 0.5F, 0, 1);
    KColor const expected[] = {{0.7F, 0.35F, 0.4F, 1}, {0.9F, 0.45F, 0.8F, 1.5F}, {0.5F, 0.25F, 0, 0.5F}};
    for (int combine = 0; combine < 3; ++combine) {
        ToolUnderTest plastic("BF_Plastic");
        plastic.Set("PlCo"_id, combine).Set("PlCR"_id, over).Set("PlRL"_id, KRange(0.4F, 0.6F));
        ExpectNear(ColorAt(*plastic.On(*Plain(kDepthFloat, under, 4, 4)), 1, 1), expected[combine], 1e-5);
        KColor limited = expected[combine];
        limited.alpha = std::min(limited.alpha, 1.0F);
        ExpectNear(ColorAt(*plastic.On(*Plain(kDepthInt16, under, 4, 4)), 1, 1), limited, 4e-5);
        // Equal bounds are a hard step, and a point light lies straight over the middle.
        plastic.Set("PlRL"_id, KRange(0.45F, 0.45F)).Set("PlCo"_id, 2);
        EXPECT_EQ(ColorAt(*plastic.On(*Plain(kDepthFloat, under, 4, 4)), 1, 1), over);
        plastic.Set("LiTy"_id, 1).Set("LiPo"_id, KVector2(1, 0.5F)).Set("PlRL"_id, KRange(0.99F, 0.99F));
        Picture const lit = plastic.On(*Plain(kDepthFloat, under, 4, 4));
        EXPECT_EQ(ColorAt(*lit, 2, 2), over);
        EXPECT_EQ(ColorAt(*lit, 0, 2), KColor(0, 0, 0, 0));
    }
}

TEST(Contour, MarksTheThresholdAndTheLevelsAroundIt)
{
    // Width 0.2 of 10 pixels looks one pixel to each side. One level: the threshold alone, between 0.45 and
    // 0.55. With five the sign changes two steps of 0.2 away as well, at 0.1 and 0.9.
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const ramp =
            MakePicture(depth, 10, 1, [](int x, int) { return Grey(0.05F + 0.1F * static_cast<float>(x)); });
        ToolUnderTest contour("BF_Contour");
        contour.Set("CoWH"_id, 0.2F).Set("CoLR"_id, 1.0F);
        Picture const one = contour.On(*ramp);
        for (int x = 0; x < 10; ++x)
            EXPECT_EQ(ColorAt(*one, x, 0), Grey(x == 4 || x == 5 ? 1.0F : 0.0F)) << x;
        Picture const five = contour.Set("CoLR"_id, 5.0F).On(*ramp);
        for (int x = 0; x < 10; ++x) EXPECT_EQ(ColorAt(*five, x, 0), Grey(x % 4 < 2 ? 1.0F : 0.0F)) << x;
        for (float levels : {0.0F, 1e30F, std::numeric_limits<float>::quiet_NaN()})
            EXPECT_EQ(ColorAt(*contour.Set("CoLR"_id, levels).On(*Plain(depth, Grey(0.5F))), 2, 2), Grey(0));
    }
}

TEST(Rasterize, DrawsDotsAsLargeAsTheLight)
{
    // Marks at 0.5 + i 0.5 of 21 pixels: one in the middle, radius 0.25 20 = 5 pixels on white, none on
    // black.
    for (int depth : {kDepthInt16, kDepthFloat}) {
        ToolUnderTest raster("BF_Rasterize");
        raster.Set("sSiz"_id, 0.25F).Set("sGrX"_id, 0.4F).Set("sGrY"_id, 0.6F);
        raster.Set("ShCo"_id, KColor(1, 0.5F, 0, 1));
        EXPECT_EQ(ColorAt(*raster.On(*Plain(depth, KColor(0, 0, 0, 1), 21, 21)), 10, 10), KColor(0, 0, 0, 0));
        Picture const white = raster.On(*Plain(depth, Grey(1), 21, 21));
        ExpectNear(ColorAt(*white, 14, 10), KColor(1, 0.5F, 0, 1), 2e-5);
        EXPECT_EQ(ColorAt(*white, 16, 10), KColor(0, 0, 0, 0));
        EXPECT_EQ(ColorAt(*white, 14, 14), KColor(0, 0, 0, 0)) << "outside of the circle";
        Picture const grey = raster.On(*Plain(depth, Grey(0.5F), 21, 21));
        EXPECT_GT(ColorAt(*grey, 12, 10).red, 0.9F);
        EXPECT_EQ(ColorAt(*grey, 13, 10).red, 0.0F) << "half the radius";
        raster.Set("sSiz"_id, 0.0F);
        Picture const busy = MakeBusyPicture(depth, 9, 9);
        EXPECT_TRUE(SameBytes(*raster.On(*busy), *busy));
    }
}

TEST(Rasterize, JitterIsTheRowsOwnStream)
{
    // One row, number -1 by truncation of -0.5 * 1.1 / 0.5, and seed 3: its stream is that of seed 2.
    KRandomStream random(2);
    float const place = 0.5F + (random.Random(1.0F) - 0.5F) * 0.5F;
    ToolUnderTest raster("BF_Rasterize");
    raster.Set("sSiz"_id, 0.25F)
        .Set("sGrX"_id, 0.4F)
        .Set("sGrY"_id, 1.1F)
        .Set("Cent"_id, KVector2(0.5F, 1.0F));
    raster.Set("SEED"_id, 3).Set("JPoX"_id, 1.0F).Set("sSSW"_id, 0.1F);
    Picture const result = raster.On(*Plain(kDepthFloat, Grey(1), 201, 201));
    int first = 201, last = -1;
    for (int x = 0; x < 201; ++x)
        if (ColorAt(*result, x, 100).red > 0.5F) first = std::min(first, x), last = x;
    EXPECT_NEAR((first + last) / 2.0F, place * 200.0F, 1.0F);
}

} // namespace
} // namespace ombrelune::test
