#include <cmath>
#include <limits>

#include "tests/framework/Expect.h"

namespace ombrelune::test {
namespace {

using Times = std::vector<float>;

// Average.

TEST(Average, AsksForFramesAfterAndThenBefore)
{
    ToolUnderTest tool("BF_Average");
    EXPECT_EQ(tool.TimesAt(3.0F).size(), 128U);
    EXPECT_EQ(tool.FramesAt(3.0F), (Times{3, 4, 5, 6, 7, 8, 9, 10}));
    tool.Set("NuFr"_id, 2).Set("NuFB"_id, 3).Set("FrSt"_id, 4);
    EXPECT_EQ(tool.FramesAt(3.0F), (Times{3, 7, -1, -5, -9}));
    tool.Set("TiAd"_id, 1).Set("TiSp"_id, 2.0F);
    EXPECT_EQ(tool.FramesAt(3.0F)[0], 6.0F);
    tool.Set("TiAd"_id, 2).Set("TiSo"_id, 40.0F);
    EXPECT_EQ(tool.FramesAt(3.0F)[0], 40.0F);
    tool.Set("NuFr"_id, 64).Set("NuFB"_id, 64);
    EXPECT_EQ(tool.FramesAt(3.0F).size(), 128U);
}

TEST(Average, MissingFramesAreBlackOrLeftOut)
{
    Picture const a = Plain(kDepthInt16, {0.4F, 0.2F, 0.1F, 1.0F}),
                  b = Plain(kDepthInt16, {0.8F, 0.0F, 0.3F, 0.5F});
    KColor32 const wa = WordsAt(*a, 0, 0), wb = WordsAt(*b, 0, 0);
    auto const mean = [&](int ofA, int ofB, int count) {
        return KColor32((ofA * wa.red + ofB * wb.red) / count, (ofA * wa.green + ofB * wb.green) / count,
                        (ofA * wa.blue + ofB * wb.blue) / count, (ofA * wa.alpha + ofB * wb.alpha) / count);
    };
    ToolUnderTest tool("BF_Average");
    tool.Set("NuFr"_id, 4);
    std::vector<KImage*> const frames = {a.get(), nullptr, b.get(), nullptr};
    ExpectWords(*tool.On(frames), 3, 2, mean(1, 1, 4));
    tool.Set("Curr"_id, false); // the present frame counts as black too
    ExpectWords(*tool.On(frames), 3, 2, mean(0, 1, 4));
    tool.Set("NoEx"_id, 1);
    ExpectWords(*tool.On(frames), 3, 2, mean(0, 1, 1));
    tool.Set("Curr"_id, true);
    ExpectWords(*tool.On(frames), 3, 2, mean(1, 1, 2));
    tool.Set("Curr"_id, false);
    EXPECT_TRUE(SameBytes(*tool.On({a.get(), nullptr, nullptr, nullptr}), *a)) << "nothing to average";
}

TEST(Average, IsTheSameByRowsAndByPixelsAtEveryDepth)
{
    for (int depth : {kDepthInt8, kDepthInt16, kDepthHalf, kDepthFloat}) {
        std::vector<Picture> pictures;
        std::vector<KImage*> frames;
        for (int i = 0; i < 14; ++i) {
            pictures.push_back(MakePicture(depth, 1031, 3, [i](int x, int y) {
                auto const v = [&](int k) {
                    return static_cast<float>((x * k + y * 5 + i * 7) % 23) / 22.0F;
                };
                return KColor(v(3), v(5), v(11), v(2));
            }));
            frames.push_back(pictures.back().get());
        }
        for (int kept : {-1, 1}) {
            KProcessImageData data;
            if (kept >= 0) data.channels[kept] = false;
            auto const run = [&](bool byRows) {
                ToolUnderTest tool("BF_Average", byRows);
                tool.Set("NuFr"_id, 14);
                return tool.On(frames, 0.0F, data);
            };
            Picture const rows = run(true);
            EXPECT_TRUE(SameBytes(*rows, *run(false))) << depth;
            if (depth != kDepthInt16) continue;
            for (int x : {0, 511, 512, 1030}) {
                int sum = 0;
                for (KImage const* frame : frames) sum += WordsAt(*frame, x, 1).green;
                EXPECT_EQ(WordsAt(*rows, x, 1).green, kept == 1 ? WordsAt(*frames[0], x, 1).green : sum / 14);
            }
        }
    }
}

TEST(Average, TakesFramesOfAnotherSize)
{
    Picture const a = Plain(kDepthFloat, {0.5F, 0.5F, 0.5F, 1.0F}),
                  b = Plain(kDepthFloat, {1.0F, 0.0F, 0.5F, 1.0F}, 3, 2);
    ToolUnderTest tool("BF_Average");
    tool.Set("NuFr"_id, 2);
    KColor const result = ColorAt(*tool.On({a.get(), b.get()}), 6, 4);
    EXPECT_NEAR(result.red, 0.75F, 1e-6F);
    EXPECT_NEAR(result.green, 0.25F, 1e-6F);
}

// Seamless Loop.

TEST(SeamlessLoop, PlaysFromTheDissolveOnAndBringsTheHeadAtTheEnd)
{
    ToolUnderTest tool("BF_SeamlessLoop");
    tool.Set("TiLL"_id, 10).Set("TiDL"_id, 4);
    struct {
        float time;
        Times frames;
    } const cases[] = {{0, {4}},  {5, {9}},      {6, {10, 0}},        {9, {13, 3}},
                       {10, {4}}, {26, {10, 0}}, {5.99995F, {10, 0}}, {-1, {13, 3}}};
    for (auto const& each : cases) EXPECT_EQ(tool.FramesAt(each.time), each.frames) << each.time;
    tool.Set("TiDL"_id, 0);
    for (float time : {0.0F, 9.0F, 25.0F}) EXPECT_EQ(tool.FramesAt(time), (Times{std::fmod(time, 10.0F)}));
    tool.Set("TiLL"_id, 3).Set("TiDL"_id, 7); // the dissolve is as long as the loop at most
    EXPECT_EQ(tool.FramesAt(0.0F), (Times{3, 0}));
    EXPECT_EQ(tool.FramesAt(2.0F), (Times{5, 2}));
}

TEST(SeamlessLoop, DissolvesByHowFarTheEndIsGone)
{
    KColor const late(0.2F, 0.6F, 1.0F, 1.0F), head(0.9F, 0.1F, 0.0F, 0.5F);
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const a = Plain(depth, late), b = Plain(depth, head), small = Plain(depth, head, 3, 2);
        for (int smooth : {0, 1}) {
            ToolUnderTest tool("BF_SeamlessLoop");
            tool.Set("TiLL"_id, 10).Set("TiDL"_id, 4).Set("FaTy"_id, smooth);
            EXPECT_TRUE(SameBytes(*tool.On({a.get(), b.get()}, 6.0F), *a))
                << "its first frame is not mixed yet";
            EXPECT_TRUE(SameBytes(*tool.On({a.get(), nullptr}, 8.0F), *a));
            // Frame 7 is 1 of 4: linear 1/4, smooth 0.5 - 0.5 cos(45 degrees).
            double const w = smooth == 0 ? 0.25 : 0.1464466;
            Picture const mixed = tool.On({a.get(), b.get()}, 17.0F);
            KColor const found = ColorAt(*mixed, 2, 3);
            EXPECT_NEAR(found.red, 0.2 + w * 0.7, 3e-5);
            EXPECT_NEAR(found.green, 0.6 - w * 0.5, 3e-5);
            EXPECT_NEAR(found.alpha, 1.0 - w * 0.5, 3e-5);
            Picture const partly = tool.On({a.get(), small.get()}, 17.0F);
            EXPECT_EQ(ColorAt(*partly, 2, 1), found);
            EXPECT_EQ(WordsAt(*partly, 3, 1), WordsAt(*a, 3, 1)) << "beyond the smaller frame";
        }
    }
}

// Deflicker.

TEST(Deflicker, AsksForItsReference)
{
    ToolUnderTest tool("BF_Deflicker");
    EXPECT_EQ(tool.TimesAt(7.0F).size(), 129U);
    EXPECT_EQ(tool.FramesAt(7.0F), (Times{7, 0}));
    tool.Set("Refe"_id, 1).Set("TiSt"_id, 10.0F).Set("ReTi"_id, 3.0F);
    EXPECT_EQ(tool.FramesAt(17.0F), (Times{17, 13, 23}));
    EXPECT_EQ(tool.FramesAt(1.0F), (Times{1, -7, 3})) << "steps lead back before the reference time";
    tool.Set("ReTi"_id, 1e9F);
    EXPECT_EQ(tool.FramesAt(1.0F).size(), 3U) << "and get there soon";
    tool.Set("Refe"_id, 2).Set("FrAf"_id, 2).Set("FrBe"_id, 1);
    EXPECT_EQ(tool.FramesAt(7.0F), (Times{7, 8, 9, 6}));
    tool.Set("Refe"_id, 3);
    EXPECT_EQ(tool.FramesAt(7.0F), (Times{7}));
}

/// Left half and right half of two greys.
Picture Halves(int depth, float left, float right)
{
    return MakePicture(depth, 8, 6, [=](int x, int) {
        float const v = x < 4 ? left : right;
        return KColor(v, v * 0.5F, 0.0F, 1.0F);
    });
}

TEST(Deflicker, BringsTheMeanToThatOfTheReference)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const dark = Halves(depth, 0.1F, 0.3F), bright = Halves(depth, 0.5F, 0.3F);
        auto const redOf = [](Picture const& picture, int x) { return ColorAt(*picture, x, 3).red; };
        ToolUnderTest tool("BF_Deflicker");
        // Means 0.2 and 0.4: everything is doubled, or gets 0.2 more.
        Picture result = tool.On({dark.get(), bright.get()});
        EXPECT_NEAR(redOf(result, 0), 0.2F, 1e-4F);
        EXPECT_NEAR(redOf(result, 7), 0.6F, 1e-4F);
        EXPECT_NEAR(ColorAt(*result, 7, 0).green, 0.3F, 1e-4F);
        EXPECT_EQ(ColorAt(*result, 7, 0).blue, 0.0F) << "a mean of 0 divides by 1";
        result = tool.Set("Oper"_id, 0).On({dark.get(), bright.get()});
        EXPECT_NEAR(redOf(result, 0), 0.3F, 1e-4F);
        EXPECT_NEAR(redOf(result, 7), 0.5F, 1e-4F);
        // By the left halves: 0.5 for 0.1. With the correcting area on the right: 0.5 for 0.3.
        tool.Set("Oper"_id, 1).Set("Base"_id, 1);
        tool.Set("RReC"_id, KVector2(0.25F, 0.5F)).Set("RCoC"_id, KVector2(0.75F, 0.5F));
        EXPECT_NEAR(redOf(tool.On({dark.get(), bright.get()}), 7), depth == kDepthInt16 ? 1.0F : 1.5F, 1e-3F);
        tool.Set("BasL"_id, false);
        EXPECT_NEAR(redOf(tool.On({dark.get(), bright.get()}), 7), 0.5F, 1e-4F);
        EXPECT_NEAR(redOf(tool.On({dark.get(), bright.get()}), 0), 0.1F / 0.3F * 0.5F, 1e-4F);
    }
}

