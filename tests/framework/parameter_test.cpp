#include <gtest/gtest.h>

#include "framework/KEffectImage.h"

namespace ombrelune {
namespace {

struct Declared : KEffectNumber {
    Declared()
    {
        parameters.AddSlider(&size, 2.5F, "Size", "Size"_id, 0, 0.0, 5.0);
        parameters.AddColor(&tint, KColor(0.25F, 0.5F, 0.75F, 1.0F), "Tint", "TinR"_id, 0);
        parameters.AddSliderSeed(&seed, "Seed", "Seed"_id, 0);
        parameters.AddCheckbox(&isOn, true, "On", "IsOn"_id, 0);
        parameters.AddRange(&span, {0.2F, 0.8F}, "Low", "High", "SpLo"_id, "SpHi"_id, 0, 0.0, 1.0);
    }
    KParameter const& At(int i) const { return *static_cast<KParameter*>(parameters.Nth(i)); }

    float size = -1.0F;
    KColor tint;
    int seed = -1;
    bool isOn = false;
    KRange span;
};

TEST(Parameters, AnEffectHasSoundValuesBeforeAnythingReadsInputs)
{
    Declared const effect;
    EXPECT_EQ(effect.size, 2.5F);
    EXPECT_EQ(effect.tint, KColor(0.25F, 0.5F, 0.75F, 1.0F));
    EXPECT_EQ(effect.seed, 0);
    EXPECT_TRUE(effect.isOn);
    EXPECT_EQ(effect.span.high, 0.8F);
}

TEST(Parameters, CompoundsAreNumberedFromElevenWhateverLiesBetween)
{
    Declared const effect;
    EXPECT_EQ(effect.At(0).group, -1);
    EXPECT_EQ(effect.At(1).group, 11);
    EXPECT_EQ(effect.At(4).group, 12);
}

TEST(Messages, NumbersRoundBeforeTheyTruncate)
{
    EXPECT_EQ(KMessage(KMsg_Value, 1, 2.6F).value.intValue, 3);
    EXPECT_EQ(KMessage(KMsg_Value, 1, 2.4F).value.intValue, 2);
    EXPECT_EQ(KMessage(KMsg_Value, 1, -0.7F).value.intValue, 0);
}

struct Frames : KEffectImage {
    int ProcessType() override { return KProc_Threads; }
};

TEST(EffectImage, ImagesAreFreedOnceByDoneAndByTheirSuccessor)
{
    struct Counting : KImage {
        Counting(int& counter) : KImage(1, 1, 1.0F, false), freed(counter) {}
        ~Counting() override { ++freed; }
        int& freed;
    };
    int freed = 0;
    {
        Frames effect;
        effect.ImagesInitialise(2);
        effect.SetImage(1, new Counting(freed));
        effect.SetImage(2, new Counting(freed)); // no such slot
        EXPECT_EQ(freed, 1);
        EXPECT_EQ(effect.GetImage(0), nullptr);
        effect.Done(nullptr);
        EXPECT_EQ(freed, 2);
        effect.Done(nullptr);
        EXPECT_EQ(freed, 2);

        effect.BufferTrailsSet(new Counting(freed));
        effect.BufferTrailsSet(new Counting(freed));
        effect.Done(nullptr); // leaves the trails alone
        EXPECT_EQ(freed, 3);
    }
    EXPECT_EQ(freed, 4);
}

} // namespace
} // namespace ombrelune
