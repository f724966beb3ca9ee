// Any bytes as a list of frames.

#include <algorithm>

#include "fuzz/Require.h"
#include "host/flow/FrameRange.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    using namespace ombrelune;
    FrameRange const range = ParseFrames({reinterpret_cast<char const*>(data), size});
    Require(range.frames.empty() == range.problem.has_value(), "there are frames or a problem");
    Require(range.frames.size() <= kMostFrames, "there are not too many");
    Require(std::is_sorted(range.frames.begin(), range.frames.end(), std::less_equal()),
            "frames ascend, each once");
    return 0;
}