TEST(Deflicker, WeighsTheStepsAndAveragesFrames)
{
    Picture const own = Plain(kDepthFloat, {0.5F, 0.5F, 0.5F, 1.0F}),
                  a = Plain(kDepthFloat, {0.2F, 0.2F, 0.2F, 1.0F}),
                  b = Plain(kDepthFloat, {0.6F, 0.6F, 0.6F, 1.0F});
    auto const red = [](Picture const& picture) { return ColorAt(*picture, 3, 3).red; };
    ToolUnderTest steps("BF_Deflicker");
    steps.Set("Refe"_id, 1).Set("TiSt"_id, 10.0F).Set("ReTi"_id, 3.0F);
    EXPECT_NEAR(red(steps.On({own.get(), a.get(), b.get()}, 5.0F)), 0.8F * 0.2F + 0.2F * 0.6F, 1e-5F);
    EXPECT_NEAR(red(steps.On({own.get(), a.get(), b.get()}, 1.0F)), 0.2F * 0.2F + 0.8F * 0.6F, 1e-5F);
    EXPECT_NEAR(red(steps.On({own.get(), nullptr, b.get()}, 5.0F)), 0.6F, 1e-5F);
    ToolUnderTest mean("BF_Deflicker");
    mean.Set("Refe"_id, 2);
    EXPECT_NEAR(red(mean.On({own.get(), nullptr, a.get(), b.get()})), 0.4F, 1e-5F);
    KImage* external = b.get();
    EXPECT_NEAR(red(mean.Set("Refe"_id, 3).Set(2U, external).On({own.get()})), 0.6F, 1e-5F);
    Picture const small = Plain(kDepthFloat, {0.1F, 0.1F, 0.1F, 1.0F}, 2, 2);
    EXPECT_NEAR(red(mean.Set(2U, small.get()).On({own.get()})), 0.1F, 1e-5F);
}

