#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

#include "image/KRandom.h"
#include "tests/framework/Expect.h"

namespace ombrelune {
namespace {

using namespace test;

Picture Black(int depth, int width, int height)
{
    return MakePicture(depth, width, height, [](int, int) { return KColor(0.0F, 0.0F, 0.0F, 0.0F); });
}

// Gradient.

struct GradientCase {
    int type, combine;
    float amount, startOffset, midpoint, z, cone, fade, fadeTurn;
    bool isRelative;
};

/// The gradient's part of the start colour in doubles.
double StartPart(GradientCase const& g, double x, double y)
{
    double const sx = 0.25, sy = 0.3, ex = g.isRelative ? 0.85 + sx : 0.85,
                 ey = g.isRelative ? 0.4 + sy : 0.4;
    double const ax = ex - sx, ay = ey - sy;
    double const big = std::sqrt((x - ex) * (x - ex) + (y - ey) * (y - ey) + g.z * g.z);
    double v = ax * (x - sx) + ay * (y - sy), square = ax * ax + ay * ay, length = std::sqrt(square);
    if (g.type == 1) v = (x - sx) * (x - sx) + (y - sy) * (y - sy);
    if (g.type == 2) {
        double const axis = std::sqrt(ax * ax + ay * ay + g.z * g.z);
        v = std::acos((g.z * g.z - ax * (x - ex) - ay * (y - ey)) / (axis * big));
        square = length = g.cone * std::numbers::pi / 180.0;
    }
    if (v > square) return 0.0;
    if (v < 0.0) return 1.0;
    double const r = g.type == 0 ? v / length : g.type == 1 ? std::sqrt(v) : v;
    double w = std::min((1.0 - r / length) / (1.0 - g.startOffset), 1.0);
    if (w < 1.0) w = (2.0 * g.midpoint - 1.0) * w * w + 2.0 * (1.0 - g.midpoint) * w;
    if (g.type != 2) return w;
    if (g.fade > 0.0F) w *= std::max(0.0, 1.0 - big / (1.0 / g.fade - 1.0));
    return w * (g.fadeTurn * (g.z / big - 1.0) + 1.0);
}

TEST(Gradient, FollowsItsFormulas)
{
    // The neutral settings, then each away from them.
    GradientCase const cases[] = {
        {0, 0, 1.0F, 0.0F, 0.5F, 0.5F, 30.0F, 0.0F, 0.0F, false},
        {0, 1, 0.5F, 0.3F, 0.8F, 0.5F, 30.0F, 0.0F, 0.0F, true},
        {1, 0, 1.0F, 0.0F, 0.2F, 0.5F, 30.0F, 0.0F, 0.0F, false},
        {1, 2, 0.75F, 0.5F, 0.5F, 0.5F, 30.0F, 0.0F, 0.0F, false},
        {2, 0, 1.0F, 0.0F, 0.5F, 0.4F, 50.0F, 0.0F, 0.0F, false},
        {2, 1, 0.25F, 0.2F, 0.6F, 0.3F, 80.0F, 0.4F, 0.7F, false},
    };
    double const from[] = {0.9, 0.5, 0.1, 0.8}, to[] = {0.2, 0.6, 0.4, 0.3}; // red to alpha
    for (GradientCase const& g : cases) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            SCOPED_TRACE(testing::Message() << g.type << g.combine << " at depth " << depth);
            Picture const source =
                MakePicture(depth, 40, 30, [](int, int) { return KColor(0.5F, 0.25F, 0.75F, 1.0F); });
            ToolUnderTest tool("BF_Gradient");
            tool.Set("cTyp"_id, g.type)
                .Set("cCom"_id, g.combine)
                .Set("sCom"_id, g.amount)
                .Set("cRel"_id, g.isRelative);
            tool.Set("sStO"_id, g.startOffset)
                .Set("GrMi"_id, g.midpoint)
                .Set("sLiD"_id, g.z)
                .Set("sLiC"_id, g.cone);
            tool.Set("sLiF"_id, g.fade).Set("sLiA"_id, g.fadeTurn);
            tool.Set("oSta"_id, KVector2(0.25F, 0.3F)).Set("oEnd"_id, KVector2(0.85F, 0.4F));
            tool.Set("CSRd"_id, KColor(0.9F, 0.5F, 0.1F, 0.8F))
                .Set("CERd"_id, KColor(0.2F, 0.6F, 0.4F, 0.3F));
            tool.Set("sStT"_id, 0.1F).Set("sEnT"_id, 0.6F);
            Picture const result = tool.On(*source);
            double const scale = g.amount <= 0.5F ? 2.0 * g.amount + 1.0 : 3.0 - 2.0 * g.amount;
            for (int y = 0; y < 30; ++y)
                for (int x = 0; x < 40; ++x) {
                    double const w = StartPart(g, x / 40.0, y / 40.0); // square pixels: both in widths
                    double const t = w * 0.1 + (1.0 - w) * 0.6;
                    for (int c = 0; c < 4; ++c) {
                        double const color = w * from[c] + (1.0 - w) * to[c];
                        double const old = ColorAt(*source, x, y).GetChannel(c);
                        double const shift = scale * (1.0 - t) * (color - (1.0 - g.amount));
                        double value = g.combine == 0   ? t * old + (1.0 - t) * color
                                       : g.combine == 1 ? old + shift
                                                        : old - shift;
                        if (depth == kDepthInt16) value = std::clamp(value, 0.0, 1.0);
                        ASSERT_NEAR(ColorAt(*result, x, y).GetChannel(c), value, 5e-5)
                            << x << ", " << y << ": " << c;
                    }
                }
        }
    }
}

