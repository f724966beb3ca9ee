#include "image/ScanConverter.h"

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "host/value/Parallel.h"

namespace ombrelune {
namespace {

struct Ring {
    int windingClass;
    std::vector<KVector2> points; ///< in samples
};

ShapeArrays ArraysOf(std::vector<Ring> const& rings)
{
    ShapeArrays arrays;
    for (Ring const& ring : rings) {
        int const start = static_cast<int>(arrays.points.size()),
                  count = static_cast<int>(ring.points.size());
        for (int i = 0; i < count; ++i) {
            KVector2 const p = ring.points[static_cast<std::size_t>(i)];
            int const row =
                static_cast<int>(std::floor(std::clamp(std::isnan(p.y) ? 0.0F : p.y, -2e9F, 2e9F)));
            arrays.points.push_back({p.x, p.y, row, static_cast<std::uint8_t>(ring.windingClass)});
            arrays.indices.push_back(
                {row, start + i, start + (i + count - 1) % count, start + (i + 1) % count});
        }
    }
    std::sort(arrays.indices.begin(), arrays.indices.end(),
              [](auto const& a, auto const& b) { return a.row < b.row; });
    return arrays;
}

/// Rectangle in pixels at 8 by 8 samples, as the channel places it: half a sample to the right and down.
Ring Rectangle(int windingClass, float x0, float y0, float x1, float y1)
{
    float const l = 8 * x0 + 0.5F, r = 8 * x1 + 0.5F, b = 8 * y0 - 0.5F, t = 8 * y1 - 0.5F;
    return {windingClass, {{l, b}, {r, b}, {r, t}, {l, t}}};
}
Ring Reversed(Ring ring)
{
    std::reverse(ring.points.begin(), ring.points.end());
    return ring;
}

std::vector<int> Amounts(std::vector<Ring> const& rings, int w, int h, int samples, FillRule rule,
                         int* cancel = nullptr)
{
    std::vector<int> result(static_cast<std::size_t>(w * h), 0);
    ShapeArrays const arrays = ArraysOf(rings);
    KImagePixelRegion const box = ScanBounds(arrays, w, h, samples);
    ScanShape(arrays, {box, samples}, rule, cancel,
              [&](int row, int lo, int hi, std::uint16_t const* amounts) {
                  for (int x = lo; x < hi; ++x)
                      result[static_cast<std::size_t>((box.y + row) * w + box.x + x)] = amounts[x];
              });
    return result;
}

TEST(Scan, CountsSamplesOfPartlyCoveredPixels)
{
    // 1.25 to 3.5 across, 1 to 2.5 up: 48 = 64 * 3/4, and half of all in the upper row.
    EXPECT_EQ(
        Amounts({Rectangle(0, 1.25F, 1.0F, 3.5F, 2.5F)}, 5, 4, 8, kFillNonZero),
        (std::vector<int>{0, 0, 0, 0, 0, /**/ 0, 48, 64, 32, 0, /**/ 0, 24, 32, 16, 0, /**/ 0, 0, 0, 0, 0}));
    EXPECT_EQ(Amounts({Rectangle(0, 1.25F, -1.0F, 1.75F, 1.0F)}, 3, 1, 8, kFillNonZero),
              (std::vector<int>{0, 32, 0}))
        << "both edges in one pixel";
    EXPECT_EQ(Amounts({Rectangle(0, -9.0F, -9.0F, 1.5F, 9.0F)}, 2, 2, 8, kFillEvenOdd),
              (std::vector<int>{64, 32, 64, 32}))
        << "cut at the borders";
    EXPECT_EQ(Amounts({Rectangle(0, 0.0F, 0.0F, 1.0F, 1.0F)}, 1, 1, 8, kFillEvenOdd), (std::vector<int>{64}))
        << "a lower end at -0.5 lies below line 0";
}

TEST(Scan, ClassesAndRulesTellWhatIsInside)
{
    Ring const outer = Rectangle(0, -1, -1, 4, 4), inner = Rectangle(0, 1, 1, 2, 2);
    Ring hole = inner, always = inner, pen = outer, penInner = inner;
    hole.windingClass = 1;
    always.windingClass = pen.windingClass = penInner.windingClass = 2;
    struct Case {
        char const* name;
        std::vector<Ring> rings;
        int evenOdd, nonZero; // of the pixel in the middle
    };
    for (Case const& c : {
             Case{"the same way", {outer, inner}, 0, 64},
             Case{"the other way", {outer, Reversed(inner)}, 0, 0},
             Case{"class 1 is a hole", {outer, hole}, 0, 0},
             Case{"class 1 reversed too", {outer, Reversed(hole)}, 0, 0},
             Case{"class 1 through class 2", {pen, hole}, 0, 0},
             Case{"class 2 over class 0", {outer, always}, 64, 64},
             Case{"class 2 twice", {pen, penInner}, 64, 64},
             Case{"class 2 both ways", {pen, Reversed(penInner)}, 0, 0},
         }) {
        EXPECT_EQ(Amounts(c.rings, 3, 3, 8, kFillEvenOdd)[4], c.evenOdd) << c.name;
        EXPECT_EQ(Amounts(c.rings, 3, 3, 8, kFillNonZero)[4], c.nonZero) << c.name;
        EXPECT_EQ(Amounts(c.rings, 3, 3, 8, kFillNonZero)[0], 64) << c.name;
    }
}

/// Every sample asks every edge. Slopes are sixteenths, so that the places of crossings are exact.
std::vector<int> SlowAmounts(std::vector<Ring> const& rings, int w, int h, int samples, FillRule rule)
{
    std::vector<int> result(static_cast<std::size_t>(w * h), 0);
    for (int line = 0; line < h * samples; ++line) {
        for (int column = 0; column < w * samples; ++column) {
            int turns[3] = {};
            for (Ring const& ring : rings) {
                for (std::size_t i = 0; i < ring.points.size(); ++i) {
                    KVector2 const a = ring.points[i], b = ring.points[(i + 1) % ring.points.size()];
                    KVector2 const& low = a.y < b.y ? a : b;
                    KVector2 const& high = a.y < b.y ? b : a;
                    if (!(low.y < static_cast<float>(line) && static_cast<float>(line) <= high.y)) continue;
                    double const x =
                        low.x + (line - low.y) * (double{high.x} - low.x) / (double{high.y} - low.y);
                    if (std::floor(x) <= column) turns[ring.windingClass] += a.y < b.y ? 1 : -1;
                }
            }
            bool const filled = rule == kFillEvenOdd ? turns[0] % 2 != 0 : turns[0] != 0;
            if ((filled || turns[2] != 0) && turns[1] == 0)
                ++result[static_cast<std::size_t>(line / samples * w + column / samples)];
        }
    }
    return result;
}

TEST(Scan, AgreesWithAskingEveryEdgeForEverySample)
{
    std::mt19937 random(5);
    auto const below = [&](int n) { return static_cast<float>(random() % static_cast<unsigned>(n)); };
    for (int samples : {1, 3, 8}) {
        int const w = 30, h = 24;
        std::vector<Ring> rings;
        for (int windingClass : {0, 0, 1, 2}) {
            Ring ring{windingClass, {}};
            float const base = below(8 * samples);
            // Zigzags of sides 16 lines high, some of them beyond the borders.
            for (int i = 0; i < (windingClass == 1 ? 4 : 24); ++i)
                ring.points.push_back({below(40 * samples) - 40.0F, base + (i % 2 ? 16.0F : 0.0F)});
            rings.push_back(ring);
        }
        for (FillRule rule : {kFillEvenOdd, kFillNonZero})
            EXPECT_EQ(Amounts(rings, w, h, samples, rule), SlowAmounts(rings, w, h, samples, rule))
                << samples << " samples, rule " << rule;
    }
}

TEST(Scan, AnEdgeOverAHighPictureStaysWhereItIs)
{
    int const w = 3840, h = 2160;
    float const bottom = -0.5F, top = 8.0F * h + 0.3F, left = 8 * 3700.3F, right = 8 * 3801.7F;
    std::vector<int> const amounts =
        Amounts({{0, {{0, bottom}, {left, bottom}, {right, top}, {0, top}}}}, w, h, 8, kFillNonZero);
    for (int row = 0; row < h; ++row) {
        double expected = 0.0;
        for (int line = 8 * row; line < 8 * row + 8; ++line)
            expected += std::floor(left + (double{right} - left) * (line - bottom) / (double{top} - bottom));
        int sum = 0;
        for (int x = 0; x < w; ++x) sum += amounts[static_cast<std::size_t>(row * w + x)];
        ASSERT_NEAR(sum, expected, 1.0) << row; // a crossing may lie on a sample
    }
}

TEST(Scan, ThreadsDoNotMatter)
{
    std::mt19937 random(9);
    std::uniform_real_distribution<float> place(-200.0F, 6000.0F);
    Ring ring{0, {}};
    for (int i = 0; i < 200; ++i) ring.points.push_back({place(random), place(random)});
    SetThreadCount(1);
    std::vector<int> const one = Amounts({ring}, 700, 500, 8, kFillEvenOdd);
    for (int threads : {2, 3, 7}) {
        SetThreadCount(threads);
        EXPECT_EQ(Amounts({ring}, 700, 500, 8, kFillEvenOdd), one) << threads;
    }
    SetThreadCount(0);
}

TEST(Scan, HostileOutlines)
{
    float const nan = std::numeric_limits<float>::quiet_NaN(), huge = 1e30F;
    float const infinite = std::numeric_limits<float>::infinity();
    for (float bad : {nan, infinite, -infinite, huge, -huge}) {
        for (int i = 0; i < 8; ++i) {
            Ring ring = Rectangle(0, 1, 1, 3, 3);
            (i % 2 ? ring.points[static_cast<std::size_t>(i / 2)].x
                   : ring.points[static_cast<std::size_t>(i / 2)].y) = bad;
            for (int amount : Amounts({ring}, 4, 4, 8, kFillNonZero))
                EXPECT_TRUE(amount >= 0 && amount <= 64);
        }
    }
    EXPECT_EQ(
        Amounts({{0, {{-huge, -huge}, {huge, -huge}, {huge, huge}, {-huge, huge}}}}, 2, 2, 8, kFillNonZero),
        std::vector<int>(4, 64));
    EXPECT_EQ(Amounts({}, 2, 2, 8, kFillNonZero), std::vector<int>(4, 0));
    EXPECT_EQ(Amounts({{0, {{3, 3}}}, {2, {{1, 1}, {9, 9}}}}, 2, 2, 8, kFillNonZero), std::vector<int>(4, 0));
    int cancel = 1;
    EXPECT_EQ(Amounts({Rectangle(0, 0, 0, 2, 2)}, 2, 2, 8, kFillNonZero, &cancel), std::vector<int>(4, 0));
}

} // namespace
} // namespace ombrelune