TEST(Deflicker, LeavesThePictureAloneWithoutAReference)
{
    for (int depth : {kDepthInt16, kDepthFloat})
        for (int type : {0, 1})
            for (int reference : {0, 1, 2, 3}) {
                Picture const own = MakeBusyPicture(depth, 9, 7),
                              wanted = Plain(depth, {0.9F, 0.9F, 0.9F, 1.0F}, 9, 7);
                ToolUnderTest tool("BF_Deflicker");
                tool.Set("Type"_id, type);
                tool.On({own.get(), wanted.get()});
                tool.Set("Refe"_id, reference);
                EXPECT_TRUE(SameBytes(*tool.On({own.get(), nullptr}), *own)) << type << reference;
            }
}

TEST(Deflicker, ZonesAreCorrectedByWhatTheBlurLeaves)
{
    // Nothing but flat colour: what the blurs leave is the colour itself, and the reference comes out.
    Picture const flat = Plain(kDepthFloat, {0.3F, 0.2F, 0.6F, 1.0F}),
                  wanted = Plain(kDepthFloat, {0.5F, 0.9F, 0.1F, 1.0F});
    ToolUnderTest tool("BF_Deflicker");
    tool.Set("Type"_id, 1).Set("Deta"_id, 10.0F);
    KColor const result = ColorAt(*tool.On({flat.get(), wanted.get()}), 1, 1);
    EXPECT_NEAR(result.red, 0.5F, 1e-5F);
    EXPECT_NEAR(result.blue, 0.1F, 1e-5F);
    // Detail stays: source - blurred source + blurred reference, by the same blur.
    Picture const busy = MakeBusyPicture(kDepthInt16, 40, 30), other = MakeBusyPicture(kDepthInt16, 40, 30);
    for (int x = 0; x < 40; ++x)
        other->SetPixel(x, 0, [] {
            Pixel p;
            p.Clear();
            return p;
        }());
    Picture const made = tool.On({busy.get(), other.get()});
    Picture const a(busy->BlurOf(10.0, 10.0, kBlurGaussian, 15, 1.0, 1.0)),
        b(other->BlurOf(10.0, 10.0, kBlurGaussian, 15, 1.0, 1.0));
    for (int x : {0, 13, 39}) {
        int const expected = WordsAt(*busy, x, 1).green - WordsAt(*a, x, 1).green + WordsAt(*b, x, 1).green;
        EXPECT_EQ(WordsAt(*made, x, 1).green, std::clamp(expected, 0, 65535)) << x;
    }
}

