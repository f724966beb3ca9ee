#include <algorithm>
#include <array>
#include <cmath>

#include <gtest/gtest.h>

#include "host/image/SummedAreaTable.h"
#include "host/value/Parallel.h"
#include "tests/host/image_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

struct Place {
    double x, y;
};

template <class Record> Record SampleArea(Image const& image, std::array<Place, 4> const& q, EdgeModes edges)
{
    auto const fixed = [](double v) { return static_cast<int>(std::lround(v * 65536.0)); };
    auto const call = [&](auto function) {
        Record record;
        (image.*function)(fixed(q[0].x), fixed(q[0].y), fixed(q[1].x), fixed(q[1].y), fixed(q[2].x),
                          fixed(q[2].y), fixed(q[3].x), fixed(q[3].y), record);
        return record;
    };
    using Sampler = void (Image::*)(int, int, int, int, int, int, int, int, Record&) const;
    if (edges == kEdgeBlack) return call(static_cast<Sampler>(&Image::SampleAreaB));
    if (edges == kEdgeWrap) return call(static_cast<Sampler>(&Image::SampleAreaW));
    return call(static_cast<Sampler>(&Image::SampleAreaD));
}

std::array<Place, 4> Rectangle(double x0, double y0, double x1, double y1)
{
    return {{{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}}};
}

/// Mean over a rectangle by visiting every pixel that it touches.
double SlowMean(Image const& image, double x0, double y0, double x1, double y1, int word, EdgeModes edges)
{
    double sum = 0.0;
    for (int y = static_cast<int>(std::floor(y0)); y <= static_cast<int>(std::ceil(y1)); ++y) {
        for (int x = static_cast<int>(std::floor(x0)); x <= static_cast<int>(std::ceil(x1)); ++x) {
            double const across = std::min(x1, x + 0.5) - std::max(x0, x - 0.5);
            double const up = std::min(y1, y + 0.5) - std::max(y0, y - 0.5);
            if (across > 0.0 && up > 0.0) sum += across * up * WordAt(image, x, y, word, edges);
        }
    }
    return sum / ((x1 - x0) * (y1 - y0));
}

TEST(AreaSampler, ARectangleGivesTheMeanOfThePixelsItCovers)
{
    std::mt19937 random(3);
    auto const eighths = [&](int most) {
        return static_cast<int>(random() % static_cast<unsigned>(most)) / 8.0;
    };
    for (int depth : kAllDepths) {
        Ref<Image> image = MakeNoise(9, 70, depth); // more rows than a band of the table's building
        image->UseSAT();
        for (EdgeModes edges : kAllEdges) {
            for (int n = 0; n < 300; ++n) {
                double const x0 = eighths(400) - 20.0, y0 = eighths(1600) - 70.0;
                double const x1 = x0 + 1.0 + eighths(n % 2 ? 16 : 320),
                             y1 = y0 + 1.0 + eighths(n % 3 ? 16 : 1200);
                auto const corners = Rectangle(x0, y0, x1, y1);
                auto const integer = SampleArea<Pixel>(*image, corners, edges);
                auto const real = SampleArea<FltPixel>(*image, corners, edges);
                for (int word = 0; word < 4; ++word) {
                    double const expected = SlowMean(*image, x0, y0, x1, y1, word, edges);
                    double const to16 = image->IsFloat() ? 65535.0 : 1.0;
                    ASSERT_NEAR(integer.word[word], expected * to16, image->IsFloat() ? 0.51 : 0.5000001)
                        << "depth " << depth << " edges " << edges << " " << x0 << " " << y0 << " " << x1
                        << " " << y1;
                    ASSERT_NEAR(real.word[word], expected * to16 / 65535.0, 2e-7);
                }
            }
        }
    }
}

TEST(AreaSampler, TheOrderOfTheCornersDoesNotMatter)
{
    Ref<Image> image = MakeNoise(16, 16, kDepthFloat);
    image->UseSAT();
    std::array<Place, 4> corners{{{3.25, 2.5}, {9.0, 4.75}, {7.5, 11.0}, {1.0, 8.125}}};
    std::array<int, 4> order{0, 1, 2, 3};
    for (EdgeModes edges : kAllEdges) {
        auto const first = SampleArea<FltPixel>(*image, corners, edges);
        do {
            auto const other = SampleArea<FltPixel>(
                *image, {corners[order[0]], corners[order[1]], corners[order[2]], corners[order[3]]}, edges);
            for (int word = 0; word < 4; ++word) ASSERT_EQ(first.word[word], other.word[word]);
        } while (std::next_permutation(order.begin(), order.end()));
    }
}