TEST(Gradient, EndsAreExactAndNoLengthIsTheEnd)
{
    Picture const source = Black(kDepthFloat, 8, 4);
    ToolUnderTest tool("BF_Gradient");
    tool.Set("oSta"_id, KVector2(0.25F, 0.25F)).Set("oEnd"_id, KVector2(0.75F, 0.25F)).Set("cTyp"_id, 1);
    Picture const radial = tool.On(*source);
    EXPECT_EQ(ColorAt(*radial, 2, 2), Grey(1.0F));
    EXPECT_EQ(ColorAt(*radial, 4, 2), Grey(0.5F));
    EXPECT_EQ(ColorAt(*radial, 6, 2), Grey(0.0F)) << "on the radius";
    tool.Set("oEnd"_id, KVector2(0.25F, 0.25F)).Set("cTyp"_id, 0);
    EXPECT_EQ(ColorAt(*tool.On(*source), 5, 1), Grey(0.0F));
}

// Pattern.

/// A pattern with its centre in the middle of a picture whose pixels are quarters of a cell.
class PatternOf {
public:
    explicit PatternOf(int type, int fill = 0)
    {
        tool_.Set("Type"_id, type)
            .Set("Fill"_id, fill)
            .Set("Cent"_id, KVector2(0.5F, 0.5F))
            .Set("Size"_id, 0.125F);
        tool_.Set("Colo"_id, Grey(1.0F)).Set("Cl00"_id, Grey(0.25F)).Set("Cl10"_id, Grey(0.5F));
    }
    ToolUnderTest& Tool() { return tool_; }
    /// 3 a line, 1 and 2 the fills, 0 nothing, of a row of quarter cells from the centre.
    std::string Row(int y, int fromX, int toX)
    {
        Picture const result = tool_.On(*Black(kDepthFloat, 32, 32));
        std::string text;
        for (int x = fromX; x <= toX; ++x) {
            float const v = ColorAt(*result, 16 + x, 16 + y).green;
            text += v == 1.0F ? '3' : v == 0.5F ? '2' : v == 0.25F ? '1' : '0';
        }
        return text;
    }

private:
    ToolUnderTest tool_{"BF_Pattern"};
};