// Smart Field Strobe.

TEST(SmartFieldStrobe, AsksForWholeFrames)
{
    ToolUnderTest tool("BF_SmartFieldStrobe");
    EXPECT_EQ(tool.TimesAt(4.0F), (Times{4, 3, 5}));
    EXPECT_EQ(tool.TimesAt(4.5F), (Times{4, 3, 5}));
    tool.Set("TiAd"_id, 1).Set("TiSp"_id, 0.5F);
    EXPECT_EQ(tool.TimesAt(9.0F), (Times{4, 3, 5}));
}

TEST(SmartFieldStrobe, ReplacesLinesByTheirNeighboursAsFarAsTheyMove)
{
    int const width = 11, height = 9;
    Picture const now = MakeBusyPicture(kDepthInt16, width, height);
    Picture const before = MakePicture(kDepthInt16, width, height, [&](int x, int y) {
        KColor c = ColorAt(*now, x, y);
        c.green += x < 5 ? 0.0F : 0.05F * static_cast<float>(y);
        return c;
    });
    Picture const after = MakePicture(kDepthInt16, width, height, [&](int x, int y) {
        KColor c = ColorAt(*now, x, y);
        c.red = x == 7 ? 1.0F - c.red : c.red;
        c.alpha = 0.0F; // counts for nothing
        return c;
    });
    auto const motion = [&](int x, int y) {
        KColor32 const n = WordsAt(*now, x, y), b = WordsAt(*before, x, y), a = WordsAt(*after, x, y);
        int most = 0;
        for (KColor32 const& o : {b, a})
            most = std::max(
                {most, std::abs(n.red - o.red), std::abs(n.green - o.green), std::abs(n.blue - o.blue)});
        return most;
    };
    // Row 0 is the bottom one, so field "One", the upper, is the odd rows here.
    struct {
        int field;
        float time;
        int strobed;
    } const cases[] = {{0, 0.0F, 1}, {1, 0.0F, 0}, {2, 0.0F, 0}, {2, 3.5F, 1}, {3, 3.0F, 1}, {3, 3.5F, 0}};
    for (auto const& each : cases) {
        for (bool toAlpha : {false, true}) {
            ToolUnderTest tool("BF_SmartFieldStrobe");
            tool.Set("SmSe"_id, each.field).Set("SmOA"_id, toAlpha);
            Picture const result = tool.On({now.get(), before.get(), after.get()}, each.time);
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    KColor32 expected = WordsAt(*now, x, y);
                    int const below = std::max(y - 1, 0), above = std::min(y + 1, height - 1);
                    auto const m = static_cast<std::uint32_t>(
                        std::max({motion(x, below), motion(x, y), motion(x, above)}));
                    KColor32 const lower = WordsAt(*now, x, below), upper = WordsAt(*now, x, above);
                    auto const blend = [&](int low, int high, int own) {
                        std::uint64_t const mean = static_cast<std::uint64_t>(low + high) / 2;
                        auto const rounded = [](std::uint64_t product) {
                            return (product * 2 + 65535) / (2 * 65535);
                        };
                        return static_cast<int>(rounded(m * mean) +
                                                rounded((65535 - m) * static_cast<std::uint64_t>(own)));
                    };
                    if (y % 2 == each.strobed) {
                        expected = KColor32(blend(lower.red, upper.red, expected.red),
                                            blend(lower.green, upper.green, expected.green),
                                            blend(lower.blue, upper.blue, expected.blue),
                                            blend(lower.alpha, upper.alpha, expected.alpha));
                        if (toAlpha) expected.alpha = static_cast<int>(m);
                    } else if (toAlpha) {
                        expected.alpha = 0;
                    }
                    ExpectWords(*result, x, y, expected);
                }
            }
        }
    }
}

