#include "image/Power.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "image/ColorVectors.h"
#include "image/PixelMath.h"

namespace ombrelune {
namespace {

TEST(Power, IsWithinItsBoundOfTheTrueValueAndTheSameInEveryLane)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> turns(-40.0, 40.0), exponents(0.001, 16.0);
    for (int i = 0; i < 100000; ++i) {
        auto const base = static_cast<float>(std::exp2(turns(random)));
        auto const exponent = static_cast<float>(exponents(random));
        double const expected = std::pow(static_cast<double>(base), static_cast<double>(exponent));
        if (expected < 1.2e-38 || expected > 3.4e38) continue;
        float const actual = Power(base, exponent);
        ASSERT_NEAR(actual / expected, 1.0, 2e-6) << base << " to the " << exponent;
        ASSERT_EQ(Power(Float4{1.0F, 0.5F, base, 2.0F}, exponent)[2], actual);
    }
}

TEST(Power, KeepsTheEndsOfTheRange)
{
    float const infinity = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Power(1.0F, 3.7F), 1.0F);
    EXPECT_NEAR(Power(1e-40F, 0.1F) / std::pow(static_cast<double>(1e-40F), 0.1), 1.0, 2e-6);
    EXPECT_EQ(Power(1e-30F, 2.0F), 0.0F);
    EXPECT_EQ(Power(1e30F, 2.0F), infinity);
    EXPECT_EQ(Power(infinity, 0.5F), infinity);
}

TEST(ColorVectors, TruncateAsSingleFloats)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    for (float v : {-1.0F, 0.0F, 1.0F, 2.0F, nan, 1e-30F}) EXPECT_EQ(Truncate16(Float4{v})[0], Truncate16(v));
    // Every word's own float and its neighbours: where a float product would round up.
    for (int word = 0; word <= 65535; ++word) {
        float const v = static_cast<float>(word) / 65535.0F;
        Float4 const near{v, std::nextafter(v, 0.0F), std::nextafter(v, 1.0F), v * 0.999F};
        Int4 const truncated = Truncate16(near);
        for (int i = 0; i < 4; ++i)
            ASSERT_EQ(static_cast<std::uint32_t>(truncated[i]), Truncate16(near[i])) << word << " " << i;
    }
}

} // namespace
} // namespace ombrelune
