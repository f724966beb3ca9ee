#include <cstdlib>

#include "tests/framework/ToolUnderTest.h"

namespace ombrelune::test {
namespace {

TEST(NumberBeat, RisesFallsHoldsAndFallsAgain)
{
    struct {
        float time, value;
    } const cases[] = {{-0.5F, 0.0F}, {0.0F, 0.25F},  {1.0F, 0.625F}, {2.0F, 1.0F},   {3.0F, 0.75F},
                       {4.0F, 0.5F},  {5.9F, 0.5F},   {6.0F, 0.5F},   {7.0F, 0.375F}, {8.0F, 0.0F},
                       {9.9F, 0.0F},  {10.0F, 0.25F}, {12.0F, 1.0F}};
    ToolUnderTest tool("BF_NumberBeat");
    tool.Set("VaMi"_id, 0.25F);
    // Between two pulses it is 0, not the minimum.
    for (auto const& each : cases) EXPECT_FLOAT_EQ(tool.NumberAt(each.time), each.value) << each.time;
    // Without an attack a pulse starts at its maximum.
    EXPECT_FLOAT_EQ(tool.Set("TiAt"_id, 0.0F).NumberAt(10.0F), 1.0F);
    for (auto id : {"TiDe"_id, "TiSu"_id, "TiRe"_id}) tool.Set(id, 0.0F);
    EXPECT_EQ(tool.NumberAt(10.0F), 0.0F) << "no time for a pulse";
}

TEST(NumberBeat, EndsWithAFullBeatIfItIsTold)
{
    ToolUnderTest tool("BF_NumberBeat");
    tool.Set("TiEn"_id, 25.0F).Set("TiAt"_id, 0.0F).Set("TiDe"_id, 0.0F).Set("TiSu"_id, 10.0F);
    EXPECT_EQ(tool.NumberAt(26.0F), 0.5F);
    EXPECT_EQ(tool.NumberAt(30.0F), 0.5F);
    EXPECT_EQ(tool.NumberAt(30.1F), 0.0F);
    tool.Set("TiER"_id, false);
    EXPECT_EQ(tool.NumberAt(25.0F), 0.5F);
    EXPECT_EQ(tool.NumberAt(25.1F), 0.0F);
    // 25 frames are two whole beats at 120 a minute and 25 a second: 12.5 frames each.
    tool.Set("TiER"_id, true).Set("Type"_id, 1).Set("TiSu"_id, 1.0F).Set("TiRe"_id, 0.0F);
    EXPECT_EQ(tool.NumberAt(12.4F), 0.0F);
    EXPECT_EQ(tool.NumberAt(12.5F), 0.5F);
    EXPECT_EQ(tool.NumberAt(25.0F), 0.5F);
    EXPECT_EQ(tool.NumberAt(25.1F), 0.0F);
    EXPECT_EQ(ToolUnderTest("BF_NumberBeat").Set("TiFr"_id, 0.0F).NumberAt(3.0F), 0.0F) << "no beat at all";
}

TEST(NumberBeat, CombinesWithAnother)
{
    float const expected[] = {1.6F, 0.6F, 1.0F, 0.6F}; // of a pulse of 1 and 0.6; the sum is not limited
    for (int type = 0; type < 4; ++type)
        EXPECT_FLOAT_EQ(
            ToolUnderTest("BF_NumberBeat").Set("VaCT"_id, type).Set("VaCo"_id, 0.6F).NumberAt(2.0F),
            expected[type]);
}

/// The number for a time and seed, straight from the C library.
float Drawn(double time, int seed)
{
    auto const mixed = static_cast<unsigned>(static_cast<long long>(seed + time * 10.0));
    srandom(mixed);
    for (int i = 0; i < static_cast<int>(mixed) % 97; ++i) random();
    return static_cast<float>(static_cast<double>(random()) / 2147483648.0);
}

TEST(NumberRandom, IsTheGeneratorsNumberOfTheTimeAndSeed)
{
    ToolUnderTest tool("BF_NumberRandom");
    tool.Set("RaMi"_id, -2.0F).Set("RaMa"_id, 6.0F).Set("RaSe"_id, 77);
    for (float time : {0.0F, 0.5F, 1.0F, 120.0F})
        EXPECT_FLOAT_EQ(tool.NumberAt(time), -2.0F + 8.0F * Drawn(time, 77)) << time;
    EXPECT_NE(tool.NumberAt(0.0F), tool.NumberAt(0.5F));
}

TEST(NumberRandom, WandersBetweenTheNumbersOfEveryFewFrames)
{
    ToolUnderTest tool("BF_NumberRandom");
    tool.Set("RaEv"_id, false);
    float const first = Drawn(5.0, 1234), next = Drawn(10.0, 1234);
    tool.Set("RaIn"_id, 0);
    for (float time : {5.0F, 7.0F, 9.9F}) EXPECT_EQ(tool.NumberAt(time), first);
    EXPECT_EQ(tool.NumberAt(10.0F), next);
    tool.Set("RaIn"_id, 1);
    EXPECT_NEAR(tool.NumberAt(6.0F), 0.8F * first + 0.2F * next, 1e-6F);
    tool.Set("RaIn"_id, 2);
    // 0.5 - 0.5 cos(pi / 5)
    EXPECT_NEAR(tool.NumberAt(6.0F), 0.904508F * first + 0.095492F * next, 1e-6F);
    EXPECT_NEAR(tool.NumberAt(7.5F), 0.5F * (first + next), 1e-6F);
}

TEST(NumberColorSwitchboard, CyclesTheFirstColoursAndRemaps)
{
    auto const reds = [](int set, int range, int offset, int firstRemap) {
        ToolUnderTest tool("BF_NumberColorSwitchboard");
        // Two inputs have the same identifier.
        auto const member = [&](char const* label) -> int& {
            for (KParameter* each : tool.Effect().parameters.Each<KParameter>())
                if (each->label.String() == label) return *static_cast<int*>(each->target);
            throw std::logic_error(label);
        };
        member("Set") = set;
        member("Cycle Range") = range;
        tool.Set("Cycl"_id, offset).Set("Rem0"_id, firstRemap);
        tool.Set(0x43000000U + 3 * 65536U, KColor(0.5F, 0.25F, 0.125F, 1.0F)); // set 4, colour 1
        float const number = tool.NumberAt(0.0F);
        std::string text;
        for (KOutput const* output : tool.Effect().outputs.Each<KOutput>())
            if (output->label.String()[0] == 'R')
                text +=
                    std::to_string(static_cast<int>(*static_cast<float*>(output->target) * 100.0F + 0.5F)) +
                    " ";
        EXPECT_EQ(static_cast<int>(number * 100.0F + 0.5F), std::stoi(text)) << "the number is the first red";
        return text;
    };
    EXPECT_EQ(reds(1, 8, 0, 1), "0 10 20 30 40 50 60 70 ");
    EXPECT_EQ(reds(1, 2, 1, 1), "10 0 20 30 40 50 60 70 ");
    EXPECT_EQ(reds(1, 8, 11, 1), "30 40 50 60 70 0 10 20 ");
    EXPECT_EQ(reds(4, 3, 1, 8), "10 20 70 30 40 50 60 70 ");
    EXPECT_EQ(reds(4, 8, 0, 1), "50 10 20 30 40 50 60 70 ");
}

} // namespace
} // namespace ombrelune::test