TEST(Pattern, GridsHaveLinesCheckersAndCounts)
{
    // Lines at whole numbers; cells around the centre: 0 to 1 has an even sum, and so has -1 to 0 twice.
    EXPECT_EQ(PatternOf(1).Row(1, -5, 5), "13111311131");
    EXPECT_EQ(PatternOf(1, 1).Row(1, -6, 6), "2231113222311");
    EXPECT_EQ(PatternOf(1, 1).Row(-1, -3, 3), "2223111");
    PatternOf numbered(1);
    numbered.Tool().Set("Rept"_id, 1).Set("RepC"_id, 2);
    EXPECT_EQ(numbered.Row(1, -9, 9), "0011131113111311100") << "cells up to 1 and -1";
    PatternOf moved(1);
    moved.Tool().Set("Offs"_id, 0.25F); // away from the centre on both sides
    EXPECT_EQ(moved.Row(2, -6, 6), "1311131311131");
    PatternOf thick(1);
    thick.Tool().Set("Thic"_id, 0.5F); // a quarter to both sides
    EXPECT_EQ(thick.Row(2, 0, 5), "331333");
    ToolUnderTest tiny("BF_Pattern");
    tiny.Set("Size"_id, 0.0F);
    ToolUnderTest least("BF_Pattern");
    least.Set("Size"_id, 1e-6F);
    Picture const source = Black(kDepthInt16, 16, 9);
    EXPECT_TRUE(SameBytes(*tiny.On(*source), *least.On(*source)));
}

TEST(Pattern, TrianglesAndHoneycombsTurnByAThird)
{
    // Straight down from the centre d0 counts p.y; a third is taken off, so the centre lies in the first
    // triangle.
    PatternOf triangles(0, 1);
    EXPECT_EQ(triangles.Row(0, 0, 0), "1") << "all three below 0: an odd sum";
    // A side of the honeycomb: s is 0 and |p c| = 1.3, so 2 + 1.3 is a multiple of 3; at 0.87 and 2.17 it is
    // not.
    PatternOf honey(2);
    EXPECT_EQ(honey.Row(0, 0, 12), "1111133333111") << "from 1.155 to 2.309, and none on the next";

    // Turned by 120 degrees about the centre, the pattern is the same but at the edges of lines.
    for (int type : {0, 2}) {
        ToolUnderTest plain("BF_Pattern"), turned("BF_Pattern");
        for (ToolUnderTest* tool : {&plain, &turned})
            tool->Set("Type"_id, type)
                .Set("Fill"_id, 1)
                .Set("Size"_id, 0.13F)
                .Set("Cent"_id, KVector2(0.5F, 0.4F));
        turned.Set("AngZ"_id, static_cast<float>(2.0 * std::numbers::pi / 3.0));
        Picture const source = Black(kDepthFloat, 120, 90);
        Picture const a = plain.On(*source), b = turned.On(*source);
        int differing = 0, lines = 0;
        for (int y = 0; y < 90; ++y)
            for (int x = 0; x < 120; ++x) {
                differing += ColorAt(*a, x, y) == ColorAt(*b, x, y) ? 0 : 1;
                lines += ColorAt(*a, x, y) == Grey(1.0F) ? 1 : 0;
            }
        EXPECT_LE(differing, 20);
        // Lines 0.1 wide at distances of 1 in three directions cover 1 - 0.9^3 or so; of the honeycomb's a
        // third, twice as far apart.
        EXPECT_NEAR(lines / 10800.0, type == 0 ? 0.28 : 0.1, 0.04);
    }
}

// Lines and Shapes.

/// A single set of lines along x through the middle of a picture of 64 x 40: 8 pixels apart, 1 to each side.
ToolUnderTest OneSet()
{
    ToolUnderTest tool("BF_Lines");
    tool.Set("LiNu"_id, 1).Set("Angl"_id, 0.0F).Set("LFSp"_id, 0.125F).Set("LFTh"_id, 0.125F);
    return tool;
}

std::vector<int> Column(KImage const& picture, int x, int fromY, int toY)
{
    std::vector<int> words;
    for (int y = fromY; y <= toY; ++y) words.push_back(WordsAt(picture, x, y).green);
    return words;
}

