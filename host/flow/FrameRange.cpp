#include "host/flow/FrameRange.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include <fmt/format.h>

namespace ombrelune {

namespace {

/// Takes a whole number from the front of the text.
std::optional<int> TakeInt(std::string_view& text)
{
    int value = 0;
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return value;
}

bool Take(std::string_view& text, char c)
{
    if (!text.starts_with(c)) return false;
    text.remove_prefix(1);
    return true;
}

} // namespace

FrameRange ParseFrames(std::string_view text)
{
    auto const wrong = [&](std::string const& why) {
        FrameRange range;
        range.problem =
            Problem{.text = fmt::format("frames {}: {}; write 5, 1-10 or 1-10x2, with commas between",
                                        Quoted(text), why)};
        return range;
    };
    std::vector<int> frames;
    std::string_view rest = text;
    do {
        std::optional<int> const first = TakeInt(rest);
        if (!first) return wrong("a frame is a whole number");
        int last = *first, step = 1;
        if (Take(rest, '-')) {
            std::optional<int> const end = TakeInt(rest);
            if (!end) return wrong("a range needs a last frame");
            last = *end;
            if (Take(rest, 'x')) {
                std::optional<int> const given = TakeInt(rest);
                if (!given || *given < 1) return wrong("a step is a whole number above 0");
                step = *given;
            }
        }
        if (last < *first) return wrong(fmt::format("{} comes before {}", last, *first));
        auto const room = kMostFrames - static_cast<long>(frames.size());
        if ((static_cast<long>(last) - *first) / step >= room)
            return wrong(fmt::format("that is more than {} frames", kMostFrames));
        for (long frame = *first; frame <= last; frame += step) frames.push_back(static_cast<int>(frame));
    } while (Take(rest, ','));
    if (!rest.empty()) return wrong(fmt::format("{} is left over", Quoted(rest)));
    std::sort(frames.begin(), frames.end());
    frames.erase(std::unique(frames.begin(), frames.end()), frames.end());
    return {std::move(frames), std::nullopt};
}

FrameRange FramesBetween(double start, double end)
{
    double const first = std::ceil(start), last = std::floor(end);
    constexpr double kLeast = std::numeric_limits<int>::min(), kGreatest = std::numeric_limits<int>::max();
    FrameRange range;
    if (!(first >= kLeast && last <= kGreatest))
        range.problem = Problem{.text = fmt::format("a frame lies from {} to {}", kLeast, kGreatest)};
    else if (last - first >= kMostFrames)
        range.problem = Problem{.text = fmt::format("that is more than {} frames", kMostFrames)};
    else
        for (double frame = first; frame <= last; ++frame) range.frames.push_back(static_cast<int>(frame));
    return range;
}

} // namespace ombrelune
