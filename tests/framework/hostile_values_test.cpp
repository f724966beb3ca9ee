// Values far beyond what anybody means, through the bridge.

#include <cmath>

#include <gtest/gtest.h>

#include "host/builtin/Builtin.h"
#include "host/image/Image.h"
#include "host/image/PixPtr.h"
#include "host/render/Renderer.h"

namespace ombrelune {
namespace {

/// A tool behind a grey picture of 16 x 12 pixels, or alone where it makes one itself.
Ref<Image> Made(char const* tool, std::initializer_list<std::pair<char const*, double>> values, int depth)
{
    FusionDoc document;
    document.format.width = 16;
    document.format.height = 12;
    document.format.depth = depth;
    Operator& op = *document.AddOperator(*ClassRegistry().Find(std::string("Brassfennel.") + tool), "Tool");
    if (Input* const main = op.MainInput(1)) {
        Operator& grey = *document.AddOperator(*ClassRegistry().Find("Background"), "Grey");
        main->ConnectTo(grey.MainOutput(1));
    }
    for (auto const& [id, value] : values) {
        Input* const input = op.FindInput(id);
        EXPECT_TRUE(input) << tool << "." << id;
        if (input) input->SetValueQuietly(MakeRef<Number>(value));
    }
    RenderResult const result = Renderer(document, {}).Evaluate(*op.MainOutput(1), 0.0);
    EXPECT_FALSE(result.problem) << tool << ": " << result.problem->text;
    return Ref<Image>::Share(dynamic_cast<Image*>(result.value.Get()));
}

TEST(HostileValues, WholeNumbersBeyondAnyPictureAreLimited)
{
    for (double const value : {2147483647.0, 2147483000.0, 1073741824.0, 1e300})
        for (auto const& [tool, input] : {std::pair{"BF_CleanEdges", "PixelsLeft"},
                                          {"BF_Find", "SoftnessVertical"},
                                          {"BF_GrowColor", "Iterations"},
                                          {"BF_Lines", "NumberOfLineSets"},
                                          {"BF_Connect", "Subdivision"}}) {
            SCOPED_TRACE(fmt::format("{}.{} = {}", tool, input, value));
            EXPECT_TRUE(Made(tool, {{input, value}}, kDepthInt8));
        }
}

TEST(HostileValues, AChannelThatAGeneratorLeavesOutIsZero)
{
    // Pictures of another content go back to the pool first.
    for (int i = 0; i < 4; ++i) Made("BF_Invert", {}, kDepthInt16);
    Ref<Image> const image =
        Made("BF_Pattern", {{"Red", 0}, {"Alpha", 0}, {"Width", 16}, {"Height", 12}}, kDepthInt16);
    ASSERT_TRUE(image);
    for (int y = 0; y < image->Height(); ++y) {
        PixPtr in(image.Get(), 0, y);
        for (int x = 0; x < image->Width(); ++x) {
            Pixel pixel;
            pixel >>= in;
            EXPECT_EQ(pixel.red, 0U) << x << ", " << y;
            EXPECT_EQ(pixel.alpha, 0U) << x << ", " << y;
        }
    }
}

TEST(HostileValues, ColoursGrownFromNothingStayNumbers)
{
    Ref<Image> const image = Made("BF_GrowColor", {{"Threshold", 0.0}}, kDepthFloat);
    ASSERT_TRUE(image);
    FltPixel pixel;
    PixPtr in(image.Get(), 3, 3);
    pixel >>= in;
    EXPECT_TRUE(std::isfinite(pixel.red) && std::isfinite(pixel.alpha));
}

} // namespace
} // namespace ombrelune