TEST(Lines, AreBandsWithSoftEdges)
{
    using Words = std::vector<int>;
    Picture const source = Black(kDepthInt16, 64, 40);
    ToolUnderTest tool = OneSet();
    // 65535 up to 1 pixel off; then a ramp over 2: half of 65535 is 32767 at 2 pixels off, 0 at 3.
    tool.Set("LFSo"_id, 0.25F);
    EXPECT_EQ(Column(*tool.On(*source), 7, 17, 31),
              (Words{0, 32767, 65535, 65535, 65535, 32767, 0, 0, 0, 32767, 65535, 65535, 65535, 32767, 0}));
    // A whole spacing off, the half thickness grows by 1 and the softness shrinks to 0.
    tool.Set("LFTI"_id, 0.125F).Set("LFSI"_id, -0.25F);
    EXPECT_EQ(Column(*tool.On(*source), 7, 28, 32), (Words{65535, 65535, 65535, 0, 0}));
    tool.Set("LFSo"_id, 0.0F).Set("LFSI"_id, 0.0F);
    EXPECT_EQ(Column(*tool.On(*source), 7, 20, 22), (Words{65535, 65535, 0})) << "a hard edge is in";
    tool.Set("LFSp"_id, 0.0F);
    EXPECT_EQ(Column(*tool.On(*source), 7, 20, 21), (Words{0, 0})) << "without a spacing there is nothing";

    ToolUnderTest full = OneSet();
    full.Set("LFTh"_id, 0.5F);
    EXPECT_EQ(Column(*full.On(*source), 7, 20, 27), Words(8, 65535));
    // Dots of 2 pixels to each side of every 16th column, hard.
    full.Set("LfSp"_id, 0.25F).Set("LfTh"_id, 0.125F);
    Picture const dots = full.On(*source);
    for (int x = 0; x < 64; ++x) {
        int const off = std::abs((x - 32) % 16);
        EXPECT_EQ(WordsAt(*dots, x, 3).red, std::min(off, 16 - off) <= 2 ? 65535 : 0) << x;
    }
}

TEST(Lines, OverlapsMergeChannelByChannel)
{
    // Two full sets of half red and of a quarter grey.
    struct Case {
        int overlap;
        KColor result;
    };
    for (Case each : {Case{0, {0.5F, 0.25F, 0.25F, 1.0F}}, Case{1, {0.75F, 0.25F, 0.25F, 1.0F}},
                      Case{2, {0.125F, 0.0F, 0.0F, 0.25F}}, Case{3, {0.625F, 0.25F, 0.25F, 1.0F}}}) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            ToolUnderTest tool("BF_Lines");
            tool.Set("LFTh"_id, 0.5F).Set("LLTh"_id, 0.5F).Set("LiOv"_id, each.overlap);
            tool.Set("LFCR"_id, KColor(0.5F, 0.0F, 0.0F, 1.0F)).Set("LLCR"_id, Grey(0.25F));
            ExpectNear(ColorAt(*tool.On(*Black(depth, 10, 10)), 3, 3), each.result, 4e-5F);
            // A set that is empty here leaves what there is, also when it multiplies.
            tool.Set("LLTh"_id, 0.0F)
                .Set("LLSo"_id, 0.0F)
                .Set("LLAn"_id, 0.0F)
                .Set("LLCe"_id, KVector2(0.5F, 0.55F));
            tool.Set("LLSp"_id, 0.5F);
            ExpectNear(ColorAt(*tool.On(*Black(depth, 10, 10)), 3, 3), {0.5F, 0.0F, 0.0F, 1.0F}, 4e-5F);
        }
    }
}

