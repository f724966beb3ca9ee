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

} // namespace
} // namespace ombrelune::test
