// Tools that combine and lay out whole pictures.

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "image/KOffsets.h"
#include "tests/framework/Expect.h"

namespace ombrelune::test {

TEST(Combine, MixesByItsFractions)
{
    Picture const source = Plain(kDepthFloat, {0.2F, 0.2F, 0.2F, 0.5F}, 2, 2);
    Picture const second = Plain(kDepthFloat, {0.4F, 0.4F, 0.4F, 0.75F}, 4, 4);
    struct {
        float additive;
        int sum;
        float merge, under, average, red, alpha;
    } const rows[] = {
        {1, 0, 1, 0, 0, 0.45F, 0.875F},                                         // 0.2 x 0.25 + 0.4
        {0, 0, 1, 0, 0, 0.35F, 0.875F},                                         // 0.2 x 0.25 + 0.4 x 0.75
        {1, 0, 0, 1, 0, 0.4F, 0.875F},                                          // 0.4 x 0.5 + 0.2
        {1, 0, 0, 0, 2, 0.42F, 0.875F},                                         // 0.6 x 0.875 / 1.25
        {1, 0, 0, 0, 3.4e38F, 0.42F, 0.875F}, {1, 0, 3, -1, 0, 0.475F, 0.875F}, // (1.35 - 0.4) / 2
        {1, 1, 3, -1, 0, 0.2375F, 0.4375F},                                     // the same over 4
        {1, 0, 1, -1, 0, 0.2F, 0.5F}, // a sum of 0 leaves the picture
    };
    for (auto const& row : rows) {
        ToolUnderTest tool("BF_Combine");
        tool.Set("Addi"_id, row.additive).Set("SumF"_id, row.sum).Set("FMrg"_id, row.merge);
        tool.Set("FMrU"_id, row.under).Set("FAvr"_id, row.average).Set("Combine image", second.get());
        if (!tool.Image().Init(source.get())) {
            EXPECT_EQ(row.merge + row.under + row.average, 0.0F);
            continue;
        }
        KColor const result = ColorAt(*tool.On(*source), 1, 1);
        EXPECT_NEAR(result.red, row.red, 1e-6F);
        EXPECT_NEAR(result.alpha, row.alpha, 1e-6F);
    }
}

namespace {

void SetStandard(ToolUnderTest& tool, KParameterStandard standard, int value)
{
    for (KParameter* parameter : tool.Effect().parameters.Each<KParameter>())
        if (parameter->control == KCT_Standard && parameter->standard == standard)
            *static_cast<int*>(parameter->target) = value;
}

} // namespace

TEST(Canvas, TurnsFlipsCropsAndExtends)
{
    struct {
        int rotation;
        bool flipX, flipY;
        int crop, x, y, width, height, edges;
        char const* result;
    } const rows[] = {
        {0, false, false, 0, 0, 0, 1, 1, 0, "abc/def"},
        {1, false, false, 0, 0, 0, 1, 1, 0, "fed/cba"},
        {1, true, true, 0, 0, 0, 1, 1, 0, "abc/def"},
        {2, false, false, 0, 0, 0, 1, 1, 0, "cf/be/ad"}, // counter-clockwise as it is seen
        {3, false, false, 0, 0, 0, 1, 1, 0, "da/eb/fc"},
        {0, true, false, 0, 0, 0, 1, 1, 0, "cba/fed"},
        {0, false, true, 0, 0, 0, 1, 1, 0, "def/abc"},
        {0, false, false, 1, 9, 9, 5, 4, 0, "iiiii/iabci/idefi/iiiii"},
        {2, false, false, 1, 9, 9, 4, 3, 0, "icfi/ibei/iadi"},
        {0, false, false, 2, 1, -1, 3, 2, 0, "efi/iii"},
        {0, false, false, 2, -1, 0, 5, 3, 1, "fdefd/cabca/fdefd"},
        {0, false, false, 2, -1, 0, 5, 3, 2, "aabcc/aabcc/ddeff"},
        {0, false, false, 2, 1 << 24, 1 << 24, 2, 2, 0, "ii/ii"},
    };
    for (int depth : {kDepthInt16, kDepthFloat}) {
        for (auto const& row : rows) {
            Picture const source = FromLetters(depth, "abc/def");
            ToolUnderTest tool("BF_Canvas");
            tool.Set("CaRo"_id, row.rotation).Set("CaFH"_id, row.flipX).Set("CaFV"_id, row.flipY);
            tool.Set("Crop"_id, row.crop).Set("CrOH"_id, row.x).Set("CrOV"_id, row.y);
            tool.Set("CrWi"_id, row.width).Set("CrHe"_id, row.height).Set("CrEd"_id, row.edges);
            tool.Set("CExR"_id, KColor(0.9F, 0, 0, 1));
            EXPECT_EQ(Letters(*Resized(tool, *source)), row.result);
        }
    }
}

TEST(Canvas, TellsSizeAndAspect)
{
    struct {
        int rotation, aspect;
        float x, y;
    } const rows[] = {{0, 1, 2, 1}, {2, 1, 1, 2}, {3, 0, 2, 1}, {0, 2, 1, 2}, {2, 3, 3, 1e-6F}};
    for (auto const& row : rows) {
        ToolUnderTest tool("BF_Canvas");
        tool.Set("CaRo"_id, row.rotation).Set("CaAs"_id, row.aspect).Set("CaAS"_id, KVector2(3, -1));
        tool.Set("Crop"_id, 2).Set("CrWi"_id, 11).Set("CrHe"_id, 2);
        int w = 100, h = 50;
        float x = 2, y = 1;
        tool.Image().GetResize(4, w, h, x, y);
        EXPECT_EQ(w, 2);
        EXPECT_EQ(h, 1) << "at least one pixel of a proxy";
        EXPECT_EQ(x, row.x);
        EXPECT_EQ(y, row.y);
    }
    ToolUnderTest tool("BF_Canvas");
    EXPECT_EQ(tool.Change("CrEd"_id, 0)["CExR"_id], "hidden");
    EXPECT_EQ(tool.Change("Crop"_id, 1)["CrOH"_id], "hidden");
    EXPECT_EQ(tool.Change("CrEd"_id, 0)["CExA"_id], "shown");
    EXPECT_EQ(tool.Change("CaAs"_id, 3)["CaAS"_id], "shown");
}

TEST(Push, SlidesACheckerboardOfTwoPictures)
{
    float const third = 1.0F / 3;
    struct {
        float x, y;
        char const* result;
    } const rows[] = {
        {0, 0, "abc/def"},      {1, 0, "ggg/ggg"},    {third, 0, "bcg/efg"},
        {-third, 0, "gab/gde"}, {0, 0.5F, "ggg/abc"}, {third, 0.5F, "ggd/bcg"},
        {2, 0, "abc/def"},      {-3, 0, "agg/dgg"},   {20000, 1e6F, "abc/def"},
    };
    for (auto const& row : rows) {
        Picture const source = FromLetters(kDepthFloat, "abc/def"), map = FromLetters(kDepthFloat, "ggg/ggg");
        ToolUnderTest tool("BF_Push");
        tool.Set("PusX"_id, row.x);
        tool.Set("PusY"_id, row.y).Set("Deformation map", map.get());
        EXPECT_EQ(Letters(*tool.On(*source)), row.result) << row.x << ' ' << row.y;
        tool.Set<KImage*>("Deformation map", nullptr);
        if (row.x == 1) {
            EXPECT_EQ(Letters(*tool.On(*source)), ".../...");
        }
    }
}

TEST(Rest, BringsEachColumnToTheFloor)
{
    // On the floor: h is the row where the column begins, from below, plus its 1. Under it: the first from
    // above.
    struct {
        char const* source;
        int position;
        KVector2 left, right;
        float amount;
        char const* result;
    } const rows[] = {
        {"..c/ab./.b./...", 0, {0, 1}, {3, 1}, 1, ".../.../.b./abc"},
        {"..c/ab./.b./...", 1, {0, 4}, {3, 4}, 1, "abc/.b./.../..."},
        {"a.c/.../.../...", 0, {0, 1}, {3, 1}, 1, ".../.../.../a.c"},
        {"a.c/.../.../...", 0, {0, 2}, {2, 4}, 1, "..c/.../a../..."},
        {"a../.../.../...", 0, {5, 2}, {5, 4}, 0.5F, ".../.../a../..."}, // both ends at one x: no floor
        {".../.../.../...", 0, {0, 1}, {3, 1}, 1, ".../.../.../..."},
    };
    for (int depth : {kDepthInt16, kDepthFloat}) {
        for (auto const& row : rows) {
            Picture const source = FromLetters(depth, row.source);
            ToolUnderTest tool("BF_Rest");
            tool.Set("Chan"_id, 3).Set("Posi"_id, row.position).Set("Leng"_id, row.amount);
            tool.Set("FlrL"_id, row.left).Set("FlrR"_id, row.right);
            EXPECT_EQ(Letters(*tool.On(*source)), row.result) << row.source;
        }
    }
}

TEST(Border, CastsShadowsInwardsAndBehind)
{
    // One row, no blur: the shadow lies one pixel further to the right.
    auto const picture = [](float red) {
        return MakePicture(kDepthFloat, 5, 1,
                           [=](int x, int) { return x == 1 || x == 2 ? KColor(red, 0, 0, 1) : KColor(); });
    };
    auto const tool = [](bool drops, bool falls, float blend) {
        ToolUnderTest border("BF_Border");
        border.Set("SDro"_id, drops).Set("SInn"_id, falls).Set("Blnd"_id, blend);
        for (std::uint32_t id : {"SDPo"_id, "SIPo"_id}) border.Set(id, KVector2(0.7F, 0.5F));
        for (std::uint32_t id : {"SDBX"_id, "SIBX"_id}) border.Set(id, 0.0F);
        border.Set("SDCo"_id, KColor(0.4F, 0, 0, 0.5F)).Set("SICo"_id, KColor(0.4F, 0, 0, 0.5F));
        return border;
    };
    struct {
        bool drops, falls;
        float blend;
        std::vector<float> red, alpha;
    } const rows[] = {
        {false, false, 0.5F, {0, 0.4F, 0.4F, 0, 0}, {0, 0.5F, 0.5F, 0, 0}},
        {true, false, 1, {0, 0.8F, 0.8F, 0.2F, 0}, {0, 1, 1, 0.5F, 0}},
        {false, true, 1, {0, 0.6F, 0.8F, 0, 0}, {0, 1, 1, 0, 0}}, // 0.2 + 0.8 / 2
        {false,
         true,
         0.75F,
         {0, 0.5F, 0.6F, 0, 0},
         {0, 0.875F, 0.75F, 0, 0}}, // a quarter of the shadow alone
        {true, true, 1, {0, 0.6F, 0.8F, 0.2F, 0}, {0, 1, 1, 0.5F, 0}},
    };
    for (auto const& row : rows) {
        Picture const source = picture(0.8F);
        ToolUnderTest border = tool(row.drops, row.falls, row.blend);
        Picture const result = border.On(*source);
        for (int x = 0; x < 5; ++x) {
            EXPECT_NEAR(ColorAt(*result, x, 0).red, row.red[static_cast<std::size_t>(x)], 1e-5F) << x;
            EXPECT_NEAR(ColorAt(*result, x, 0).alpha, row.alpha[static_cast<std::size_t>(x)], 1e-5F) << x;
        }
    }
    KProcessImageData data = DataFor(*picture(0.8F));
    data.channels[3] = false;
    Picture const source = picture(0.8F);
    EXPECT_EQ(ColorAt(*Apply(tool(true, false, 1).Image(), *source, data), 3, 0), KColor(0.2F, 0, 0, 0));
}

TEST(Spread, FillsRoundByRound)
{
    struct {
        int rounds;
        char const* source;
        char const* result;
    } const rows[] = {
        {0, "b...h", "b...h"},
        {1, "b...h", "bb.hh"},
        {2, "b...h", "bbehh"}, // half of 0.2 and 0.8
        {1 << 24, "b...../....../......", "bbbbbb/bbbbbb/bbbbbb"},
        {9, "..../....", "..../...."},
        {1, "b.h/.../b..", "beh/bdh/bb."}, // 1.2 / 3
    };
    for (int depth : {kDepthInt16, kDepthFloat}) {
        for (auto const& row : rows) {
            Picture const source = FromLetters(depth, row.source);
            EXPECT_EQ(Letters(*ToolUnderTest("BF_Spread").Set("SofS"_id, row.rounds).On(*source)),
                      row.result);
        }
    }
    // Colour is weighted by alpha, since it is premultiplied: (0.2 + 0.1) / (1 + 0.5).
    Picture const source = MakePicture(kDepthFloat, 3, 1, [](int x, int) {
        return x == 1 ? KColor(0.7F, 0, 0, -1) : x == 0 ? KColor(0.2F, 0, 0, 1) : KColor(0.1F, 0, 0, 0.5F);
    });
    ExpectNear(ColorAt(*ToolUnderTest("BF_Spread").On(*source), 1, 0), {0.2F, 0, 0, 1});
}

TEST(Sort, OrdersPixelsOrTakesThoseOfAMap)
{
    for (int depth : {kDepthInt16, kDepthFloat}) {
        Picture const source = FromLetters(depth, "cbd/fea"), map = FromLetters(depth, "ihg/ghi");
        ToolUnderTest sort("BF_Sort");
        EXPECT_EQ(Letters(*sort.On(*source)), "def/abc") << "the least is the first pixel from below";
        EXPECT_EQ(Letters(*sort.Set("Order map", map.get()).On(*source)), "hgh/iig") << "two of each";
    }
    // The first channel is equal, so the next one counts; full ties keep their order.
    Picture const source = MakePicture(kDepthFloat, 4, 1, [](int x, int) {
        return KColor(0.5F, x == 1 ? 0.1F : 0.3F, x == 0 ? NAN : static_cast<float>(x), 0);
    });
    ToolUnderTest sort("BF_Sort");
    sort.Set("Cha1"_id, 0).Set("Cha2"_id, 1).Set("Cha3"_id, 3).Set("Cha4"_id, 3).Set("Cha5"_id, 3);
    Picture const result = sort.On(*source);
    EXPECT_EQ(ColorAt(*result, 0, 0).blue, 1);
    EXPECT_TRUE(std::isnan(ColorAt(*result, 1, 0).blue));
    EXPECT_EQ(ColorAt(*result, 2, 0).blue, 2);
    sort.Set("Cha3"_id, 2);
    EXPECT_TRUE(std::isnan(ColorAt(*sort.On(*source), 3, 0).blue)) << "what is no number comes last";
}

TEST(Sort, AgreesWithAStableSortOfManyPixels)
{
    Picture const source = MakeBusyPicture(kDepthInt16, 131, 67);
    std::vector<std::pair<std::uint32_t, int>> keys;
    for (int i = 0; i < 131 * 67; ++i) keys.emplace_back(WordsAt(*source, i % 131, i / 131).alpha, i);
    std::ranges::stable_sort(keys, {}, &std::pair<std::uint32_t, int>::first);
    ToolUnderTest sort("BF_Sort");
    for (std::uint32_t i = 0; i < 5; ++i) sort.Set("Cha1"_id + i, 3);
    Picture const result = sort.On(*source);
    for (int i = 0; i < 131 * 67; ++i) {
        int const from = keys[static_cast<std::size_t>(i)].second;
        ASSERT_EQ(WordsAt(*result, i % 131, i / 131), WordsAt(*source, from % 131, from / 131)) << i;
    }
}

TEST(Dither, GivesTheLevelsOfItsMethod)
{
    enum { kNone, kOrdered, kSimple, kFloydSteinberg };
    struct {
        int bits, method, side;
        float multiplier;
        std::vector<int> words, result; // of two rows, the lower one first
    } const rows[] = {
        {8, kNone, 4, 1, {0, 255, 256, 65535, 1000, 65279}, {0, 0, 257, 65535, 771, 65278}},
        {3, kNone, 4, 1, {8191, 8192, 40000, 65535, 0, 0}, {0, 9362, 37449, 65535, 0, 0}}, // 001001...,
                                                                                           // 100100...
        {16, kFloydSteinberg, 4, 1, {1, 2, 3, 65535, 12345, 0}, {1, 2, 3, 65535, 12345, 0}},
        // Half of one bit's range: up where twice the threshold is not above 16; the rows are 1 9 3 and 13
        // 5 15.
        {1, kOrdered, 4, 1, {32767, 32767, 32767, 32767, 32767, 32767}, {65535, 0, 65535, 0, 65535, 0}},
        {1, kOrdered, 3, 1, {32767, 32767, 32767, 32767, 32767, 32767}, {65535, 0, 0, 0, 65535, 65535}},
        // 30000 is below the half, its error of 30000 makes 60000, whose error of -5535 makes 24465.
        {1, kSimple, 4, 1, {30000, 30000, 30000, 30000, 30000, 30000}, {0, 65535, 0, 0, 65535, 0}},
        {1, kSimple, 4, 0, {30000, 30000, 30000, 40000, 40000, 40000}, {0, 0, 0, 65535, 65535, 65535}},
        // 30000: error 30000, so 11250 go on, 11250 down and 7500 down beyond. 41250: error -24285, -9106 on,
        // -9106 + 7500 down, -6071 beyond. 20894: error 20894, 7835 - 6071 down. Above: 41250, whose error of
        // -24285 hands -9106 on; 30000 - 1606 - 9106 = 19288, whose 7233 make 38997.
        {1,
         kFloydSteinberg,
         4,
         1,
         {30000, 30000, 30000, 30000, 30000, 30000},
         {0, 65535, 0, 65535, 0, 65535}},
    };
    for (int depth : {kDepthInt16, kDepthFloat}) {
        for (auto const& row : rows) {
            SCOPED_TRACE(fmt::format("{} bits, method {}", row.bits, row.method));
            Picture const source = MakePicture(depth, 3, 2, [&](int x, int y) {
                float const v = static_cast<float>(row.words[static_cast<std::size_t>(3 * y + x)]) / 65535.0F;
                return KColor(v, v, v, 0.3F);
            });
            ToolUnderTest dither("BF_Dither");
            dither.Set("sBit"_id, row.bits).Set("cMet"_id, row.method).Set("sMet"_id, row.side);
            dither.Set("sFac"_id, row.multiplier);
            SetStandard(dither, KPS_ChannelsRGBA, 5);
            Picture const result = dither.On(*source);
            for (int i = 0; i < 6; ++i) {
                KColor32 const words = WordsAt(*result, i % 3, i / 3),
                               before = WordsAt(*source, i % 3, i / 3);
                EXPECT_EQ(words.red, row.result[static_cast<std::size_t>(i)]) << i;
                EXPECT_EQ(words.blue, row.result[static_cast<std::size_t>(i)]) << i;
                EXPECT_EQ(words.green, before.green) << i;
                EXPECT_EQ(words.alpha, before.alpha) << i;
            }
        }
    }
}

TEST(MapFilter, LaysItsMapAroundEachPixel)
{
    Picture const map = FromLetters(kDepthFloat, "b.a");
    struct {
        int edges;
        char const *source, *result;
    } const rows[] = {
        {0, "..i..", ".f.c."},                        // 0.9 x 0.2 / 0.3 and 0.9 x 0.1 / 0.3
        {0, "i....", ".c..."}, {0, "ii...", "icc.."}, // at the border what is outside does not count
        {1, "i....", ".c..f"}, {2, "i....", "cc..."}, {0, "..........i.........", ".........f.c........"},
        {0, ".....", "....."},
    };
    for (int depth : {kDepthInt8, kDepthInt16, kDepthFloat}) {
        for (auto const& row : rows) {
            Picture const source = FromLetters(depth, row.source);
            ToolUnderTest tool("BF_MapFilter");
            tool.Set("MaRe"_id, false).Set("MaCh"_id, 0).Set("MapMapper map", map.get());
            SetStandard(tool, KPS_Edges, row.edges);
            EXPECT_EQ(Letters(*tool.On(*source)), row.result) << row.source;
        }
    }
    Picture const source = FromLetters(kDepthFloat, "a");
    EXPECT_FALSE(ToolUnderTest("BF_MapFilter").Image().Init(source.get())) << "no map";
    ToolUnderTest tool("BF_MapFilter");
    tool.Set("MapMapper map", map.get()).Set("MaWi"_id, 1 << 24).Set("MaHe"_id, 1);
    EXPECT_EQ(Letters(*tool.On(*source)), "a") << "a map is never wider than its limit";
}

TEST(MapFilter, IsTheWeightedMeanOfItsEntries)
{
    Picture const map = MakeBusyPicture(kDepthInt16, 6, 5);
    KOffsets const kernel(map.get(), 1, true, 0);
    for (int depth : {kDepthInt8, kDepthInt16, kDepthFloat}) {
        Picture const source = MakeBusyPicture(depth, 29, 7);
        for (int edges : {0, 1, 2}) {
            Picture results[2];
            for (bool byRows : {false, true}) {
                ToolUnderTest tool("BF_MapFilter", byRows);
                tool.Set("MaRe"_id, false).Set("MaCh"_id, 1).Set("MapMapper map", map.get());
                SetStandard(tool, KPS_Edges, edges);
                results[byRows] = tool.On(*source);
            }
            EXPECT_TRUE(SameBytes(*results[0], *results[1]));
            for (int i = 0; i < 29 * 7; ++i) {
                double sum = 0, weight = 0;
                for (KOffset const& entry : kernel.entries) {
                    int const x = i % 29 + entry.x, y = i / 29 + entry.y;
                    if (edges == 0 && (x < 0 || y < 0 || x >= 29 || y >= 7)) continue;
                    FltPixel pixel;
                    source->GetSample(x, y, pixel, edges);
                    sum += entry.weight * double{pixel.green};
                    weight += entry.weight;
                }
                ASSERT_NEAR(ColorAt(*results[1], i % 29, i / 29).green, sum / weight,
                            depth == kDepthInt8 ? 2e-3 : 1e-5);
            }
        }
    }
}

TEST(BlurSpace, LeavesWhatIsNotChosen)
{
    Picture const source = MakePicture(kDepthFloat, 40, 3, [](int x, int) {
        return x < 20 ? KColor(0.6F, 0.4F, 0.3F, 1) : KColor(0.3F, 0.4F, 0.6F, 1);
    });
    auto const blurred = [&](int channels, float size, float sizeY, bool lock) {
        ToolUnderTest tool("BF_BlurSpace");
        tool.Set("cBlF"_id, 3).Set("sBSX"_id, size).Set("sBSY"_id, sizeY).Set("cBlL"_id, lock);
        SetStandard(tool, KPS_ColorSpace, 2);
        SetStandard(tool, KPS_ChannelsRGBA, channels);
        return tool.On(*source);
    };
    Picture const result = blurred(6, 40, 0, true); // U and V
    EXPECT_LT(ColorAt(*result, 19, 1).red, 0.55F);
    EXPECT_GT(ColorAt(*result, 20, 1).red, 0.35F);
    for (int x = 0; x < 40; ++x)
        EXPECT_NEAR(ColorAt(*result, x, 1).Luminance(), ColorAt(*source, x, 1).Luminance(), 1e-3F) << x;
    EXPECT_TRUE(SameBytes(*blurred(0, 40, 40, true), *source));
    EXPECT_TRUE(SameBytes(*blurred(15, 0, 40, true), *source)) << "the lock hides the other size";
    ExpectNear(ColorAt(*blurred(15, 0, 40, false), 19, 1), {0.6F, 0.4F, 0.3F, 1}, 1e-3);
}

TEST(Analyzer, DrawsHowOftenAValueOccurs)
{
    float const reds[] = {0, 0, 0.25F, 1, 0, 1, 0.3F, 7}; // the lower row first
    for (int fraction : {1, 2, 3}) {
        Picture const source =
            MakePicture(kDepthFloat, 4, 2, [&](int x, int y) { return KColor(reds[4 * y + x], 0, 0, 0); });
        ToolUnderTest tool("BF_Analyzer");
        tool.Set("AnWi"_id, 4).Set("AnHe"_id, 10).Set("AnFr"_id, fraction);
        tool.Set("AnSc"_id, 0.0161F / static_cast<float>(fraction)); // a little more than 2 rows a count
        Picture const result = Resized(tool, *source);
        ASSERT_EQ(result->Width(), 4);
        ASSERT_EQ(result->Height(), 10);
        int const counted[3][4] = {{3, 2, 0, 3}, {2, 1, 0, 1}, {0, 0, 0, 0}}; // all, one row, no row
        for (int x = 0; x < 4; ++x)
            for (int y = 0; y < 10; ++y)
                EXPECT_EQ(ColorAt(*result, x, y).red, y < 2 * counted[fraction - 1][x] ? 1 : 0)
                    << x << ' ' << y;
    }
    ToolUnderTest tool("BF_Analyzer");
    EXPECT_TRUE(tool.Change("GuP1"_id, -1).empty());
    tool.Change("GuLo"_id, 1);
    EXPECT_EQ(tool.Change("GuP1"_id, 3)["GuP2"_id], "= 5");
    EXPECT_TRUE(tool.Change("GuP2"_id, 5).empty()) << "it does not send the first one away again";
    EXPECT_EQ(tool.Change("GuP2"_id, 4)["GuP1"_id], "= 2");
}

TEST(ShadeBySample, LooksEachNormalUpInItsMap)
{
    Picture const map = FromLetters(kDepthFloat, "abc/def/ghi"); // a ball as it is seen, its top above
    struct {
        KVector3 normal;
        float turn; // about the line of sight, in quarters
        float red;  // times an alpha of a half
    } const rows[] = {
        {{0, 0, 1}, 0, 0.25F},        {{-5, 0, 0}, 0, 0.2F}, {{5, 0, 0}, 0, 0.3F}, // length does not count
        {{0, 1, 0}, 0, 0.1F},         {{0, -1, 0}, 0, 0.4F}, {{1, 0, 0}, 1, 0.1F}, // turned upwards
        {{-0.7F, 0.7F, 0}, 0, 0.05F}, {{0, 0, 0}, 0, 0.25F}, {{NAN, 0, 0}, 0, 0.35F},
    };
    for (int depth : {kDepthInt16, kDepthFloat}) {
        for (auto const& row : rows) {
            Ref<Image> image = NewImageTagList({{Img_Width, 1},
                                                {Img_Height, 1},
                                                {Img_Depth, depth},
                                                {Img_Channel, +kChannelNormalX},
                                                {Img_Channel, +kChannelNormalY},
                                                {Img_Channel, +kChannelNormalZ}});
            Picture const source(KImage::ImageFromHost(image.Release(), true));
            FltPixel pixel;
            pixel.Clear();
            pixel.alpha = 0.5F;
            for (int i = 0; i < 3; ++i) pixel.SetAux(kChannelNormalX + i, row.normal[i]);
            source->SetPixel(0, 0, pixel);
            KTransformation rotation;
            rotation.rotation.z = row.turn * std::numbers::pi_v<float> / 2;
            ToolUnderTest tool("BF_ShadeBySample");
            EXPECT_FALSE(tool.Image().Init(source.get())) << "no map";
            tool.Set("Shading Map", map.get()).Set("Rota"_id, rotation);
            ExpectNear(ColorAt(*tool.On(*source), 0, 0), {row.red, 0, 0, 0.5F}, 2e-5);
        }
    }
}

} // namespace ombrelune::test