TEST(AreaSampler, AnEvenPictureStaysEvenUnderEveryShape)
{
    // Sums that are not exact would show in the last bit.
    std::mt19937 random(5);
    auto const place = [&] { return static_cast<double>(random() % (300U << 8)) / 256.0 - 100.0; };
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Ref<Image> image = MakeImage(100, 100, depth);
        Pixel grey;
        grey.red = grey.green = grey.blue = 12345;
        grey.alpha = 65535;
        grey.DropAux();
        image->Fill(grey);
        image->UseSAT();
        for (int n = 0; n < 2000; ++n) {
            std::array<Place, 4> corners;
            for (Place& corner : corners) corner = {place(), place()};
            for (EdgeModes edges : {kEdgeWrap, kEdgeDuplicate}) {
                auto const pixel = SampleArea<Pixel>(*image, corners, edges);
                ASSERT_EQ(pixel.red, 12345U);
                ASSERT_EQ(pixel.alpha, 65535U);
                ASSERT_EQ(SampleArea<FltPixel>(*image, corners, edges).red, 12345.0F / 65535.0F);
            }
        }
    }
}

TEST(AreaSampler, ATurnedCellAveragesALinearRampToItsCentre)
{
    // The mean of a linear function over any symmetric shape is its value at the centre.
    Ref<Image> image = MakeImage(64, 64, kDepthFloat);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            FltPixel pixel;
            pixel.Clear();
            pixel.red = static_cast<float>(x);
            pixel.green = static_cast<float>(y);
            PixPtr(image.Get(), x, y).SetPixel(pixel);
        }
    }
    image->UseSAT();
    for (int degrees = 5; degrees < 90; degrees += 10) {
        for (double side : {1.0, 3.0, 12.0}) {
            double const c = side / 2.0 * std::cos(degrees * M_PI / 180.0);
            double const s = side / 2.0 * std::sin(degrees * M_PI / 180.0);
            double const x = 31.3, y = 30.6;
            auto const mean = SampleArea<FltPixel>(*image,
                                                   {{{x - c + s, y - s - c},
                                                     {x + c + s, y + s - c},
                                                     {x + c - s, y + s + c},
                                                     {x - c - s, y - s + c}}},
                                                   kEdgeBlack);
            EXPECT_NEAR(mean.red, x, 0.07) << degrees << " " << side;
            EXPECT_NEAR(mean.green, y, 0.07) << degrees << " " << side;
        }
    }
}

TEST(AreaSampler, ACellBelowAPixelIsInterpolated)
{
    Ref<Image> image = MakeNoise(8, 8, kDepthInt16, {kChannelVelocityX});
    image->UseSAT();
    for (EdgeModes edges : kAllEdges) {
        for (double size : {0.0, 0.25, 1.0}) {
            double const x = 7.25, y = 2.375;
            auto const area = SampleArea<Pixel>(
                *image, Rectangle(x - size / 2, y - size / 2, x + size / 2, y + size / 2), edges);
            Pixel bilinear;
            Sample(*image, static_cast<int>(x * 65536), static_cast<int>(y * 65536), edges, bilinear);
            for (int word = 0; word < 4; ++word) EXPECT_EQ(area.word[word], bilinear.word[word]);
            EXPECT_EQ(area.Aux(kChannelVelocityX), At<Pixel>(*image, 7, 2).Aux(kChannelVelocityX));
        }
    }
}

TEST(SummedAreaTable, OneThreadAndManyMakeTheSameTable)
{
    Ref<Image> image = MakeNoise(61, 300, kDepthFloat);
    auto const corners = [](SummedAreaTable const& table) {
        std::vector<Sum4> sums;
        for (int y = 1; y <= 300; ++y)
            for (int x = 1; x <= 61; ++x)
                sums.push_back(
                    table.Integral({0.0, static_cast<double>(x), 61}, {0.0, static_cast<double>(y), 300}));
        return sums;
    };
    SetThreadCount(1);
    auto const one = corners(*SummedAreaTable::Of(*image));
    SetThreadCount(4);
    auto const many = corners(*SummedAreaTable::Of(*image));
    SetThreadCount(0);
    EXPECT_EQ(std::memcmp(one.data(), many.data(), one.size() * sizeof one[0]), 0);
}

TEST(SummedAreaTable, AValueThatIsNotFiniteSpoilsNothingElse)
{
    Ref<Image> image = MakeNoise(8, 8, kDepthFloat);
    FltPixel broken = At<FltPixel>(*image, 2, 2);
    broken.red = std::numeric_limits<float>::quiet_NaN();
    broken.green = std::numeric_limits<float>::infinity();
    PixPtr(image.Get(), 2, 2).SetPixel(broken);
    image->UseSAT();
    auto const pixel = SampleArea<FltPixel>(*image, Rectangle(4.5, 4.5, 5.5, 5.5), kEdgeBlack);
    EXPECT_NEAR(pixel.red, At<FltPixel>(*image, 5, 5).red, 1e-6);
    EXPECT_NEAR(pixel.green, At<FltPixel>(*image, 5, 5).green, 1e-6);
}

} // namespace
} // namespace ombrelune
