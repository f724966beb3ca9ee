#include <gtest/gtest.h>

#include <fmt/format.h>

#include "host/flow/FrameRange.h"

namespace ombrelune {
namespace {

TEST(FrameRange, ReadsFramesAndRanges)
{
    struct {
        char const* text;
        std::vector<int> frames;
    } const cases[] = {
        {"5", {5}},
        {"1-4", {1, 2, 3, 4}},
        {"30,1-10x4,5", {1, 5, 9, 30}},
        {"-5--3,-4", {-5, -4, -3}},
        {"-2147483648,2147483640-2147483647x7", {-2147483647 - 1, 2147483640, 2147483647}},
    };
    for (auto const& c : cases) EXPECT_EQ(ParseFrames(c.text).frames, c.frames) << c.text;
}

TEST(FrameRange, RefusesTheRest)
{
    EXPECT_EQ(ParseFrames("1-1000000").frames.size(), 1000000U);
    struct {
        char const* text;
        char const* why;
    } const cases[] = {
        {"", "a frame is a whole number"},
        {"1.5", "'.5' is left over"},
        {"1,", "a frame is a whole number"},
        {"1-3x0", "a step is a whole number above 0"},
        {"99999999999", "a frame is a whole number"},
        {"0-1000000", "that is more than 1000000 frames"},
        // Many small ranges, even over the same frames, are no way around it.
        {"1-600000,1-600000", "that is more than 1000000 frames"},
    };
    for (auto const& c : cases) {
        FrameRange const range = ParseFrames(c.text);
        ASSERT_TRUE(range.problem) << c.text;
        EXPECT_EQ(
            range.problem->text,
            fmt::format("frames '{}': {}; write 5, 1-10 or 1-10x2, with commas between", c.text, c.why));
    }
}

} // namespace
} // namespace ombrelune
