#include <gtest/gtest.h>

#include "image/KLookUpTable.h"
#include "tests/framework/Expect.h"

namespace ombrelune::test {
namespace {

/// Values of the red channel along the first row.
std::vector<float> Reds(KImage const& picture)
{
    std::vector<float> reds;
    for (int x = 0; x < picture.Width(); ++x) reds.push_back(ColorAt(picture, x, 0).red);
    return reds;
}

void ExpectReds(Picture const& picture, std::vector<float> const& expected, float limit = 4e-5F)
{
    std::vector<float> const reds = Reds(*picture);
    ASSERT_EQ(reds.size(), expected.size());
    for (std::size_t x = 0; x < reds.size(); ++x) EXPECT_NEAR(reds[x], expected[x], limit) << x;
}

TEST(Smear, SharesAPixelByATriangleAndDarkensTheBorder)
{
    // 2 pixels to the right: weights 3, 2, 1 of 6; at the border fewer of them meet a pixel.
    for (int depth : {kDepthInt16, kDepthFloat}) {
        ToolUnderTest smear("BF_Smear");
        smear.Set("SmLe"_id, 0.5F);
        ExpectReds(smear.On(*GreyRow(depth, {1, 0, 0, 0.6F})), {0.5F, 1.0F / 3, 1.0F / 6, 0.3F});
        smear.Set("SmLe"_id, -0.5F).Set("SmNo"_id, 2.0F);
        ExpectReds(smear.On(*GreyRow(depth, {0, 0, 0, 0.6F})), {0, 0.2F, 0.4F, 0.6F});
        Picture const column =
            MakePicture(depth, 4, 3, [](int, int y) { return Grey(y == 0 ? 0.6F : 0.0F); });
        smear.Set("SmDi"_id, 1).Set("SmLe"_id, 0.5F).Set("SmNo"_id, 1.0F);
        EXPECT_NEAR(ColorAt(*smear.On(*column), 1, 2).red, 0.1F, 4e-5F);
    }
    // A curve is read from its end: entries 3, 2 and 0 of four, (int)(3 - i 3 / 3).
    KLookUpTable curve;
    curve.SetCount(4);
    curve.Entries()[3] = 8;
    curve.Entries()[1] = 2;
    ToolUnderTest smear("BF_Smear");
    smear.Set("SmLe"_id, 0.5F).Set("Shap"_id, &curve);
    ExpectReds(smear.On(*GreyRow(kDepthFloat, {1, 0, 0, 0})), {0.8F, 0, 0.2F, 0});
    curve.SetCount(4); // nothing but zeros has no sum to divide by
    ExpectReds(smear.On(*GreyRow(kDepthFloat, {1, 0, 0, 0})), {0, 0, 0, 0});
}

TEST(Flur, HandsOnFromRingToRing)
{
    // A length of 1 takes all of the ring before, so the centre is everywhere.
    ToolUnderTest flur("BF_Flur");
    flur.Set("Leng"_id, 1.0F);
    Picture const dot =
        MakePicture(kDepthInt16, 5, 5, [](int x, int y) { return Grey(x == 2 && y == 2 ? 1.0F : 0.3F); });
    Picture const all = flur.On(*dot);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 5; ++x) ExpectWords(*all, x, y, {65535, 65535, 65535, 65535});