TEST(SmartFieldStrobe, WithoutNeighboursEveryLineOfTheFieldGoes)
{
    Picture const stripes = MakePicture(
        kDepthFloat, 4, 6, [](int, int y) { return y % 2 ? KColor(1, 1, 1, 1) : KColor(0, 0, 0, 1); });
    Picture const tall = Plain(kDepthFloat, {0, 0, 0, 1}, 4, 8); // another size counts as missing
    ToolUnderTest tool("BF_SmartFieldStrobe");
    tool.Set("SmSe"_id, 0);
    Picture const result = tool.On({stripes.get(), tall.get(), nullptr});
    for (int y = 0; y < 5; ++y) EXPECT_EQ(ColorAt(*result, 2, y).red, 0.0F);
    // At the border the line itself is its neighbour: half of 0 and 65535.
    EXPECT_NEAR(ColorAt(*result, 2, 5).red, 0.5F, 1e-5F);
}

TEST(SmartFieldStrobe, TheSelectionIsBlurredAndLevelled)
{
    Picture const now = Plain(kDepthInt16, {0.5F, 0.5F, 0.5F, 1.0F}, 40, 20);
    Picture const next = MakePicture(kDepthInt16, 40, 20, [](int x, int) {
        return x == 20 ? KColor(1, 1, 1, 1) : KColor(0.5F, 0.5F, 0.5F, 1);
    });
    auto const alphaAt = [&](ToolUnderTest& tool, int x) {
        return WordsAt(*tool.On({now.get(), nullptr, next.get()}), x, 9).alpha;
    };
    ToolUnderTest tool("BF_SmartFieldStrobe");
    tool.Set("SmSe"_id, 0).Set("SmOA"_id, true);
    EXPECT_NEAR(alphaAt(tool, 20), 32768, 1);
    EXPECT_EQ(alphaAt(tool, 22), 0);
    Target<KRange>(tool.Effect(), "SmTL"_id) = {0.0F, 0.5F};
    EXPECT_EQ(alphaAt(tool, 20), 65535) << "what is half there counts as all";
    Target<KRange>(tool.Effect(), "SmTL"_id) = {0.0F, 1.0F};
    tool.Set("SmBl"_id, 60.0F); // 60 / 720 of 40 pixels
    EXPECT_LT(alphaAt(tool, 20), 20000);
    EXPECT_GT(alphaAt(tool, 22), 100);
}