TEST(Lines, SetsBetweenAreMixedAndSamplesMeasureThePixel)
{
    Picture const source = Black(kDepthInt16, 100, 40);
    // Three hard lines in widely spaced sets at heights of 10, 20 and 30; the middle one is half as bright.
    ToolUnderTest tool("BF_Lines");
    tool.Set("LiNu"_id, 3)
        .Set("LLAn"_id, 0.0F)
        .Set("Cent"_id, KVector2(0.5F, 0.25F))
        .Set("LLCe"_id, KVector2(0.5F, 0.75F));
    for (std::uint32_t each : {"LFSp"_id, "LLSp"_id}) tool.Set(each, 2.0F);
    for (std::uint32_t each : {"LFTh"_id, "LLTh"_id}) tool.Set(each, 0.00375F); // 0.75 pixels to each side
    for (std::uint32_t each : {"LFSo"_id, "LLSo"_id}) tool.Set(each, 0.0F);
    tool.Set("LLCR"_id, Grey(0.0F));
    for (int y = 5; y < 35; ++y)
        EXPECT_EQ(WordsAt(*tool.On(*source), 4, y).blue, y == 10 ? 65535 : y == 20 ? 32767 : 0) << y;
    // Two samples a side lie a quarter off: of pixel 11 the lower two are in.
    tool.SetSamples(2);
    Picture const result = tool.On(*source);
    EXPECT_EQ(WordsAt(*result, 4, 10).blue, 65535);
    EXPECT_EQ(WordsAt(*result, 4, 11).blue, 32767);
    EXPECT_EQ(WordsAt(*result, 4, 12).blue, 0);
}

TEST(Shapes, AreRingsOrSquaresCutByAngles)
{
    Picture const source = Black(kDepthInt16, 101, 101);
    ToolUnderTest tool("BF_Shapes");
    // Around pixel 50; rings 20 pixels apart, 2 to each side, hard.
    tool.Set("Cent"_id, KVector2(50.0F / 101.0F, 50.0F / 101.0F))
        .Set("SFSp"_id, 20.0F / 101.0F)
        .Set("SFSo"_id, 0.0F);
    tool.Set("Angl"_id, 0.0F);
    for (int type : {0, 1}) {
        tool.Set("ShTy"_id, type);
        Picture const result = tool.On(*source);
        for (int y = 0; y < 101; y += 3)
            for (int x = 0; x < 101; x += 3) {
                double const r =
                    type == 0 ? std::hypot(x - 50, y - 50) : std::max(std::abs(x - 50), std::abs(y - 50));
                double const off = std::abs(r - 20.0 * std::round(r / 20.0));
                if (std::abs(off - 2.0) < 1e-3) continue;
                ASSERT_EQ(WordsAt(*result, x, y).red, off < 2.0 ? 65535 : 0) << x << ", " << y;
            }
        EXPECT_EQ(WordsAt(*result, 50, 50).red, 65535) << "the centre";
    }
    // Full rings, cut into rays: a radian apart, a quarter to each side.
    tool.Set("SFTh"_id, 0.5F).Set("SfSp"_id, 1.0F).Set("SfTh"_id, 0.25F);
    Picture const rays = tool.On(*source);
    for (int i = -3; i <= 3; ++i)
        for (double off : {-0.4, -0.15, 0.15, 0.4}) {
            double const angle = i + off;
            if (std::abs(angle) > 3.1) continue;
            int const x = 50 + static_cast<int>(std::lround(48 * std::cos(angle)));
            int const y =
                50 + static_cast<int>(std::lround(-48 * std::sin(angle))); // the axes turn clockwise
            int const mirrored = 100 - y;
            EXPECT_EQ(WordsAt(*rays, x, mirrored).red, std::abs(off) < 0.25 ? 65535 : 0) << angle;
        }
}

// Blobs.

float BlobAt(ToolUnderTest& tool, int x)
{
    return ColorAt(*tool.On(*Black(kDepthInt16, 100, 1)), x, 0).green;
}