    // q = 0.5, 1440 pixels: w = 1 - 0.5 / 2 = 0.75. The centre is pixel 0.
    std::vector<float> row(1440, 0.0F);
    row[0] = 0.8F;
    flur.Set("Leng"_id, static_cast<float>(1.0 - std::pow(0.5, 0.1))).Set("Cent"_id, KVector2());
    auto const reds = [&](Picture const& picture) { return ColorAt(*picture, 2, 0).red; };
    EXPECT_NEAR(reds(flur.On(*GreyRow(kDepthInt16, row))), 0.8F * 0.75F * 0.75F, 6e-5F);
    // Far outside, and nowhere, the picture is still walked at once.
    for (float far : {1e30F, -1e30F, std::nanf("")}) {
        flur.Set("Cent"_id, KVector2(far, 0.5F));
        EXPECT_NEAR(ColorAt(*flur.On(*Plain(kDepthInt16, Grey(0.5F), 40, 20)), 3, 3).red, 0.5F, 1e-3F) << far;
    }
}

TEST(Flur, SlantsBetweenTheTwoPixelsOfTheRingBefore)
{
    // From the middle of 5 x 5, pixel (4, 3): the ray crosses column 3 at 2.5, half pixel (3, 2), half (3,
    // 3). Both of those take the centre over; the shift of half a pixel divides by 1.25 when axial with
    // power 1.
    Picture const dot =
        MakePicture(kDepthInt16, 5, 5, [](int x, int y) { return Grey(x == 2 && y == 2 ? 1.0F : 0.0F); });
    ToolUnderTest flur("BF_Flur");
    flur.Set("Leng"_id, 1.0F).Set("Shap"_id, 2).Set("Expo"_id, 1.0F);
    Picture const result = flur.On(*dot);
    EXPECT_NEAR(ColorAt(*result, 3, 2).red, 1.0F, 4e-5F);
    EXPECT_NEAR(ColorAt(*result, 3, 3).red, 0.5F, 4e-5F) << "a corner goes over by a whole pixel";
    EXPECT_NEAR(ColorAt(*result, 4, 3).red, (0.5F + 0.25F) / 1.25F, 6e-5F);
}

TEST(Microwaves, GatherBrightnessOutwardAndLieOverThePicture)
{
    // At full length w is 1: the rays are running sums of a tenth of the light.
    for (int depth : {kDepthInt16, kDepthFloat}) {
        ToolUnderTest waves("BF_Microwaves");
        waves.Set("Leng"_id, 1.0F).Set("ExGa"_id, 0.1F).Set("Cent"_id, KVector2()).Set("ExBl"_id, 0.0F);
        Picture const row = GreyRow(depth, {0.5F, 1, 0, 1});
        ExpectReds(waves.On(*row), {0.05F, 0.15F, 0.15F, 0.25F}, 1e-4F);
        waves.Set("ExBl"_id, 0.5F); // the rays' alpha hides what it lies over
        ExpectReds(waves.On(*row), {0.05F + 0.25F * 0.95F, 0.15F + 0.5F * 0.85F, 0.15F, 0.25F + 0.5F * 0.75F},
                   1e-4F);
        // A mask keeps the light of the first pixel alone.
        Picture const mask = GreyRow(depth, {1, 0, 0, 0});
        waves.Set("ExBl"_id, 0.0F).Set("MMat"_id, static_cast<void*>(mask.get()));
        ExpectReds(waves.On(*row), {0.05F, 0.05F, 0.05F, 0.05F}, 1e-4F);
    }
    // A pixel that is no number does not fill the picture behind it.
    ToolUnderTest waves("BF_Microwaves");
    waves.Set("Leng"_id, 1.0F).Set("ExGa"_id, 0.1F).Set("Cent"_id, KVector2()).Set("ExBl"_id, 0.0F);
    ExpectReds(waves.On(*GreyRow(kDepthFloat, {1, std::nanf(""), 1})), {0.1F, 0, 0.1F}, 1e-6F);
}

ToolUnderTest ParallelBeams()
{
    // Towards the left, where x is smaller: an angle of 0 reads along (-1, 0).
    ToolUnderTest beams("BF_Beams");
    beams.Set("ExPe"_id, 0).Set("ExAn"_id, 0.0F).Set("ExEd"_id, 0.0F).Set("ExGa"_id, 0.5F);
    return beams.Set("ExCR"_id, KColor(1.0F, 0.5F, 0.0F, 1.0F));
}

TEST(Beams, FallOffAlongTheLineByTheCurve)
{
    // Half of 8 pixels; the line's steps lie at 1/4, 1/2, 3/4 and 1 of it, and the last one is not below its
    // end. What is left of the way is the weight: 3/4 / 2, 2/4 / 2, 1/4 / 2. Pixels without light behind them
    // keep "Blend Original" parts.
    Picture const row = GreyRow(kDepthInt16, {0, 1, 0, 0, 0, 0, 0, 0});
    ToolUnderTest beams = ParallelBeams().Set("ExLe"_id, 0.5F).Set("ExBl"_id, 0.0F);
    ExpectReds(beams.On(*row), {0, 0, 0.375F, 0.25F, 0.125F, 0, 0, 0}, 1e-4F);
    Picture const result = beams.On(*row);
    EXPECT_NEAR(ColorAt(*result, 2, 0).green, 0.1875F, 1e-4F);
    EXPECT_NEAR(ColorAt(*result, 2, 0).alpha, 0.375F, 1e-4F);
    // Laid over: the pixel keeps what the rays' alpha leaves.
    Picture const grey = GreyRow(kDepthInt16, {0, 1, 0.5F, 0, 0, 0, 0, 0});
    EXPECT_NEAR(ColorAt(*beams.Set("ExBl"_id, 1.0F).On(*grey), 2, 0).red, 0.375F + 0.5F * 0.625F, 2e-4F);
    // The light's own colour, and one that is too bright.
    beams.Set("ExCT"_id, 1).Set("ExGa"_id, 1e30F).Set("ExBl"_id, 0.0F);
    EXPECT_EQ(WordsAt(*beams.On(*row), 3, 0), KColor32(65535, 65535, 65535, 65535));
}

TEST(Beams, LeaveWhatTheyMissAndPicturesWithoutLight)
{
    Picture const clear = Plain(kDepthInt16, KColor(0.5F, 0.5F, 0.5F, 0.0F), 8, 4);
    EXPECT_TRUE(SameBytes(*ParallelBeams().On(*clear), *clear));
    // Light in the right column alone, rays that look to the left: most pixels keep their full value, since
    // their line misses the light's box (one pixel wider than the light), and the others fade.
    Picture const right =
        MakePicture(kDepthInt16, 8, 1, [](int x, int) { return KColor(0.5F, 0, 0, x == 7); });
    ToolUnderTest beams = ParallelBeams().Set("ExBl"_id, 0.5F).Set("ExLe"_id, 0.25F);
    ExpectReds(beams.On(*right), {0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.5F, 0.25F, 0.25F}, 1e-4F);
}

TEST(Beams, RunRadiallyFromTheirCentreAndStopThere)
{
    // The centre is pixel 4 of 8 in the middle row of three, light at 6 and at 2: rays go outward on each
    // side. Without adapting every ray is as long as the picture is wide, so only the stop keeps them apart.
    Picture const row =
        MakePicture(kDepthInt16, 8, 3, [](int x, int y) { return Grey(y == 1 && (x == 6 || x == 2)); });
    for (float adapt : {0.0F, 1.0F}) {
        ToolUnderTest beams = ParallelBeams().Set("ExPe"_id, 1).Set("ExLe"_id, 1.0F).Set("ExBl"_id, 0.0F);
        beams.Set("ExLA"_id, adapt).Set("ExCe"_id, KVector2(0.5F, 0.125F));
        Picture const result = beams.On(*row);
        auto const red = [&](int x) { return ColorAt(*result, x, 1).red; };
        EXPECT_GT(red(7), 0.1F) << adapt;
        EXPECT_GT(red(1), 0.1F) << adapt;
        EXPECT_EQ(red(3), 0.0F) << adapt << ": its light lies beyond the centre";
    }
}

} // namespace
} // namespace ombrelune::test
