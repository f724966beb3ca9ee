#include <random>

#include <gtest/gtest.h>

#include "framework/Registration.h"
#include "tests/framework/ToolUnderTest.h"

namespace ombrelune {
namespace {

using namespace test;

/// Sets most sliders, boxes, button rows and colours to something within their range; seed 0 sets none.
void Shake(KEffect& effect, std::uint32_t seed)
{
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> unit(0.0F, 1.0F);
    if (seed == 0) return;
    for (KParameter* parameter : effect.parameters.Each<KParameter>()) {
        float const low = parameter->minimum, high = parameter->maximum;
        if (random() % 5 == 0) continue; // what depends on a default is reached too
        switch (parameter->control) {
        case KCT_Slider:
        case KCT_Screw:
            if (parameter->type == KPT_Float)
                *static_cast<float*>(parameter->target) = low + unit(random) * (high - low);
            else *static_cast<int*>(parameter->target) = static_cast<int>(low + unit(random) * (high - low));
            break;
        case KCT_Checkbox: *static_cast<bool*>(parameter->target) = random() % 2 == 1; break;
        case KCT_Buttons:
        case KCT_List:
            *static_cast<int*>(parameter->target) =
                static_cast<int>(random() % static_cast<unsigned>(parameter->names.Count()));
            break;
        case KCT_Color:
            *static_cast<KColor*>(parameter->target) = {unit(random), unit(random), unit(random),
                                                        unit(random)};
            break;
        case KCT_Range: {
            float const a = unit(random), b = unit(random);
            *static_cast<KRange*>(parameter->target) = {std::min(a, b), std::max(a, b)};
            break;
        }
        default: break;
        }
    }
}

/// Pictures of a size and depth unlike the source's for every further picture that it takes.
std::vector<Picture> Connect(KEffect& effect, int depth)
{
    std::vector<Picture> pictures;
    for (KParameter* parameter : effect.parameters.Each<KParameter>()) {
        if (parameter->type != KPT_Image || !parameter->target) continue;
        pictures.push_back(MakeBusyPicture(depth, 61, 40));
        *static_cast<KImage**>(parameter->target) = pictures.back().get();
    }
    return pictures;
}

class EveryTool : public testing::TestWithParam<std::string> {};

TEST_P(EveryTool, GivesTheSameBytesByRowsOrPixelsOnOneThreadOrTwo)
{
    KEffectFactory const& factory = *FindEffectFactory(GetParam());
    for (std::uint32_t seed = 0; seed <= 6; ++seed) {
        for (int depth : {kDepthInt8, kDepthInt16, kDepthHalf, kDepthFloat}) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " depth " << depth);
            Picture const source = MakeBusyPicture(depth, 277, 23);
            auto const plain = factory.makePlainForm(), rows = factory.makeRowForm();
            auto* const plainImage = dynamic_cast<KEffectImage*>(plain.get());
            auto* const rowsImage = dynamic_cast<KEffectImage*>(rows.get());
            if (!plainImage) GTEST_SKIP() << "makes no picture";
            Shake(*plain, seed);
            Shake(*rows, seed);
            int const otherDepth = depth == kDepthFloat ? kDepthInt8 : kDepthFloat;
            std::vector<Picture> others;
            if (seed % 2 == 1) {
                others = Connect(*plain, otherDepth);
                for (Picture& each : Connect(*rows, otherDepth)) others.push_back(std::move(each));
            }
            KProcessImageData data = DataFor(*source);
            data.preDivide = seed % 2 == 0;
            data.superSample = seed == 6 ? 2 : 1;
            SetThreadCount(1);
            Picture const expected = Apply(*plainImage, *source, data);
            if (!expected) continue; // a choice among pictures of which none is connected
            EXPECT_TRUE(SameBytes(*Apply(*rowsImage, *source, data), *expected));
            SetThreadCount(2);
            EXPECT_TRUE(SameBytes(*Apply(*rowsImage, *source, data), *expected));
            SetThreadCount(0);
        }
    }
}

TEST_P(EveryTool, MakesNumbersOfNumbersDownToOnePixel)
{
    for (int side : {1, 2, 33}) {
        for (int depth : {kDepthInt8, kDepthInt16, kDepthHalf, kDepthFloat}) {
            auto const effect = FindEffectFactory(GetParam())->makeRowForm();
            auto* const image = dynamic_cast<KEffectImage*>(effect.get());
            if (!image) GTEST_SKIP() << "makes no picture";
            Picture const source = MakeBusyPicture(depth, side, side);
            Picture const result = Apply(*image, *source);
            if (!result) GTEST_SKIP() << "makes no picture of this one alone";
            for (int y = 0; y < side; ++y)
                for (int x = 0; x < side; ++x)
                    for (int channel = 0; channel < 4; ++channel)
                        ASSERT_TRUE(std::isfinite(ColorAt(*result, x, y).GetChannel(channel)))
                            << side << " pixels at depth " << depth << ": " << x << ", " << y;
        }
    }
}

std::vector<std::string> ToolNames()
{
    std::vector<std::string> names;
    for (KEffectFactory const& factory : EffectFactories()) names.push_back(factory.tool);
    return names;
}

INSTANTIATE_TEST_SUITE_P(, EveryTool, testing::ValuesIn(ToolNames()),
                         [](auto const& name) { return name.param; });

} // namespace
} // namespace ombrelune