// Time Mapper.

TEST(TimeMapper, AsksForARunOfFrames)
{
    ToolUnderTest tool("BF_TimeMapper");
    EXPECT_EQ(tool.TimesAt(2.0F).size(), 1024U);
    EXPECT_EQ(tool.FramesAt(2.0F), (Times{2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(tool.FramesAt(2.25F)[1], 3.5F) << "half frames";
    tool.Set("TiOB"_id, 1).Set("TiOW"_id, -2);
    EXPECT_EQ(tool.FramesAt(2.0F), (Times{3, 2, 1, 0}));
    tool.Set("TiAd"_id, 1).Set("TiSo"_id, 50.0F).Set("TiOW"_id, 1);
    EXPECT_EQ(tool.FramesAt(2.0F), (Times{51}));
    tool.Set("TiOB"_id, -2147483647 - 1).Set("TiOW"_id, 2147483647);
    EXPECT_EQ(tool.FramesAt(0.0F).size(), 1024U);
}

TEST(TimeMapper, EachPixelComesFromItsTime)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        std::vector<Picture> pictures;
        std::vector<KImage*> frames;
        for (int i = 0; i < 5; ++i) {
            pictures.push_back(Plain(depth, {0.2F * static_cast<float>(i), 0.1F, 0.0F, 1.0F}, 9, 2));
            frames.push_back(pictures.back().get());
        }
        // Luminance x / 8 in row 0, red alone in row 1, whose luminance is half of that.
        Picture const map = MakePicture(kDepthFloat, 9, 2, [](int x, int y) {
            float const v = static_cast<float>(x) / 8.0F;
            return y == 0 ? KColor(v, v, v, 1) : KColor(v, 0, 0, 1);
        });
        for (int channel : {0, 4}) {
            for (bool interpolated : {true, false}) {
                for (bool backwards : {false, true}) {
                    ToolUnderTest tool("BF_TimeMapper");
                    tool.Set("TiOW"_id, backwards ? -4 : 4)
                        .Set("TiIn"_id, interpolated)
                        .Set("TiCh"_id, channel)
                        .Set(2U, map.get());
                    Picture const result = tool.On(frames);
                    for (int y = 0; y < 2; ++y) {
                        for (int x = 0; x < 9; ++x) {
                            // The map in 16 bits; in row 1 the luminance is half of the red.
                            double const c =
                                std::floor(x / 8.0 * 65535.0 + 0.5) * (channel == 4 && y == 1 ? 0.5 : 1.0);
                            double const frame = c * 4.0 / 65535.0;
                            EXPECT_NEAR(ColorAt(*result, x, y).red,
                                        0.2 * (interpolated ? frame : std::floor(frame)), 4e-5)
                                << x << ", " << y;
                        }
                    }
                    EXPECT_NEAR(ColorAt(*result, 8, 0).red, 0.8, 2e-5) << "white is the last frame, wholly";
                }
            }
        }
    }
}

TEST(TimeMapper, PlainRowsGiveTheBytesOfAnyOthers)
{
    float const odd[] = {std::nanf(""), -1.0F, 2.0F, 0.3333F, 1e-6F, std::numeric_limits<float>::infinity(),
                         0.99999F};
    auto const wild = [&](int x, int y) {
        auto const v = [&](int k) { return odd[(x * k + y) % 7]; };
        return KColor(v(1), v(2), v(3), v(5));
    };
    auto const ramp = [](int x, int) {
        float const v = static_cast<float>(x) / 299.0F;
        return KColor(v, v * 0.5F, 0.25F, 1.0F - v);
    };
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const first = MakePicture(depth, 300, 3, wild), second = MakeBusyPicture(depth, 300, 3),
                      map = MakePicture(kDepthInt16, 300, 3, ramp);
        // The same map in the frames' depth, and in one that takes the general road.
        Picture const same = MakePicture(depth, 300, 3, [&](int x, int y) { return ColorAt(*map, x, y); });
        Picture const other = MakePicture(depth == kDepthFloat ? kDepthInt16 : kDepthFloat, 300, 3,
                                          [&](int x, int y) { return ColorAt(*map, x, y); });
        for (int channel = 0; channel < 5; ++channel) {
            ToolUnderTest tool("BF_TimeMapper");
            tool.Set("TiOW"_id, 2).Set("TiCh"_id, channel);
            auto const run = [&](KImage* by) {
                return tool.Set(2U, by).On({first.get(), second.get(), first.get()});
            };
            EXPECT_TRUE(SameBytes(*run(same.get()), *run(other.get()))) << channel;
        }
    }
}

