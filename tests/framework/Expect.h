#pragma once

#include <initializer_list>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "tests/framework/ToolUnderTest.h"

namespace ombrelune::test {

inline void ExpectNear(KColor const& actual, KColor const& expected, double limit = 2e-6)
{
    for (int channel = 0; channel < 4; ++channel)
        EXPECT_NEAR(actual.GetChannel(channel), expected.GetChannel(channel), limit) << "channel " << channel;
}

inline void ExpectSame(KColor32 const& actual, KColor32 const& expected)
{
    EXPECT_EQ(actual, expected) << fmt::format("{} {} {} {}", actual.red, actual.green, actual.blue,
                                               actual.alpha);
}

inline void ExpectWords(KImage const& image, int x, int y, KColor32 const& words)
{
    SCOPED_TRACE(fmt::format("at {}, {}", x, y));
    ExpectSame(WordsAt(image, x, y), words);
}

struct Pair {
    KVector2 destination, source;
};

inline void ExpectAt(ToolUnderTest& warp, std::initializer_list<Pair> pairs, double limit = 1e-6)
{
    for (Pair const& pair : pairs) {
        SCOPED_TRACE(fmt::format("at {}, {}", pair.destination.x, pair.destination.y));
        auto const source = warp.At(pair.destination);
        ASSERT_TRUE(source);
        EXPECT_NEAR(source->x, pair.source.x, limit);
        EXPECT_NEAR(source->y, pair.source.y, limit);
    }
}

inline void ExpectIdentity(ToolUnderTest& warp, double limit = 1e-6)
{
    for (KVector2 const p : {KVector2(0, 0), KVector2(0.3F, 0.1F), KVector2(0.7F, 0.4F), KVector2(1, 0.5F)})
        ExpectAt(warp, {{p, p}}, limit);
}

} // namespace ombrelune::test