TEST(Blobs, FallOverTheirBlobiness)
{
    ToolUnderTest tool("BF_Blobs");
    tool.Set("BlCo"_id, 1)
        .Set("BlP0"_id, KVector2(0.5F, 0.0F))
        .Set("Blob"_id, 0.2F)
        .Set("ColR"_id, Grey(0.8F));
    // The edge is 20 pixels off, and the field falls over another 20.
    EXPECT_NEAR(BlobAt(tool, 50), 0.8F, 1e-4);
    EXPECT_NEAR(BlobAt(tool, 65), 0.8F, 1e-4);
    EXPECT_NEAR(BlobAt(tool, 75), 0.6F, 1e-4);
    EXPECT_NEAR(BlobAt(tool, 91), 0.0F, 1e-4);
    tool.Set("BlB0"_id, 2.0F).Set("Blob"_id, 0.04F); // squares of distances over 20 pixels: 1 - 0.01 / 0.04
    EXPECT_NEAR(BlobAt(tool, 80), 0.6F, 1e-4);
    tool.Set("Gamm"_id, 2.0F);
    EXPECT_NEAR(BlobAt(tool, 80), 0.8F * 0.5625F, 1e-4);
    tool.Set("LevL"_id, KRange(0.5F, 0.75F));
    EXPECT_NEAR(BlobAt(tool, 80), 0.8F * 0.25F, 1e-4);
    tool.Set("Gamm"_id, 0.5F); // the root of what is below 0 is not a number
    EXPECT_EQ(BlobAt(tool, 99), 0.0F);
    // A second one: distances multiply.
    ToolUnderTest two("BF_Blobs");
    two.Set("BlCo"_id, 2).Set("Blob"_id, 0.04F).Set("Radi"_id, 0.1F);
    two.Set("BlP0"_id, KVector2(0.3F, 0.0F)).Set("BlP1"_id, KVector2(0.7F, 0.0F));
    EXPECT_NEAR(BlobAt(two, 50), 0.75F, 1e-4) << "1 - 0.1 x 0.1 / 0.04";
}

TEST(Blobs, RandomSizesComeFromTheSeed)
{
    ToolUnderTest tool("BF_Blobs");
    tool.Set("BlCo"_id, 3)
        .Set("SEED"_id, 200)
        .Set("Blob"_id, 1e-7F)
        .Set("RaMi"_id, 0.05F)
        .Set("RaMa"_id, 0.2F);
    KRandomSeed(200);
    float radii[3] = {0.2F, 0.0F, 0.0F}; // the first has the general one and takes no draw
    for (int i = 0; i < 3; ++i) {
        std::uint32_t const n = static_cast<std::uint32_t>(i);
        tool.Set("Bls0"_id + n, i == 0 ? 0 : 2)
            .Set("BlP0"_id + n, KVector2(0.25F * static_cast<float>(i) + 0.25F, 0.0F));
        if (i > 0) radii[i] = 0.05F + KRandom(1.0F) * 0.15F;
    }
    for (int x = 0; x < 100; ++x) {
        double least = 1.0;
        for (int i = 0; i < 3; ++i) least = std::min(least, std::abs(x / 100.0 - 0.25 - 0.25 * i) - radii[i]);
        if (std::abs(least) < 0.003) continue;
        EXPECT_NEAR(BlobAt(tool, x), least < 0.0 ? 1.0F : 0.0F, 0.5F) << x;
    }
}

TEST(Blobs, FieldsOfTheSecondTypeAddUp)
{
    // Half way between two edges that are 20 pixels off, each field is 1 / 4: the sum lacks a half.
    ToolUnderTest tool("BF_Blobs");
    tool.Set("BlCo"_id, 2).Set("BLST"_id, 1).Set("Blob"_id, 0.02F).Set("Radi"_id, 0.1F);
    tool.Set("BlP0"_id, KVector2(0.3F, 0.0F)).Set("BlP1"_id, KVector2(0.7F, 0.0F));
    EXPECT_NEAR(BlobAt(tool, 50), 0.5F, 1e-4) << "1 - 0.5 / (50 x 0.02)";
    EXPECT_EQ(BlobAt(tool, 30), 1.0F);
}

// Noise.