TEST(TimeMapper, MissingFramesAndMaps)
{
    Picture const a = Plain(kDepthInt16, {0.1F, 0.1F, 0.1F, 1}),
                  b = Plain(kDepthInt16, {0.9F, 0.9F, 0.9F, 1}),
                  white = Plain(kDepthInt16, {1, 1, 1, 1}, 8, 8),
                  narrow = Plain(kDepthInt16, {1, 1, 1, 1}, 6, 8);
    ToolUnderTest tool("BF_TimeMapper");
    tool.Set("TiOW"_id, 3);
    auto const run = [&](KImage* map, std::vector<KImage*> const& frames) {
        return tool.Set(2U, map).On(frames);
    };
    EXPECT_TRUE(SameBytes(*run(white.get(), {a.get(), b.get(), nullptr, nullptr}), *b))
        << "the last one that is there";
    EXPECT_TRUE(SameBytes(*run(nullptr, {a.get(), b.get()}), *a));
    EXPECT_TRUE(SameBytes(*run(narrow.get(), {a.get(), b.get()}), *a));
    tool.Set("TiOW"_id, 0);
    EXPECT_TRUE(SameBytes(*run(white.get(), {a.get()}), *a)) << "one frame, whatever the map";
}

// Switcher and links.

TEST(Switcher, HandsOnThePictureOfTheIndex)
{
    Picture const own = MakeBusyPicture(kDepthInt8, 5, 4), other = MakeBusyPicture(kDepthFloat, 9, 3);
    ToolUnderTest tool("BF_Switcher");
    tool.Set("Ima0"_id + 2, other.get());
    EXPECT_TRUE(SameBytes(*tool.On({own.get()}), *own));
    EXPECT_TRUE(SameBytes(*tool.Set("Indx"_id, 3).On({own.get()}), *other));
    EXPECT_FALSE(tool.Set("Indx"_id, 4).On({own.get()}));
}

TEST(Switcher, ShowsOneInputBehindTheLastThatIsConnected)
{
    ToolUnderTest tool("BF_Switcher");
    auto const shownAfter = [&](int input, bool isConnected) {
        KParameterValue value;
        if (isConnected) value.image = std::make_unique<KImage>(2, 2, 1.0F, false);
        std::unique_ptr<KMessageList> const messages(
            tool.Image().AffectInputs("Ima0"_id + static_cast<unsigned>(input), value));
        int count = 0;
        for (KMessage const* message : messages->Each<KMessage>()) count += message->value.intValue;
        return count;
    };
    EXPECT_EQ(shownAfter(0, true), 2);
    EXPECT_EQ(shownAfter(5, true), 7);
    EXPECT_EQ(shownAfter(3, true), 0) << "nothing changes";
    EXPECT_EQ(shownAfter(5, false), 6);
    EXPECT_EQ(shownAfter(31, true), 32);
}

TEST(WirelessLink, HandsOnTheFirstLinkThatHoldsAPicture)
{
    Picture const own = MakeBusyPicture(kDepthInt8, 5, 4), a = MakeBusyPicture(kDepthFloat, 9, 3),
                  b = Plain(kDepthInt16, {1, 0, 0, 1});
    for (char const* name : {"BF_WirelessLink", "BF_WirelessLinky"}) {
        ToolUnderTest tool(name);
        EXPECT_FALSE(tool.On({own.get()}));
        tool.Set("Imag"_id + 23, b.get());
        EXPECT_TRUE(SameBytes(*tool.On({own.get()}), *b));
        tool.Set("Imag"_id + 7, a.get());
        EXPECT_TRUE(SameBytes(*tool.On({own.get()}), *a));
    }
}

} // namespace
} // namespace ombrelune::test
