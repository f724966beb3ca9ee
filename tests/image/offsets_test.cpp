#include <atomic>
#include <cmath>

#include <gtest/gtest.h>

#include "host/value/Parallel.h"
#include "image/KOffsetsTable.h"
#include "tests/image/kimage_helpers.h"

namespace ombrelune::test {
namespace {

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

} // namespace
} // namespace ombrelune::test
