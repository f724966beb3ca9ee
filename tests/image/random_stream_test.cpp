#include <vector>

#include <gtest/gtest.h>

#include "image/KRandom.h"
#include "image/KRandomStream.h"

namespace ombrelune {
namespace {

TEST(RandomStream, IsThatOfTheProcessWideGenerator)
{
    for (unsigned seed :
         {0U, 1U, 96U, 97U, 200U, 32767U, 8294400U, 2147483646U, 2147483647U, 2147483648U, ~0U}) {
        SCOPED_TRACE(seed);
        KRandomSeed(seed);
        KRandomStream stream(seed);
        for (int i = 0; i < 100; ++i) ASSERT_EQ(stream.Next(), Krand()) << i;
        EXPECT_EQ(stream.Random(3.0F), KRandom(3.0F));
    }
}

TEST(RandomStream, FirstDrawsAreThoseOfNeighbouringSeeds)
{
    struct Run {
        unsigned seed;
        int count;
    };
    // Short and long runs, from 0, past multiples of the modulus' reach, and across 2^31 and 2^32.
    for (Run run : {Run{0, 400}, Run{12345, 1}, Run{777, 96}, Run{40000000, 1000}, Run{2147483447, 200},
                    Run{2147483500, 300}, Run{4294967290U, 20}}) {
        SCOPED_TRACE(run.seed);
        std::vector<UInt4> draws(static_cast<std::size_t>(run.count));
        FirstDraws(run.seed, run.count, draws.data());
        for (int i = 0; i < run.count; ++i) {
            KRandomSeed(run.seed + static_cast<unsigned>(i));
            for (int k = 0; k < 4; ++k)
                ASSERT_EQ(draws[static_cast<std::size_t>(i)][k], Krand()) << i << ' ' << k;
        }
    }
}

} // namespace
} // namespace ombrelune
