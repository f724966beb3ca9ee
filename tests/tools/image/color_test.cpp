#include <map>
#include <memory>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "framework/Registration.h"
#include "tests/framework/Expect.h"

namespace ombrelune {
namespace {

using namespace test;

// Invert.

TEST(Invert, ColorLuminanceAndHueKeepAlpha)
{
    ToolUnderTest invert("BF_Invert");
    // The mirror of the luminance is 2 / 3 of the sum: 0.4, and 4000 of integers, where it truncates.
    KColor const c(0.2F, 0.3F, 0.1F, 0.25F);
    KColor32 const w(1000, 2000, 3001, 30000);
    ExpectNear(invert.OfFloat(c), {0.8F, 0.7F, 0.9F, 0.25F});
    ExpectSame(invert.OfInt(w), {64535, 63535, 62534, 30000});
    invert.Set("InTy"_id, 1);
    ExpectNear(invert.OfFloat(c), {0.8F, 0.9F, 0.7F, 0.25F});
    ExpectSame(invert.OfInt(w), {62535, 63535, 64536, 30000});
    invert.Set("InTy"_id, 2);
    ExpectNear(invert.OfFloat(c), {0.2F, 0.1F, 0.3F, 0.25F});
    ExpectSame(invert.OfInt(w), {3000, 2000, 999, 30000});
}

// Color.

TEST(Color, CombinesAllFourChannels)
{
    struct Case {
        int type;
        KColor ofFloat;
        KColor32 ofInt;
    };
    // The colour is 32767, 16383, 0, 65535 in integers. Integers divide without a scale and limit at the end.
    Case const cases[] = {
        {0, {0.5F, 0.25F, 0.0F, 1.0F}, {32767, 16383, 0, 65535}},
        {1, {0.9F, 0.75F, 0.25F, 1.5F}, {65535, 36383, 10000, 65535}},
        {2, {-0.1F, 0.25F, 0.25F, -0.5F}, {7233, 3617, 10000, 0}},
        {3, {0.2F, 0.125F, 0.0F, 0.5F}, {19999, 4999, 0, 65535}},
        {4, {0.8F, 2.0F, 0.25F, 0.5F}, {1, 1, 10000, 1}},
    };
    ToolUnderTest color("BF_Color");
    color.Set("ColR"_id, KColor(0.5F, 0.25F, 0.0F, 1.0F));
    for (Case const& each : cases) {
        SCOPED_TRACE(each.type);
        color.Set("InTy"_id, each.type);
        ExpectNear(color.OfFloat({0.4F, 0.5F, 0.25F, 0.5F}), each.ofFloat);
        ExpectSame(color.OfInt({40000, 20000, 10000, 65535}), each.ofInt);
    }
}

// Hue/Saturation.

TEST(HueSaturation, NeutralSettingsCopyTheSource)
{
    ToolUnderTest tool("BF_HueSaturation");
    // Through HLS and back these would be limited.
    EXPECT_EQ(tool.OfFloat({-1.0F, 2.0F, 0.3F, 5.0F}), KColor(-1.0F, 2.0F, 0.3F, 5.0F));
}

TEST(HueSaturation, TurnsScalesAndColorizes)
{
    ToolUnderTest turn("BF_HueSaturation");
    turn.Set("sHue"_id, 1.0F / 3.0F);
    ExpectNear(turn.OfFloat({1.0F, 0.0F, 0.0F, 0.5F}), {0.0F, 1.0F, 0.0F, 0.5F});
    ExpectSame(turn.OfInt({0, 0, 65535, 30000}), {65535, 0, 0, 30000});

    ToolUnderTest grey("BF_HueSaturation");
    grey.Set("sSaM"_id, 0.0F);
    ExpectNear(grey.OfFloat({0.75F, 0.25F, 0.5F, 1.0F}), {0.5F, 0.5F, 0.5F, 1.0F});

    ToolUnderTest lights("BF_HueSaturation");
    lights.Set("sLiM"_id, 0.5F).Set("sLig"_id, 0.25F);
    ExpectNear(lights.OfFloat({1.0F, 1.0F, 1.0F, 1.0F}), {0.75F, 0.75F, 0.75F, 1.0F});

    // Red, at the colour's own lightness 0.5 and saturation 1.
    ToolUnderTest colorize("BF_HueSaturation");
    colorize.Set("cCol"_id, true);
    ExpectNear(colorize.OfFloat({0.0F, 0.0F, 1.0F, 1.0F}), {1.0F, 0.0F, 0.0F, 1.0F});
}

// Threshold.

TEST(Threshold, IsAHardStepOfAllFourChannels)
{
    ToolUnderTest step("BF_Threshold");
    // Luminance is the mean of the largest and the smallest: 0.6, and exactly the threshold.
    ExpectNear(step.OfFloat({1.0F, 0.2F, 0.5F, 0.1F}), {1.0F, 1.0F, 1.0F, 1.0F});
    ExpectNear(step.OfFloat({0.75F, 0.25F, 0.5F, 0.1F}), {0.0F, 0.0F, 0.0F, 0.0F});
    ExpectSame(step.OfInt({50000, 40000, 0, 3}), {0, 0, 0, 0});
    ExpectSame(step.OfInt({50000, 40000, 20000, 3}), {65535, 65535, 65535, 65535});
    step.Set("Inve"_id, true);
    ExpectSame(step.OfInt({50000, 40000, 20000, 3}), {0, 0, 0, 0});
    step.Set("ThCh"_id, 3);
    ExpectSame(step.OfInt({50000, 40000, 20000, 3}), {65535, 65535, 65535, 65535});
}

TEST(Threshold, RampsRepeatAndEndWhereTheLastRepeatEnds)
{
    struct Case {
        float repeat;
        bool pingPong;
        float middle, end; // at the threshold, and above the ramp
    };
    // The ramp runs from 0.4 to 0.6; at 0.5 it is half way through its repeats.
    Case const cases[] = {
        {1.0F, true, 0.5F, 1.0F},  {1.0F, false, 0.5F, 1.0F}, {3.0F, true, 0.5F, 1.0F},
        {2.5F, true, 0.75F, 0.5F}, {2.0F, false, 0.0F, 1.0F}, {2.5F, false, 0.25F, 0.5F},
        {0.0F, true, 0.0F, 0.0F},  {0.0F, false, 0.0F, 0.0F},
    };
    for (Case const& each : cases) {
        SCOPED_TRACE(fmt::format("repeat {} ping-pong {}", each.repeat, each.pingPong));
        ToolUnderTest ramp("BF_Threshold");
        ramp.Set("SoRe"_id, 0.2F).Set("ReRe"_id, each.repeat).Set("RePR"_id, each.pingPong);
        EXPECT_NEAR(ramp.OfFloat({0.5F, 0.5F, 0.5F, 1.0F}).green, each.middle, 3e-6);
        EXPECT_NEAR(ramp.OfFloat({0.7F, 0.7F, 0.7F, 1.0F}).alpha, each.end, 1e-6);
        EXPECT_EQ(ramp.OfFloat({0.4F, 0.4F, 0.4F, 1.0F}).blue, 0.0F);
    }
}

TEST(Threshold, WithoutLocksEachChannelGoesItsOwnWay)
{
    ToolUnderTest each("BF_Threshold");
    each.Set("ThCh"_id, 5).Set("ThLo"_id, false).Set("SoLo"_id, false);
    each.Set("ThGr"_id, 0.9F).Set("ThAl"_id, 0.1F).Set("SoBl"_id, 0.5F);
    // Blue: (0.625 - 0.5 + 0.25) / 0.5 = 0.75.
    ExpectNear(each.OfFloat({0.6F, 0.6F, 0.625F, 0.2F}), {1.0F, 0.0F, 0.75F, 1.0F});
    each.Set("ThLo"_id, true).Set("SoLo"_id, true);
    ExpectNear(each.OfFloat({0.6F, 0.6F, 0.625F, 0.2F}), {1.0F, 1.0F, 1.0F, 0.0F});
}

// Match Color.

void SetRow(ToolUnderTest& tool, unsigned row, KColor const& is, KColor const& shouldBe, int match = 0)
{
    tool.Set("CSR0"_id + row, is).Set("CDR0"_id + row, shouldBe).Set("CTy0"_id + row, match);
}

KColor Bare(float v) { return {v, v, v, 0.0F}; }

TEST(MatchColor, OneColorShiftsAndTwoScale)
{
    ToolUnderTest tool("BF_MatchColor");
    SetRow(tool, 0, Bare(0.2F), {0.3F, 0.2F, 0.0F, 0.0F});
    SetRow(tool, 2, Bare(0.8F), {0.9F, 0.5F, 1.0F, 0.0F});
    tool.Set("CoNu"_id, 0);
    ExpectNear(tool.OfFloat({0.5F, 0.5F, 0.5F, 0.7F}), {0.6F, 0.5F, 0.3F, 0.7F});
    tool.Set("CoNu"_id, 1);
    ExpectNear(tool.OfFloat({0.5F, 0.5F, 0.5F, 0.7F}), {0.6F, 0.35F, 0.5F, 0.7F});
}

TEST(MatchColor, ThreeColorsBendByAPower)
{
    ToolUnderTest tool("BF_MatchColor");
    SetRow(tool, 1, Bare(0.5F), Bare(0.25F)); // a gamma of 2 between 0 and 1
    ExpectNear(tool.OfFloat({0.5F, 0.25F, -0.5F, 0.3F}), {0.25F, 0.0625F, -0.5F, 0.3F});
    // The table counts in 65536ths: 0.5 becomes 0.25, and 65535 / 65536 squared falls just short of 65534.1.
    ExpectSame(tool.OfInt({32768, 16384, 65535, 1234}), {16384, 4096, 65534, 1234});

    SetRow(tool, 1, Bare(0.5F), Bare(0.5F)); // in proportion: a straight line
    ExpectNear(tool.OfFloat({0.3F, 0.6F, 0.9F, 1.0F}), {0.3F, 0.6F, 0.9F, 1.0F});
    SetRow(tool, 1, Bare(0.5F), Bare(1.5F)); // not between: no curve
    ExpectNear(tool.OfFloat({0.3F, 0.6F, 0.9F, 1.0F}), {0.3F, 0.6F, 0.9F, 1.0F});
    SetRow(tool, 2, Bare(0.0F), Bare(1.0F)); // no span to scale by
    ExpectNear(tool.OfFloat({0.3F, 0.6F, 0.9F, 1.0F}), {0.3F, 0.6F, 0.9F, 1.0F});
}

TEST(MatchColor, TintKeepsTheLightnessAndLuminanceTheColor)
{
    ToolUnderTest tool("BF_MatchColor");
    tool.Set("CoNu"_id, 0);
    // Lightness 0.3 against 0.5.
    SetRow(tool, 0, {0.6F, 0.5F, 0.4F, 0.0F}, {0.6F, 0.2F, 0.1F, 0.0F}, 1);
    ExpectNear(tool.OfFloat({0.6F, 0.5F, 0.4F, 1.0F}), {0.8F, 0.4F, 0.3F, 1.0F});
    SetRow(tool, 0, {0.6F, 0.5F, 0.4F, 0.0F}, {0.6F, 0.2F, 0.1F, 0.0F}, 2);
    ExpectNear(tool.OfFloat({0.6F, 0.5F, 0.4F, 1.0F}), {0.4F, 0.3F, 0.2F, 1.0F});
    // What is read once stays: a second frame gives the same.
    ExpectNear(tool.OfFloat({0.6F, 0.5F, 0.4F, 1.0F}), {0.4F, 0.3F, 0.2F, 1.0F});
}

// Replace Color.

TEST(ReplaceColor, ShiftsTheSelectedColorsAndBlendsAtTheEdge)
{
    ToolUnderTest tool("BF_ReplaceColor");
    tool.Set("CoSR"_id, KColor(0.5F, 0.5F, 0.5F, 1.0F)).Set("CoRe"_id, 0.2F);
    // Inside 26214 to 39321 the whole of 0.2 (13107) is added; the softness is 6553 wide.
    ExpectSame(tool.OfInt({30000, 32768, 32768, 65535}), {43107, 32768, 32768, 65535});
    ExpectSame(tool.OfInt({50000, 32768, 32768, 65535}), {50000, 32768, 32768, 65535});
    // 42598 lies half way out: 32773 parts of 42598 and 32762 of 55705.
    EXPECT_NEAR(tool.OfInt({42598, 32768, 32768, 65535}).red, 49150, 2);
    ExpectNear(tool.OfFloat({0.5F, 0.5F, 0.5F, 1.0F}), {0.7F, 0.5F, 0.5F, 1.0F}, 3e-5);
    ExpectNear(tool.OfFloat({0.9F, 0.5F, 0.5F, 1.0F}), {0.9F, 0.5F, 0.5F, 1.0F}, 3e-5);
    tool.Set("SeIn"_id, true);
    ExpectSame(tool.OfInt({30000, 32768, 32768, 65535}), {30000, 32768, 32768, 65535});
}

TEST(ReplaceColor, WithoutCorrectionItCopiesUnlessTheSelectionIsWanted)
{
    ToolUnderTest tool("BF_ReplaceColor");
    tool.Set("CoSR"_id, KColor(0.5F, 0.5F, 0.5F, 1.0F));
    EXPECT_EQ(tool.OfFloat({0.123F, 7.0F, -1.0F, 0.3F}), KColor(0.123F, 7.0F, -1.0F, 0.3F));
    tool.Set("SeAl"_id, 1);
    EXPECT_EQ(tool.OfInt({32768, 32768, 32768, 5}).alpha, 65535);
    EXPECT_EQ(tool.OfInt({0, 32768, 32768, 5}).alpha, 0);
}

TEST(ReplaceColor, AHueRangeMayCrossZero)
{
    ToolUnderTest tool("BF_ReplaceColor");
    tool.Set("CoSR"_id, KColor(1.0F, 0.0F, 0.0F, 1.0F)).Set("SeAl"_id, 1);
    // Hues 0.97 and 0.03 at lightness 0.5 and saturation 1, and green far away.
    for (KParameter* parameter : tool.Effect().parameters.Each<KParameter>())
        if (parameter->control == KCT_Standard && parameter->standard == KPS_ColorSpace)
            *static_cast<int*>(parameter->target) = 1;
    EXPECT_EQ(tool.OfInt({65535, 0, 11796, 1}).alpha, 65535);
    EXPECT_EQ(tool.OfInt({65535, 11796, 0, 1}).alpha, 65535);
    EXPECT_EQ(tool.OfInt({0, 65535, 0, 1}).alpha, 0);
}

std::map<std::uint32_t, float> ValuesSet(KEffect& effect, std::uint32_t id, float value)
{
    KParameterValue given;
    given.floatValue = value;
    given.intValue = static_cast<int>(value + 0.5F);
    std::unique_ptr<KMessageList> const messages(effect.AffectInputs(id, given));
    std::map<std::uint32_t, float> values;
    for (KMessage const* message : messages->Each<KMessage>())
        if (message->type == KMsg_Value) values[message->target] = message->value.floatValue;
    return values;
}

TEST(ReplaceColor, ButtonsWorkWithTheNewestColors)
{
    ToolUnderTest tool("BF_ReplaceColor");
    ValuesSet(tool.Effect(), "CoSR"_id, 0.25F);
    ValuesSet(tool.Effect(), "CoDG"_id, 0.5F);
    auto const corrections = ValuesSet(tool.Effect(), "CoMa"_id, 1.0F);
    EXPECT_EQ(corrections.at("CoRe"_id), -0.25F);
    EXPECT_EQ(corrections.at("CoGr"_id), 0.5F);
    EXPECT_TRUE(ValuesSet(tool.Effect(), "CoMa"_id, 0.0F).empty()) << "a button that is let go";

    ValuesSet(tool.Effect(), "SeWi"_id, 0.125F);
    auto const around = ValuesSet(tool.Effect(), "SeSb"_id, 1.0F);
    EXPECT_EQ(around.at("SeRL"_id), 0.125F);
    EXPECT_EQ(around.at("SeRH"_id), 0.375F);
    auto const full = ValuesSet(tool.Effect(), "SeFb"_id, 1.0F);
    EXPECT_EQ(full.at("SeBL"_id), 0.0F);
    EXPECT_EQ(full.at("SeBH"_id), 1.0F);
    EXPECT_EQ(full.at("SeGR"_id), 1.0F);
}

} // namespace
} // namespace ombrelune
