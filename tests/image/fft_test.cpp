#include <complex>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

#include "image/KFft.h"

namespace ombrelune {
namespace {

TEST(Fft, AgreesWithTheSumOfEveryFrequency)
{
    std::mt19937 random(5);
    for (int count : {1, 2, 4, 64, 256}) {
        std::vector<double> values(static_cast<std::size_t>(count));
        for (double& v : values) v = static_cast<double>(random() % 1000) / 100.0;
        KFft fft(count, 17);
        EXPECT_EQ(fft.GetValue(), 17);
        fft.CopyIn(values.data(), count);
        fft.Transform();
        for (int f = 0; f < count; ++f) {
            std::complex<double> sum;
            for (int i = 0; i < count; ++i)
                sum += values[static_cast<std::size_t>(i)] *
                       std::polar(1.0, -2.0 * std::numbers::pi * f * i / count);
            EXPECT_NEAR(fft.GetIntensity(f), std::abs(sum) / std::sqrt(count), 1e-9) << count << " " << f;
        }
    }
}

} // namespace
} // namespace ombrelune
