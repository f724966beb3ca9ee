#include <atomic>

#include <gtest/gtest.h>

#include "framework/RowForm.h"
#include "tests/framework/ToolUnderTest.h"

namespace ombrelune {
namespace {

using namespace test;

int const kDepths[] = {kDepthInt8, kDepthInt16, kDepthHalf, kDepthFloat};

KColor Ramp(int x, int y)
{
    auto const fx = static_cast<float>(x), fy = static_cast<float>(y);
    return {fx / 100.0F, fx / 50.0F, fy / 100.0F, 1.0F};
}

// The contract of Init and Done.

struct Counting : KEffectColor {
    using KEffectColor::F;
    KColor F(KColor const& c) override { return {1.0F - c.red, c.green, c.blue, c.alpha}; }
    bool Init(KImage* source) override
    {
        ++inits;
        return KEffectColor::Init(source) && accepts;
    }
    void Done(KImage** destination) override
    {
        ++dones;
        KEffectColor::Done(destination);
    }
    bool accepts = true;
    int inits = 0, dones = 0;
};

TEST(Engine, NoChannelMeansACopyWithoutTheEffect)
{
    Picture const source = MakeBusyPicture(kDepthInt16, 7, 5);
    KProcessImageData data = DataFor(*source);
    for (bool& channel : data.channels) channel = false;
    Counting effect;
    EXPECT_TRUE(SameBytes(*Apply(effect, *source, data), *source));
    EXPECT_EQ(effect.inits, 0);
    EXPECT_EQ(effect.dones, 0);
}

TEST(Engine, AFailedInitMeansACopyAndStillDone)
{
    Picture const source = MakeBusyPicture(kDepthFloat, 7, 5);
    Counting effect;
    effect.accepts = false;
    EXPECT_TRUE(SameBytes(*Apply(effect, *source), *source));
    EXPECT_EQ(effect.inits, 1);
    EXPECT_EQ(effect.dones, 1);
}

// Colour.

struct Halve : KEffectColor {
    using KEffectColor::F;
    KColor F(KColor const& c) override
    {
        return {c.red * 0.5F, c.green * 0.5F, c.blue * 0.5F, c.alpha * 0.5F};
    }
};

TEST(ColorEngine, AnEffectWithFloatsAloneTruncatesIntegers)
{
    Picture const source = MakePicture(
        kDepthInt16, 4, 1, [](int x, int) { return KColor(static_cast<float>(x) / 65535.0F, 1, 1, 1); });
    Halve effect;
    Picture const result = Apply(effect, *source);
    EXPECT_EQ(WordsAt(*result, 0, 0), KColor32(0, 32767, 32767, 32767));
    EXPECT_EQ(WordsAt(*result, 1, 0).red, 0);
    EXPECT_EQ(WordsAt(*result, 3, 0).red, 1);
}

struct Brighten : KEffectColor {
    using KEffectColor::F;
    KColor F(KColor const& c) override { return {c.red + 0.25F, c.green + 0.25F, c.blue + 0.25F, c.alpha}; }
};

TEST(ColorEngine, PreDivideGivesTheEffectStraightColorAndAlphaZeroStaysBlack)
{
    Picture const source = MakePicture(kDepthFloat, 2, 1, [](int x, int) {
        return x == 0 ? KColor(0.25F, 0.125F, 0.5F, 0.5F) : KColor(0.0F, 0.0F, 0.0F, 0.0F);
    });
    KProcessImageData data = DataFor(*source);
    data.preDivide = true;
    data.channels[1] = false;
    Brighten effect;
    Picture const result = Apply(effect, *source, data);
    // red 0.25 / 0.5 = 0.5, + 0.25, * 0.5; green is not selected and was multiplied before the selection.
    EXPECT_EQ(ColorAt(*result, 0, 0), KColor(0.375F, 0.125F, 0.625F, 0.5F));
    EXPECT_EQ(ColorAt(*result, 1, 0), KColor(0.0F, 0.0F, 0.0F, 0.0F));
}

TEST(ColorEngine, SuperSamplingTakesTheMeanAndLeavesUnselectedChannelsAtTheLastSample)
{
    Picture const source = MakePicture(kDepthFloat, 9, 5, Ramp);
    KProcessImageData data = DataFor(*source);
    data.superSample = 2;
    data.superSampleFilter = 1.0F;
    data.channels[1] = data.channels[2] = false;
    struct Same : KEffectColor {
        using KEffectColor::F;
        KColor F(KColor const& c) override { return c; }
    } effect;
    Picture const result = Apply(effect, *source, data);
    // Samples lie at 4 +- 0.25 and 2 +- 0.25: a linear ramp keeps its mean, the last one is the upper right.
    KColor const c = ColorAt(*result, 4, 2);
    EXPECT_NEAR(c.red, 0.04F, 1e-6);
    EXPECT_NEAR(c.green, 4.25F / 50.0F, 1e-6);
    EXPECT_NEAR(c.blue, 2.25F / 100.0F, 1e-6);
}

TEST(ColorEngine, SuperSamplingCallsTheEffectOncePerSample)
{
    struct Count : KEffectColor {
        using KEffectColor::F;
        KColor F(KColor const& c) override
        {
            ++calls;
            return c;
        }
        std::atomic<int> calls = 0;
    };
    Picture const source = MakeBusyPicture(kDepthInt16, 6, 4);
    for (int n : {1, 2, 3, 4, 5, 8, 16}) {
        Count effect;
        KProcessImageData data = DataFor(*source);
        data.superSample = n;
        Apply(effect, *source, data);
        EXPECT_EQ(effect.calls, 6 * 4 * n * n) << n << " samples per axis";
    }
}

// Pixel.

struct FloatsOnly : KEffectPixel {
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel pixel;
        source->GetPixel(x, y, pixel);
        pixel.red = 1.5F;
        pixel.green = -1.0F;
        pixel.blue = 0.9999F;
        return pixel;
    }
};

struct IntegersOnly : KEffectPixel {
    Pixel F(int x, int y, KImage* source) override
    {
        Pixel pixel;
        source->GetPixel(source->Width() - 1 - x, y, pixel);
        return pixel;
    }
};

TEST(PixelEngine, OneFormOfTheEffectServesBothDepths)
{
    Picture const ints = MakeBusyPicture(kDepthInt16, 4, 3);
    FloatsOnly floats;
    // 0.9999 * 65535 = 65528.4: truncated.
    KColor32 const made = WordsAt(*Apply(floats, *ints), 1, 1);
    EXPECT_EQ(KColor32(made.red, made.green, made.blue, 0), KColor32(65535, 0, 65528, 0));

    Picture const source = MakePicture(kDepthFloat, 2, 1, Ramp);
    IntegersOnly integers;
    // The left pixel takes the right one's red 0.01 = 655 of 65535 (655.35 rounds down on reading).
    EXPECT_FLOAT_EQ(ColorAt(*Apply(integers, *source), 0, 0).red, 655.0F / 65535.0F);
}

TEST(PixelEngine, UnselectedChannelsComeFromTheSourceUnlessThereIsNone)
{
    struct Generator : FloatsOnly {
        bool GetFlag(KProcessFlag flag) override { return flag == KPF_Source || FloatsOnly::GetFlag(flag); }
    };
    Picture const source = MakeBusyPicture(kDepthFloat, 4, 3);
    KProcessImageData data = DataFor(*source);
    data.channels[0] = false;
    FloatsOnly filter;
    EXPECT_EQ(ColorAt(*Apply(filter, *source, data), 2, 1).red, ColorAt(*source, 2, 1).red);
    Generator generator;
    EXPECT_EQ(ColorAt(*Apply(generator, *source, data), 2, 1).red, 1.5F);
}

// Position.

struct ShowPosition : KEffectPosition {
    FltPixel F(FltPixel& source, KVector2& position) override
    {
        ++calls;
        FltPixel pixel = source;
        pixel.red = position.x;
        pixel.green = position.y;
        return pixel;
    }
    using KEffectPosition::F;
    std::atomic<int> calls = 0;
};

TEST(PositionEngine, PositionsCountFromTheCornerInWidths)
{
    Picture const source = MakeBusyPicture(kDepthFloat, 8, 4); // frame aspect 2
    ShowPosition effect;
    Picture const result = Apply(effect, *source);
    EXPECT_EQ(effect.calls, 8 * 4);
    EXPECT_EQ(ColorAt(*result, 6, 3).red, 0.75F);
    EXPECT_EQ(ColorAt(*result, 6, 3).green, 0.375F); // 3 / 4 / 2
}

TEST(PositionEngine, SuperSamplesOffsetBeforeTheyScale)
{
    Picture const source = MakeBusyPicture(kDepthFloat, 8, 4);
    KProcessImageData data = DataFor(*source);
    data.superSample = 2;
    ShowPosition effect;
    Picture const result = Apply(effect, *source, data);
    EXPECT_EQ(effect.calls, 8 * 4 * 4);
    // Step 1/16 and first offset -1/32; the first place is (6 - 1/32) / 8 and the mean lies half a step
    // further.
    EXPECT_NEAR(ColorAt(*result, 6, 3).red, (6.0 - 1.0 / 32) / 8 + 1.0 / 32, 1e-6);
}

TEST(PositionEngine, PostMultiplyComesAfterTheChannelSelection)
{
    Picture const source =
        MakePicture(kDepthFloat, 1, 1, [](int, int) { return KColor(0.25F, 0.2F, 0.1F, 0.5F); });
    KProcessImageData data = DataFor(*source);
    data.preDivide = true;
    data.channels[2] = data.channels[3] = false;
    struct Mark : KEffectPosition {
        using KEffectPosition::F;
        FltPixel F(FltPixel& pixel, KVector2&) override
        {
            FltPixel marked = pixel;
            marked.green = 1.0F;
            marked.alpha = 0.25F;
            return marked;
        }
    } effect;
    KColor const c = ColorAt(*Apply(effect, *source, data), 0, 0);
    EXPECT_FLOAT_EQ(c.red, 0.25F);  // divided and multiplied again by the alpha that was saved
    EXPECT_FLOAT_EQ(c.green, 0.5F); // 1 times the saved alpha
    EXPECT_FLOAT_EQ(c.blue, 0.1F);  // unselected, yet divided and multiplied
    EXPECT_FLOAT_EQ(c.alpha, 0.5F); // unselected
}

// Threads.

TEST(ThreadsEngine, ChunksOfAStepAreDoneBeforeTheNextBegins)
{
    struct Steps : KEffectThreads {
        int StepCount() override { return 3; }
        int ThreadCount(int step) override { return 10 * (step + 1); }
        void F(int step, int, KImage*, KImage*) override
        {
            if (step > 0 && done[step - 1] != 10 * step) inOrder = false;
            ++done[step];
        }
        std::atomic<int> done[3] = {};
        std::atomic<bool> inOrder = true;
    } effect;
    Picture const source = MakeBusyPicture(kDepthInt16, 3, 2);
    Apply(effect, *source);
    EXPECT_TRUE(effect.inOrder);
    EXPECT_EQ(effect.done[2], 30);
}

// All families: any depth, any number of threads, either way of calling the effect.

struct Mirror : KEffectWarp {
    bool F(KVector2& source, KVector2 const& destination) override
    {
        source = {1.0F - destination.x, destination.y};
        return destination.x < 0.9F;
    }
};

template <class Effect> void ExpectAgreement(KProcessImageData data)
{
    for (int depth : kDepths) {
        Picture const source = MakeBusyPicture(depth, 301, 37);
        data.depth = DataFor(*source).depth;
        Effect plain;
        KRowForm<Effect> row;
        SetThreadCount(1);
        Picture const expected = Apply(plain, *source, data);
        EXPECT_TRUE(SameBytes(*Apply(row, *source, data), *expected)) << "row form at depth " << depth;
        SetThreadCount(2);
        EXPECT_TRUE(SameBytes(*Apply(plain, *source, data), *expected)) << "two threads at depth " << depth;
        SetThreadCount(0);
    }
}

TEST(Engines, RowFormsAndThreadsGiveTheSameBytes)
{
    KProcessImageData data;
    data.preDivide = true;
    data.channels[2] = false;
    ExpectAgreement<Halve>(data);
    ExpectAgreement<FloatsOnly>(data);
    ExpectAgreement<ShowPosition>(data);
    ExpectAgreement<Mirror>(data);
    data.superSample = 3;
    ExpectAgreement<Brighten>(data);
    ExpectAgreement<ShowPosition>(data);
}

TEST(Engines, AuxiliaryChannelsTravelThroughColorAndPosition)
{
    KImage source(5, 3, 1.0F, true);
    Pixel pixel;
    pixel.Clear();
    pixel.SetAux(kChannelVelocityX, 3.5F);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x) source.SetPixel(x, y, pixel);
    Halve color;
    ShowPosition position;
    for (KEffectImage* effect : {static_cast<KEffectImage*>(&color), static_cast<KEffectImage*>(&position)}) {
        Picture const result = Apply(*effect, source);
        result->GetPixel(4, 2, pixel);
        EXPECT_EQ(pixel.Aux(kChannelVelocityX), 3.5F);
    }
}

TEST(Engines, APictureOfOnePixelIsSurvived)
{
    for (int depth : kDepths) {
        Picture const source = MakeBusyPicture(depth, 1, 1);
        Mirror warp;
        EXPECT_TRUE(SameBytes(*Apply(warp, *source), *source));
        Halve color;
        Apply(color, *source);
        ShowPosition position;
        Apply(position, *source);
    }
}

} // namespace
} // namespace ombrelune
