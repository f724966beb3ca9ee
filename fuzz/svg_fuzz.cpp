// SVG documents: reading ends, and what was read can be written and read again with the same outlines.

#include <cmath>

#include "fuzz/Require.h"
#include "host/value/FrameFormat.h"
#include "shapes/svg/SvgReader.h"
#include "shapes/svg/SvgWriter.h"

using namespace ombrelune;

namespace {

int PointCount(KShapeGroup const& group)
{
    int count = 0;
    for (int i = 0; i < group.GetCount(); ++i)
        for (KShape const* shape : group.Get(i)->Each<KShape>()) count += shape->GetCount();
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    SvgShapes const first = ReadSvg(std::string(reinterpret_cast<char const*>(data), size));
    Require(first.problem.has_value() == !first.group, "either shapes or a problem");
    if (!first.group) return 0;
    std::string text;
    if (WriteSvg(*first.group, {.width = 1000, .height = 1000}, text)) return 0;
    SvgShapes const second = ReadSvg(text);
    Require(!second.problem, "what is written can be read");
    Require(PointCount(*second.group) <= 2 * PointCount(*first.group) + 2 * first.group->GetCount(),
            "no points from nowhere");
    return 0;
}
