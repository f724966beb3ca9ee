#include <atomic>
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "host/value/Parallel.h"
#include "image/KOffsetsTable.h"
#include "tests/image/kimage_helpers.h"

namespace ombrelune::test {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

TEST(Offsets, ALineAlongAnAxisTakesWholePixels)
{
    KOffsets const line(0.0F, 3.0F, 1.0F, false, false);
    ASSERT_EQ(line.Count(), 4);
    EXPECT_EQ(line.length, 4.0F);
    int const positions[] = {0, 21845, 43690, 65535};
    for (int i = 0; i < 4; ++i) {
        KOffset const& entry = line.entries[static_cast<std::size_t>(i)];
        EXPECT_EQ(entry.x, -i);
        EXPECT_EQ(entry.y, 0);
        EXPECT_EQ(entry.weight, 65535);
        EXPECT_EQ(entry.distance, static_cast<float>(i));
        EXPECT_EQ(entry.position, positions[i]);
    }
    KOffsets const point(1.0F, 0.0F, 1.0F, false, false);
    ASSERT_EQ(point.Count(), 1);
    EXPECT_EQ(point.entries[0].position, 65535);
}

TEST(Offsets, TwoPixelsShareAStepByHowNearTheyAre)
{
    // Slope 3/4: the longer component of the direction is 0.8, so 5 long makes 4 steps.
    float const angle = std::atan(0.75F);
    KOffsets const line(angle, 5.0F, 1.0F, true, false);
    EXPECT_TRUE(line.length == 5.0F || line.length == 6.0F) << "4 steps but for rounding";
    struct {
        int x, y;
        double weight;
    } const expected[] = {{0, 0, 1},    {-1, 1, 0.75}, {-1, 0, 0.25}, {-2, 1, 0.5},
                          {-2, 2, 0.5}, {-3, 2, 0.75}, {-3, 3, 0.25}};
    for (std::size_t i = 0; i < 7; ++i) {
        if (i == 3 || i == 4) continue; // halves: either may be the nearer one
        EXPECT_EQ(line.entries[i].x, expected[i].x) << i;
        EXPECT_EQ(line.entries[i].y, expected[i].y) << i;
        EXPECT_NEAR(line.entries[i].weight, expected[i].weight * 65535, 2) << i;
    }
    EXPECT_EQ(line.entries[3].weight + line.entries[4].weight, 65535);
}

TEST(Offsets, APartOfAStepWeighsItsPart)
{
    KOffsets const line(kPi / 2, 2.25F, 1.0F, false, false); // up, 3.25 steps with the centre
    int sum = 0;
    for (KOffset const& entry : line.entries)
        if (entry.y == 4) sum += entry.weight;
    EXPECT_EQ(sum, 16383);
    EXPECT_EQ(line.entries.back().position, 65535);
    for (KOffset const& entry : line.entries) EXPECT_LE(entry.position, 65535);

    KOffsets const rounded(kPi / 2, 2.25F, 1.0F, true, false);
    EXPECT_EQ(rounded.length, 4.0F);
    EXPECT_EQ(rounded.entries.back().y, 3);
}

TEST(Offsets, StepsAlwaysWeighOneAndLieOnTheLine)
{
    for (int i = 0; i < 60; ++i) {
        float const angle = 0.1F + static_cast<float>(i) / 9.0F,
                    aspect = 0.5F + static_cast<float>(i % 4) / 2.0F;
        KOffsets const line(angle, 40.0F, aspect, true, false), quick(angle, 40.0F, aspect, true, true);
        double const x = -std::cos(static_cast<double>(angle)),
                     y = std::sin(static_cast<double>(angle)) * aspect;
        bool const alongX = std::abs(x) >= std::abs(y);
        double const slope = alongX ? y / std::abs(x) : x / std::abs(y);
        int const steps = static_cast<int>(line.length);
        std::vector<double> weight(static_cast<std::size_t>(steps)), place(weight);
        for (KOffset const& entry : line.entries) {
            auto const step = static_cast<std::size_t>(std::abs(alongX ? entry.x : entry.y));
            ASSERT_LT(step, weight.size());
            weight[step] += entry.weight;
            place[step] += entry.weight * (alongX ? entry.y : entry.x) / 65535.0;
        }
        for (std::size_t step = 0; step < weight.size(); ++step) {
            EXPECT_EQ(weight[step], 65535);
            EXPECT_NEAR(place[step], slope * static_cast<double>(step), 1e-3);
        }
        for (std::size_t step = 0; step < quick.entries.size(); ++step)
            EXPECT_NEAR(alongX ? quick.entries[step].y : quick.entries[step].x,
                        std::trunc(slope * static_cast<double>(step)), 1.0);
        EXPECT_NEAR(quick.Count(), std::ceil(40.0 * std::max(std::abs(x), std::abs(y)) + 1.0), 1.0);
    }
}

Owned Row(std::vector<std::uint32_t> const& values, bool upright)
{
    int const n = static_cast<int>(values.size());
    Owned image(new KImage(upright ? 1 : n, upright ? n : 1, 1.0F, false));
    for (int i = 0; i < n; ++i) {
        Pixel p;
        p.Clear();
        p.green = values[static_cast<std::size_t>(i)];
        image->SetPixel(upright ? 0 : i, upright ? i : 0, p);
    }
    return image;
}

using Entries = std::vector<std::array<int, 4>>; ///< x, y, weight, flag

Entries EntriesOf(KOffsets const& offsets)
{
    Entries entries;
    for (KOffset const& e : offsets.entries) entries.push_back({e.x, e.y, e.weight, e.flag});
    return entries;
}

TEST(Offsets, KernelsAndTheEdgesOfTheirSpans)
{
    Owned const across = Row({0, 7, 9, 0, 5}, false), up = Row({0, 7, 9, 0, 5}, true);
    EXPECT_EQ(EntriesOf(KOffsets(across.get(), 1, false, 0)),
              (Entries{{-1, 0, 7, 0}, {0, 0, 9, 0}, {2, 0, 5, 0}}));
    EXPECT_EQ(EntriesOf(KOffsets(across.get(), 1, true, 0)),
              (Entries{{-2, 0, 5, 0}, {0, 0, 9, 0}, {1, 0, 7, 0}}));
    EXPECT_EQ(EntriesOf(KOffsets(across.get(), 1, false, 1)),
              (Entries{{-2, 0, 7, 1}, {0, 0, 9, 0}, {1, 0, 5, 1}, {2, 0, 5, 0}}));
    EXPECT_EQ(EntriesOf(KOffsets(up.get(), 1, false, 2)),
              (Entries{{0, -2, 7, 1}, {0, 0, 9, 0}, {0, 1, 5, 1}, {0, 2, 5, 0}}));
    EXPECT_EQ(EntriesOf(KOffsets(up.get(), 1, true, 2)),
              (Entries{{0, -3, 5, 1}, {0, -2, 5, 0}, {0, -1, 9, 1}, {0, 1, 7, 0}}));
    EXPECT_EQ(KOffsets(across.get(), 0, false, 0).Count(), 0) << "another channel";
}

TEST(OffsetsTable, AnglesShareTheFirstQuadrant)
{
    KOffsetsTable table(0, 20, 1.0F, true, false); // slots of 90 / 19 degrees
    struct {
        float angle;
        int signX, signY;
        float first;
    } const cases[] = {
        {0.5F, 1, 1, 0.5F},           {kPi - 0.5F, -1, 1, 0.5F},  {kPi + 0.5F, -1, -1, 0.5F},
        {-0.5F, 1, -1, 0.5F},         {-kPi / 4, 1, -1, kPi / 4}, {0.5F + 4 * kPi, 1, 1, 0.5F},
        {0.5F - 6 * kPi, 1, 1, 0.5F}, {0.0F, 1, 1, 0.0F},
    };
    for (auto const& c : cases) {
        int x = 0, y = 0, firstX = 0, firstY = 0;
        KOffsets const* const line = table.GetOffsets(c.angle, 30.0F, x, y);
        EXPECT_EQ(x, c.signX) << c.angle;
        EXPECT_EQ(y, c.signY) << c.angle;
        EXPECT_EQ(line, table.GetOffsets(c.first, 30.0F, firstX, firstY)) << c.angle;
    }
    // Every angle of the tenth slot has the line of its beginning.
    int x = 0, y = 0;
    KOffsets const* const shared = table.GetOffsets(kPi / 4, 30.0F, x, y);
    KOffsets const exact(kPi / 2 * 9 / 19, 30.0F, 1.0F, true, false);
    EXPECT_EQ(EntriesOf(*shared), EntriesOf(exact));
}

TEST(OffsetsTable, ThreadsGetTheSameLines)
{
    KOffsetsTable table(0, 20, 1.0F, true, false), alone(0, 20, 1.0F, true, false);
    std::atomic<int> differences = 0;
    ParallelFor(2000, [&](int i) {
        int x = 0, y = 0;
        float const angle = static_cast<float>(i * 7 % 2000) * kPi / 1000;
        KOffsets const* const line = table.GetOffsets(angle, 25.0F, x, y);
        if (line != table.GetOffsets(angle, 25.0F, x, y)) ++differences;
    });
    EXPECT_EQ(differences, 0);
    for (int i = 2000; i-- > 0;) {
        int x = 0, y = 0;
        float const angle = static_cast<float>(i) * kPi / 1000;
        EXPECT_EQ(EntriesOf(*table.GetOffsets(angle, 25.0F, x, y)),
                  EntriesOf(*alone.GetOffsets(angle, 25.0F, x, y)));
    }
}

} // namespace
} // namespace ombrelune::test
