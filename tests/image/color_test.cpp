#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "host/image/Vector4.h"
#include "image/ColorModels.h"
#include "image/KColor.h"
#include "image/KColor32.h"
#include "image/PixelMath.h"

namespace ombrelune {
namespace {

void ExpectNear(KColor const& c, KColor const& expected)
{
    for (int i = 0; i < 4; ++i)
        EXPECT_NEAR(c.GetChannel(i), expected.GetChannel(i), 1e-6F) << "channel " << i;
}

/// Calls with every colour of a grid, as floats 0 to 1.
template <class Function> void OverGrid(int steps, Function f)
{
    auto const at = [=](int i) { return static_cast<float>(i) / static_cast<float>(steps); };
    for (int r = 0; r <= steps; ++r)
        for (int g = 0; g <= steps; ++g)
            for (int b = 0; b <= steps; ++b) f(at(r), at(g), at(b));
}

TEST(ColorModels, HandWorkedValues)
{
    struct Row {
        float r, g, b, hlsHue, lightness, hlsSaturation, hsvHue, hsvSaturation, value;
    };
    // The arcs of HSV: for the first orange, (g - b) / (r + g - 2b) / 3 = 0.5 / 1.5 / 3.
    Row const rows[] = {
        {1, 0, 0, 0, 0.5F, 1, 1, 1, 1},
        {0, 1, 0, 1 / 3.0F, 0.5F, 1, 1 / 3.0F, 1, 1},
        {0, 0, 1, 2 / 3.0F, 0.5F, 1, 2 / 3.0F, 1, 1},
        {1, 0.5F, 0, 1 / 12.0F, 0.5F, 1, 1 / 9.0F, 1, 1},
        {0.75F, 0.25F, 0.5F, 11 / 12.0F, 0.5F, 0.5F, (0.5F / 0.75F + 2) / 3, 2 / 3.0F, 0.75F},
        {0.25F, 0.25F, 0.25F, 0, 0.25F, 0, 0, 0, 0.25F},
        {0.5F, 0.75F, 1, 7 / 12.0F, 0.75F, 1, (0.5F / 0.75F + 1) / 3, 0.5F, 1},
    };
    for (Row const& row : rows) {
        float h, l, s;
        RGBtoHLS(row.r, row.g, row.b, h, l, s);
        EXPECT_NEAR(h, row.hlsHue, 1e-6F);
        EXPECT_NEAR(l, row.lightness, 1e-6F);
        EXPECT_NEAR(s, row.hlsSaturation, 1e-6F);
        RGBtoHSV(row.r, row.g, row.b, h, s, l);
        EXPECT_NEAR(h, row.hsvHue, 1e-6F);
        EXPECT_NEAR(s, row.hsvSaturation, 1e-6F);
        EXPECT_NEAR(l, row.value, 1e-6F);

        KColor const c(row.r, row.g, row.b, 1);
        bool const grey = row.hlsSaturation == 0;
        EXPECT_NEAR(c.Hue(), grey ? -1 : 360 * row.hlsHue, 1e-4F);
        EXPECT_NEAR(c.Saturation(), row.hlsSaturation, 1e-6F);
        EXPECT_NEAR(c.Brightness(), row.lightness, 1e-6F);
    }
}

TEST(ColorModels, LanesOfAVectorGiveTheBytesOfSingleFloats)
{
    HLSCorrection const corrections[] = {
        {0.1F, 0, 0, 1, 1, false}, {-0.6F, 0.2F, -0.1F, 1.5F, 0.8F, false}, {0.7F, 0, 0.3F, 0.5F, 1, true}};
    for (HLSCorrection const& correction : corrections) {
        OverGrid(12, [&](float red, float green, float blue) {
            // Lanes on different sextants, a grey and one beyond 1 among them.
            Float4 r{red, green, blue, red * 3}, g{green, blue, red, red}, b{blue, red, blue, green};
            float single[4][3];
            for (int lane = 0; lane < 4; ++lane) {
                single[lane][0] = r[lane];
                single[lane][1] = g[lane];
                single[lane][2] = b[lane];
                CorrectHLS(correction, single[lane][0], single[lane][1], single[lane][2]);
            }
            CorrectHLS(correction, r, g, b);
            for (int lane = 0; lane < 4; ++lane) {
                ASSERT_EQ(r[lane], single[lane][0]);
                ASSERT_EQ(g[lane], single[lane][1]);
                ASSERT_EQ(b[lane], single[lane][2]);
            }
        });
    }
}

TEST(KColor, InversesUndoThemselvesAndMirrorTheirQuantity)
{
    OverGrid(6, [](float r, float g, float b) {
        KColor const c(r, g, b, 0.3F);
        for (int mode = 0; mode < 4; ++mode) {
            ExpectNear(c.Inverse(mode).Inverse(mode), c);
            EXPECT_NEAR(c.Inverse(mode).Lightness(), mode == 2 ? c.Lightness() : 1 - c.Lightness(), 1e-6F);
        }
    });
    ExpectNear(KColor(1, 0.5F, 0, 0.3F).Inverse(1), {1, 0.5F, 0, 0.3F}); // lightness 0.5 is its own mirror
    ExpectNear(KColor(1, 0.2F, 0.3F, 0.3F).Inverse(2), {0, 0.8F, 0.7F, 0.3F});
}

TEST(KColor, CorrectHLSMovesOneQuantityAtATime)
{
    KColor const orange(1, 0.5F, 0, 0.25F);
    ExpectNear(orange.CorrectHLS(0, 0, 0, 1, 1, 0), orange);
    ExpectNear(orange.CorrectHLS(1 / 3.0F, 0, 0, 1, 1, 0), {0, 1, 0.5F, 0.25F});
    ExpectNear(orange.CorrectHLS(-0.25F, 0, 0, 1, 1, 0), {1, 0, 1, 0.25F}); // 1/12 - 1/4 wraps to 5/6
    ExpectNear(orange.CorrectHLS(0, 0, 0, 1, 1, 1), {1, 0, 0, 0.25F});
    ExpectNear(orange.CorrectHLS(0, 0, 0, 0, 1, 0), {0.5F, 0.5F, 0.5F, 0.25F});
    ExpectNear(orange.CorrectHLS(0, 0, 2, 1, 1, 0), {1, 1, 1, 0.25F});
    // far beyond white, where the saturation would not be a number
    KColor const bright = KColor(1.5F, 0.5F, 0.5F, 1).CorrectHLS(0, 0, 0, 0, 1, 0);
    EXPECT_EQ(bright, KColor(1, 1, 1, 1));
}

TEST(KColor, ArithmeticTreatsAllFourChannels)
{
    KColor c(1, 2, 4, 8);
    c /= KColor(2, 0, 8, 2);
    EXPECT_EQ(c, KColor(0.5F, 2, 0.5F, 4)) << "a divisor of 0 leaves its channel";
    c *= KColor(2, 0.5F, 2, -1);
    EXPECT_EQ(c, KColor(1, 1, 1, -4));
    EXPECT_EQ(c.Difference({3, 0, 1, 0}), KColor(2, 1, 0, 4));
    EXPECT_EQ(c.Difference({3, 0, 1, 0}, 3), 4.0F);
    EXPECT_EQ(c.Maximum({0, 2, 0, -5}), KColor(1, 2, 1, -4));
    EXPECT_EQ(c.Minimum({0, 2, 0, -5}), KColor(0, 1, 0, -5));
    c.Limit(-1, 0.5F);
    EXPECT_EQ(c, KColor(0.5F, 0.5F, 0.5F, -1));
}

TEST(KColor32, FloatsAreLimitedAndTruncated)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(KColor32(KColor(-0.5F, 7, 0.5F, nan)), KColor32(0, 65535, 32767, 0));
    // 65535 times this float is 65534.998: a float product would round up to 65535.
    float const almost = std::nextafter(1.0F, 0.0F);
    EXPECT_EQ(KColor32(KColor(almost, 1, 0, 0)).red, 65534);
    Pixel p;
    p.Clear();
    PixelFromColor(p, {almost, 1, -1, 0.25F});
    EXPECT_EQ(p.red, 65534U);
    EXPECT_EQ(p.green, 65535U);
    EXPECT_EQ(p.blue, 0U);
    EXPECT_EQ(p.alpha, 16383U);
    EXPECT_EQ(KColor(KColor32(0, 65535, 13107, 131070)), KColor(0, 1, 13107 / 65535.0F, 2));
}

TEST(KColor32, ProductsAreScaledAndQuotientsAreNot)
{
    KColor32 const c(65535, 40000, 30001, -9);
    EXPECT_EQ(c * KColor32(65535, 65535, 32767, 65535), KColor32(65535, 40000, 15000, -9));
    EXPECT_EQ(c / KColor32(2, 0, 65535, 2), KColor32(32767, 40000, 0, -4));
    EXPECT_EQ(0.5F * c, KColor32(32767, 20000, 15000, -4));
    KColor32 huge(65535, 0, -1, 1);
    huge *= 1e10F;
    huge.Limit(0, 65535);
    EXPECT_EQ(huge, KColor32(65535, 0, 0, 65535));
    EXPECT_EQ(KColor32(65535, 65535, 65535, 0).Luminance(), 65535);
    EXPECT_EQ(KColor32(1000, 2000, 3000, 0).Luminance(), 1815); // 299 + 1174 + 342
}

TEST(KColor32, InverseAndHlsFollowTheFloats)
{
    EXPECT_EQ(KColor32(0, 65535, 100, 7).Inverse(0), KColor32(65535, 0, 65435, 7));
    // 2 (60000 + 30000 + 2) / 3 = 60001
    EXPECT_EQ(KColor32(60000, 30000, 2, 7).Inverse(1), KColor32(65534, 35534, 5536, 7));
    EXPECT_EQ(KColor32(60000, 30000, 2, 7).Inverse(2), KColor32(1, 30001, 59999, 7));
    EXPECT_EQ(KColor32(65535, 0, 0, 7).Inverse(2), KColor32(0, 43690, 43690, 7)) << "limited";
    EXPECT_EQ(KColor32(65535, 0, 0, 12345).CorrectHLS(1 / 3.0F, 0, 0, 1, 1, 1), KColor32(0, 65535, 0, 12345));
}

TEST(ScaledProduct, IsTheRoundedProduct)
{
    for (std::uint32_t a = 0; a < 65536; a += 13) {
        for (std::uint32_t b : {0U, 1U, 2U, 255U, 32767U, 32768U, 40001U, 65534U, 65535U}) {
            // 65535 is odd, so no product lies half way.
            auto const rounded =
                static_cast<std::uint32_t>(std::lround(static_cast<double>(a) * b / 65535.0));
            ASSERT_EQ(ScaledProduct(a, b), rounded) << a << " x " << b;
        }
    }
}

TEST(PixelMath, DividingByAlphaAndMultiplyingAgainComesBack)
{
    Pixel p;
    p.Clear();
    for (std::uint32_t alpha : {1U, 77U, 32768U, 65535U}) {
        p.red = alpha;
        p.green = alpha / 3;
        p.blue = 0;
        p.alpha = alpha;
        std::uint32_t stored;
        PixelPreDivide(p, stored);
        EXPECT_EQ(stored, alpha);
        EXPECT_EQ(p.red, 65535U);
        PixelPostMultiply(p, stored);
        EXPECT_EQ(p.red, alpha);
        EXPECT_EQ(p.green, alpha / 3);
        EXPECT_EQ(p.alpha, alpha);
    }
    p.alpha = 0;
    std::uint32_t none;
    PixelPreDivide(p, none);
    EXPECT_EQ(p.blue, 65535U) << "white without alpha";

    FltPixel f;
    f.Clear();
    f.red = 0.5F;
    float alpha;
    PixelPreDivide(f, alpha);
    EXPECT_EQ(f.red, 1.0F);
    EXPECT_EQ(f.alpha, 0.0F);
    f.alpha = 0.25F;
    PixelPreDivide(f, alpha);
    EXPECT_EQ(f.red, 4.0F);
    PixelPostMultiply(f, alpha);
    EXPECT_EQ(f.red, 1.0F);
}

TEST(PixelMath, ChannelSelectorsAreRedFirst)
{
    Pixel p;
    p.Clear();
    p.red = 1000;
    p.green = 2000;
    p.blue = 3000;
    p.alpha = 4000;
    FltPixel f;
    f.Clear();
    for (int i = 0; i < 4; ++i) f.word[i] = static_cast<float>(p.word[i]);
    for (int channel = 0; channel < 4; ++channel) {
        EXPECT_EQ(PixelGetChannel32(p, channel), 1000U * static_cast<unsigned>(channel + 1));
        EXPECT_EQ(PixelGetChannel(f, channel), 1000.0F * static_cast<float>(channel + 1));
    }
    EXPECT_EQ(PixelGetChannel32(p, 4), 1815U); // 299 + 1174 + 342
    EXPECT_FLOAT_EQ(PixelGetChannel(f, -1), 1815.0F);
    EXPECT_EQ(PixelGetChannel(p, 2), 3000 / 65535.0F);
}

} // namespace
} // namespace ombrelune
