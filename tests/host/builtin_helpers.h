#pragma once

#include <string>

#include "host/render/Renderer.h"
#include "tests/host/image_helpers.h"

namespace ombrelune::test {

/// A document around one operator of the host, whose pictures come straight from the test.
class OneOperator {
public:
    explicit OneOperator(char const* name, RenderQuality quality = {})
        : quality_(quality), op_(*document_.AddOperator(*ClassRegistry().Find(name), name))
    {}

    OneOperator& Picture(char const* input, Ref<Image> image)
    {
        op_.FindInput(input)->SetValueQuietly(std::move(image));
        return *this;
    }
    OneOperator& Set(char const* input, double number)
    {
        op_.FindInput(input)->SetValueQuietly(MakeRef<Number>(number));
        return *this;
    }
    OneOperator& Set(char const* input, double x, double y)
    {
        op_.FindInput(input)->SetValueQuietly(MakeRef<Point>(x, y));
        return *this;
    }
    /// Null when the frame failed; the report is in `problem` then.
    Ref<Image> Make()
    {
        Renderer renderer(document_, quality_);
        RenderResult result = renderer.Evaluate(*op_.MainOutput(1), 0.0);
        problem = result.problem ? result.problem->text : "";
        return Ref<Image>::Share(dynamic_cast<Image*>(result.value.Get()));
    }

    std::string problem;

private:
    RenderQuality quality_;
    FusionDoc document_;
    Operator& op_;
};

/// A picture of one colour, premultiplied.
inline Ref<Image> MakeFlat(int width, int height, int depth, float red, float green, float blue, float alpha)
{
    Ref<Image> image = MakeImage(width, height, depth);
    FltPixel pixel;
    pixel.red = red;
    pixel.green = green;
    pixel.blue = blue;
    pixel.alpha = alpha;
    for (int y = 0; y < height; ++y) {
        PixPtr out(image.Get(), 0, y);
        for (int x = 0; x < width; ++x) out >>= pixel;
    }
    return image;
}

/// What a stored number of the depth may be off when the exact value is rounded to it.
inline double RoundingOf(int depth, double value)
{
    switch (depth) {
    case kDepthInt8: return 0.501 / 255.0;
    case kDepthInt16: return 0.51 / 65535.0; // single floats add a hundredth
    case kDepthHalf: return std::abs(value) / 2000.0 + 1e-6;
    default: return std::abs(value) * 1e-6 + 1e-6;
    }
}

} // namespace ombrelune::test