TEST(Noise, CellsAreStreamsOfTheirOwn)
{
    struct Case {
        int cells, sizeX, sizeY, combine;
        bool isSelected;
    };
    // Wide cells, a grid, and a grid that is finer than pixels.
    for (Case c : {Case{0, 1, 1, 0, false}, Case{0, 4, 3, 1, false}, Case{1, 5, 3, 2, false},
                   Case{1, 1000, 50, 0, false}, Case{0, 2, 2, 0, true}}) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            int const width = 230, height = 6;
            Picture const source = MakePicture(depth, width, height, [](int, int) { return Grey(0.25F); });
            ToolUnderTest tool("BF_Noise");
            tool.Set("SEED"_id, 90).Set("Size"_id, c.cells).Set("SizX"_id, c.sizeX).Set("SizY"_id, c.sizeY);
            tool.Set("Comb"_id, c.combine).Set("Type"_id, c.isSelected ? 1 : 0);
            tool.Set("ColR"_id, Grey(0.1F))
                .Set("ColR"_id + 0x100, Grey(0.2F))
                .Set("ColR"_id + 0x200, Grey(0.3F));
            Picture const result = tool.On(*source);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    int const cx = c.cells == 0 ? x / c.sizeX : x * c.sizeX / width;
                    int const cy = c.cells == 0 ? y / c.sizeY : y * c.sizeY / height;
                    KRandomSeed(static_cast<unsigned>(90 + cx + cy * width));
                    float const choice =
                        c.isSelected ? 0.1F + 0.1F * static_cast<float>(KRandomInt(3)) : 0.0F;
                    for (int channel = 0; channel < 4; ++channel) {
                        float const draw = c.isSelected ? choice : KRandom(1.0F);
                        float v = c.combine == 0 ? draw : c.combine == 1 ? 0.25F + draw : 0.25F - draw;
                        if (depth == kDepthInt16) v = std::clamp(v, 0.0F, 1.0F);
                        ASSERT_NEAR(ColorAt(*result, x, y).GetChannel(channel), v,
                                    depth == kDepthFloat ? 1e-7 : 2e-5)
                            << x << ", " << y;
                    }
                }
        }
    }
}

// Pixel Region.

TEST(PixelRegion, CountsFromACornerAndTheLastWins)
{
    struct Case {
        int corner, left, low;
    };
    for (Case each : {Case{0, 10, 6}, Case{1, 6, 6}, Case{2, 10, 3}, Case{3, 6, 3}}) {
        for (int depth : {kDepthInt16, kDepthFloat}) {
            SCOPED_TRACE(each.corner);
            Picture const source = MakeBusyPicture(depth, 20, 12);
            ToolUnderTest tool("BF_PixelRegion");
            tool.Set("Coun"_id, 3).Set("Colo"_id, KColor(2.0F, 0.0F, 0.0F, 0.0F));
            tool.Set("OfT0"_id, each.corner)
                .Set("ReX0"_id, 10)
                .Set("ReY0"_id, 6)
                .Set("ReW0"_id, 4)
                .Set("ReH0"_id, 3);
            // One pixel over it, in a colour of its own, and one without a width.
            tool.Set("ReX0"_id + 1, each.left)
                .Set("ReY0"_id + 1, each.low)
                .Set("ReW0"_id + 1, 1)
                .Set("ReH0"_id + 1, 1);
            tool.Set("CoT0"_id + 1, 1)
                .Set("RC00"_id + 0x100, KColor(0.0F, 1.0F, 0.0F, 1.0F))
                .Set("ReW0"_id + 2, 0);
            Picture const result = tool.On(*source);
            for (int y = 0; y < 12; ++y)
                for (int x = 0; x < 20; ++x) {
                    KColor expected = ColorAt(*source, x, y);
                    if (x >= each.left && x < each.left + 4 && y >= each.low && y < each.low + 3)
                        expected = KColor(depth == kDepthFloat ? 2.0F : 1.0F, 0.0F, 0.0F, 0.0F);
                    if (x == each.left && y == each.low) expected = KColor(0.0F, 1.0F, 0.0F, 1.0F);
                    ASSERT_EQ(ColorAt(*result, x, y), expected) << x << ", " << y;
                }
        }
    }
}

} // namespace
} // namespace ombrelune
