#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "tests/image/kimage_helpers.h"

namespace ombrelune::test {
namespace {

Owned Black(int width, int height, int depth = kDepthInt16, bool velocity = false)
{
    TagList tags{{Img_Width, width}, {Img_Height, height}, {Img_Depth, depth}};
    if (velocity) {
        tags.Add({Img_Channel, int{kChannelVelocityX}});
        tags.Add({Img_Channel, int{kChannelVelocityY}});
    }
    Owned image(KImage::ImageFromHost(NewImageTagList(tags).Release(), true));
    image->Clear();
    return image;
}

Pixel Color(std::uint32_t red, std::uint32_t green, std::uint32_t blue, std::uint32_t alpha)
{
    Pixel p;
    p.red = red;
    p.green = green;
    p.blue = blue;
    p.alpha = alpha;
    p.DropAux();
    return p;
}

Pixel const kWhite = Color(65535, 65535, 65535, 65535);

/// Alpha of all pixels, the lowest row first.
std::vector<int> Alphas(KImage const& image)
{
    std::vector<int> result;
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x)
            result.push_back(static_cast<int>(At<Pixel>(image, x, y).alpha));
    return result;
}

TEST(Draw, PointsLieOverWhatIsThere)
{
    Owned const image = Black(2, 1);
    image->DrawPoint(0, 0, KColor(1.0F, 0.5F, 0.0F, 1.0F));
    image->DrawPointSafe(0, 0, 0, 16384, 65535, 32768);
    Pixel const p = At<Pixel>(*image, 0, 0);
    EXPECT_EQ(p.red, 32767U) << "65535 * 32767 / 65535";
    EXPECT_EQ(p.green, 16383U + 16384U) << "32767 * 32767 / 65535 = 16383.0";
    EXPECT_EQ(p.blue, 65535U);
    EXPECT_EQ(p.alpha, 65535U);
    image->DrawPointSafe(0, 0, 65535, 65535, 0, 0);
    EXPECT_EQ(At<Pixel>(*image, 0, 0).green, 65535U) << "limited";
    for (int x : {-1, 2, 1 << 30}) image->DrawPointSafe(x, 0, 1, 1, 1, 1);
    EXPECT_EQ(At<Pixel>(*image, 1, 0).red, 0U);
}

TEST(Draw, RectanglesAreOutlinesDrawnOnce)
{
    auto const drawn = [](int x, int y, int w, int h) {
        Owned const image = Black(4, 3);
        image->DrawRectangle(x, y, w, h, 10, 20, 30, 32768);
        std::vector<int> alphas = Alphas(*image);
        for (int& a : alphas) a = a == 32768 ? 1 : a; // anything else was drawn twice
        return alphas;
    };
    EXPECT_EQ(drawn(0, 0, 4, 3), (std::vector<int>{1, 1, 1, 1, 1, 0, 0, 1, 1, 1, 1, 1}));
    EXPECT_EQ(drawn(1, 0, 2, 3), (std::vector<int>{0, 1, 1, 0, 0, 1, 1, 0, 0, 1, 1, 0}));
    EXPECT_EQ(drawn(1, 1, 1, 1), (std::vector<int>{0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(drawn(-5, 1, 1 << 30, 1 << 30), (std::vector<int>{0, 0, 0, 0, 1, 1, 1, 1, 0, 0, 0, 0}));
    EXPECT_EQ(drawn(0, 0, 0, 3), std::vector<int>(12, 0));
}

TEST(Draw, SoftRectanglesWeighTheirEdgesByArea)
{
    Owned const image = Black(8, 8);
    image->DrawRectangleAA(1.5F / 8, 2.75F / 8, 4.25F / 8, 5.5F / 8, KColor(1, 1, 1, 1));
    // Columns 1 to 4 have 1/2, 1, 1, 1/4, rows 2 to 5 1/4, 1, 1, 1/2.
    double const across[] = {0, 0.5, 1, 1, 0.25, 0, 0, 0}, up[] = {0, 0, 0.25, 1, 1, 0.5, 0, 0};
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            EXPECT_EQ(At<Pixel>(*image, x, y).alpha, static_cast<std::uint32_t>(65535 * across[x] * up[y]))
                << x << ", " << y;
}

TEST(Draw, LinesShareTheirSteps)
{
    // Slope 1/2: the first step lies between two rows, the second on a row.
    Owned image = Black(5, 3);
    image->DrawVectorByOffset(1, 0, 3.0F, 1.5F, Color(0, 0, 65535, 65535));
    EXPECT_EQ(Alphas(*image),
              (std::vector<int>{0, 65535, 32767, 0, 0, 0, 0, 32767, 65535, 0, 0, 0, 0, 0, 0}));

    image = Black(5, 5);
    image->DrawCenterLineByOffset(2, 2, -1.0F, -2.0F, Color(65535, 0, 0, 32768));
    // Half transparent: the colour is premultiplied. Both sides alike.
    EXPECT_EQ(At<Pixel>(*image, 2, 2).red, 32768U);
    for (int sign : {-1, 1})
        for (int x : {0, 1}) EXPECT_EQ(At<Pixel>(*image, 2 + sign * x, 2 + sign).red, 16384U) << sign;
    EXPECT_EQ(At<Pixel>(*image, 1, 0).red, 0U) << "the end is left out";

    image = Black(7, 7);
    image->DrawCenterLine(3, 3, static_cast<float>(std::numbers::pi / 2), 2.0F, kWhite, 1.0F);
    for (int y = 0; y < 7; ++y) EXPECT_EQ(At<Pixel>(*image, 3, y).alpha > 0, y >= 1 && y <= 5) << y;

    image = Black(3, 3);
    float const nan = std::nanf("");
    image->DrawVectorByOffset(1, 1, nan, nan, kWhite);
    image->DrawCenterLineByOffset(1, 1, 1e30F, nan, kWhite);
    image->DrawVectorByOffset(1, 1, -1e30F, 1e30F, kWhite);
    EXPECT_EQ(At<Pixel>(*image, 0, 2).alpha, 65535U);
}

TEST(Draw, VectorFieldsShowVelocities)
{
    Owned const image = Black(8, 8, kDepthFloat, true);
    FltPixel p;
    p.Clear();
    p.SetAux(kChannelVelocityX, 3.0F);
    image->SetPixel(4, 4, p);
    Owned const framed(image->CopyOf());
    image->DrawVectorField(KColor(0, 1, 0, 1), nullptr, 0.5F, 0.5F); // 4 pixels, from 8 / 2 modulo 4 = 0 on
    std::vector<int> expected(64, 0);
    for (int i : {0, 4, 32, 36, 37}) expected[static_cast<std::size_t>(i)] = 65535;
    EXPECT_EQ(Alphas(*image), expected) << "a point for each node, one more where 0.5 * 3 reaches";

    std::vector<KVector2i> const patterns{{2, 2}};
    framed->DrawVectorField(KColor(0, 1, 0, 1), &patterns, 0.5F, 1.0F);
    EXPECT_EQ(At<Pixel>(*framed, 2, 2).alpha, 65535U);
    EXPECT_EQ(At<Pixel>(*framed, 6, 6).alpha, 65535U);
    EXPECT_EQ(At<Pixel>(*framed, 3, 4).alpha, 0U);
    EXPECT_EQ(At<Pixel>(*framed, 5, 4).alpha, 65535U);
}

TEST(Draw, DotsByShapeTurnAndMerge)
{
    KColor const white(1, 1, 1, 1);
    auto const count = [&](KVector2 size, float angle, bool noRotation, int shape) {
        Owned const image = Black(21, 21, kDepthFloat);
        image->DrawDot({0.5F, 0.5F}, size, angle, noRotation, 1, shape, 0, 0, white, nullptr);
        int n = 0;
        for (int alpha : Alphas(*image)) n += alpha > 0;
        return n;
    };
    // Half sizes of 4.2 pixels: whole places within.
    KVector2 const size(0.21F, 0.21F);
    int disc = 0, diamond = 0;
    for (int y = -4; y <= 4; ++y) {
        for (int x = -4; x <= 4; ++x) {
            disc += x * x + y * y <= 4.2 * 4.2;
            diamond += std::abs(x) + std::abs(y) <= 4;
        }
    }
    EXPECT_EQ(count(size, 0, true, 0), disc);
    EXPECT_EQ(count(size, 0, true, 1), 81);
    EXPECT_EQ(count(size, 0, true, 2), diamond);
    EXPECT_EQ(count(size, 0, true, 3), disc) << "no map";
    EXPECT_EQ(count({0.21F, 0.06F}, static_cast<float>(std::numbers::pi / 2), false, 1), 27) << "3 by 9";
    EXPECT_EQ(count({0.0F, 0.1F}, 0, true, 0), 0);

    struct Case {
        int merge;
        float result;
    };
    for (Case const& c : {Case{0, 0.75F}, Case{1, 1.0F}, Case{2, 0.5F}, Case{3, 0.8125F}}) {
        Owned const image = Black(5, 5, kDepthFloat);
        image->Fill(KColor(0.25F, 0.25F, 0.25F, 0.25F), true);
        image->DrawDot({0.5F, 0.5F}, {0.1F, 0.1F}, 0, true, 1, 0, 0, c.merge, KColor(0.75F, 0, 0, 0),
                       nullptr);
        EXPECT_EQ(At<FltPixel>(*image, 2, 2).red, c.result) << c.merge;
        EXPECT_EQ(At<FltPixel>(*image, 1, 2).red, 0.25F);
    }

    // 2 by 2 samples at a quarter of a pixel: a square that ends at the middle holds half of them.
    Owned const soft = Black(5, 5, kDepthFloat);
    soft->DrawDot({0.25F, 0.5F}, {0.25F, 0.5F}, 0, true, 2, 1, 0, 1, white, nullptr);
    EXPECT_EQ(At<FltPixel>(*soft, 2, 2).red, 0.5F);
    EXPECT_EQ(At<FltPixel>(*soft, 1, 2).red, 1.0F);
    EXPECT_EQ(At<FltPixel>(*soft, 3, 2).red, 0.0F);

    Owned const map = Black(3, 3, kDepthFloat), mapped = Black(3, 3, kDepthFloat);
    map->DrawPoint(2, 0, KColor(0, 1, 0, 1));
    mapped->DrawDot({0.5F, 0.5F}, {0.51F, 0.51F}, 0, true, 1, 3, 2, 1, KColor(0, 0, 0, 0), map.get());
    EXPECT_EQ(At<FltPixel>(*mapped, 2, 0).green, 0.0F) << "1.98 is cut to 1";
    mapped->DrawDot({0.5F, 0.5F}, {0.5F, 0.5F}, 0, true, 1, 3, 0, 1, KColor(1, 0, 0, 0), map.get());
    EXPECT_NEAR(At<FltPixel>(*mapped, 2, 0).red, 0.587F, 1e-6) << "by luminance";
}

} // namespace
} // namespace ombrelune::test
