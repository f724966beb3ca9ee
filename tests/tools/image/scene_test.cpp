// Tools that see pictures on planes in space.

#include <gtest/gtest.h>

#include "image/SeenPlane.h"
#include "tests/framework/ToolUnderTest.h"

namespace ombrelune::test {
namespace {

constexpr float kPi = std::numbers::pi_v<float>;

void ExpectNear(KColor const& a, KColor const& b, std::string const& what)
{
    for (int channel = 0; channel < 4; ++channel)
        EXPECT_NEAR(a.GetChannel(channel), b.GetChannel(channel), 3e-5) << what << ", channel " << channel;
}

/// With its scene in the middle, as the bridge puts it.
ToolUnderTest Centred(char const* name)
{
    ToolUnderTest tool(name);
    for (KParameter* parameter : tool.Image().parameters.Each<KParameter>())
        if (parameter->pointType == KPoint_CenteredAspect) *static_cast<KVector2*>(parameter->target) = {};
    return tool;
}

/// Opaque; red tells the column and green the row, from their middles.
Picture Places(int depth, int width, int height, float blue = 0.0F)
{
    return MakePicture(depth, width, height, [=](int x, int y) {
        return KColor((static_cast<float>(x) + 0.5F) / static_cast<float>(width),
                      (static_cast<float>(y) + 0.5F) / static_cast<float>(height), blue, 1.0F);
    });
}

TEST(SeenPlane, ShowsWhatLiesBeforeTheCamera)
{
    Picture const picture = Places(kDepthFloat, 40, 20);
    SceneFrame const frame(*picture);
    PictureFit const fit = PictureFit::ToWidth(*picture);
    // Twice as far away: half the size, 0.25 parts of the width to each side.
    SeenPlane const far(*picture, fit, {1, 0, 0, 0, 1, 0, 0, 0, 2}, frame, true);
    EXPECT_EQ(far.At(9, 10, kEdgeBlack).alpha, 0.0F);
    EXPECT_EQ(far.At(10, 10, kEdgeBlack).alpha, 1.0F);
    EXPECT_NEAR(far.At(25, 10, kEdgeBlack).red, (2 * 25.5F - 20) / 40, 1e-4);
    // Behind, turned upside down.
    PlaneMatrix const behind{-1, 0, 0, 0, -1, 0, 0, 0, -1};
    EXPECT_EQ(SeenPlane(*picture, fit, behind, frame, true).At(20, 10, kEdgeBlack).alpha, 0.0F);
    EXPECT_EQ(SeenPlane(*picture, fit, behind, frame, false).At(20, 10, kEdgeBlack).alpha, 1.0F);
    for (PlaneMatrix const& none :
         {PlaneMatrix{0, 0, 0, 0, 1, 0, 0, 0, 1}, PlaneMatrix{NAN, 0, 0, 0, 1, 0, 0, 0, 1},
          PlaneMatrix{1e300, 0, 0, 0, 1e300, 0, 0, 0, 1e300}})
        EXPECT_EQ(SeenPlane(*picture, fit, none, frame, true).At(20, 10, kEdgeBlack).alpha, 0.0F);
}

TEST(SceneTools, LeaveAPictureAtRestAsItIs)
{
    for (char const* tool : {"BF_Planes", "BF_MergeAndBone", "BF_Positioner", "BF_Project"}) {
        for (int depth : {kDepthInt8, kDepthInt16, kDepthHalf, kDepthFloat}) {
            Picture const source = MakeBusyPicture(depth, 37, 23);
            EXPECT_TRUE(SameBytes(*Centred(tool).On(*source), *source)) << tool << " " << depth;
        }
    }
}

TEST(Planes, NearerOnesMoveFartherAndCoverTheOthers)
{
    Picture const source = Places(kDepthFloat, 40, 20);
    // A bar of two columns, at the middle.
    Picture const bar = MakePicture(
        kDepthFloat, 40, 20, [](int x, int) { return x == 19 || x == 20 ? KColor(0, 0, 1, 1) : KColor(); });
    auto const columnsOfBar = [&](float depth, float offset) {
        ToolUnderTest tool = Centred("BF_Planes");
        tool.Set("Plane 2", bar.get()).Set("Plane 2 Depth", depth).Set("Offs"_id, KVector2(offset, 0.0F));
        Picture const seen = tool.On(*source);
        std::vector<int> columns;
        for (int x = 0; x < 40; ++x)
            if (ColorAt(*seen, x, 10).blue > 0.5F) columns.push_back(x);
        return columns;
    };
    using Columns = std::vector<int>;
    EXPECT_EQ(columnsOfBar(0.0F, 0.1F), (Columns{23, 24}));
    EXPECT_EQ(columnsOfBar(0.5F, 0.1F), (Columns{27, 28})); // 4 / (1 - 0.5)
    EXPECT_EQ(columnsOfBar(-1.0F, 0.1F), (Columns{})) << "behind the source";
    EXPECT_EQ(columnsOfBar(1.0F, 0.0F), (Columns{})) << "in the camera's plane";

    ToolUnderTest turned = Centred("BF_Planes");
    turned.Set("AngZ"_id, kPi).Set("Zoom"_id, 1.0F);
    Picture const seen = turned.On(*source);
    ExpectNear(ColorAt(*seen, 3, 4), ColorAt(*source, 36, 15), "half a turn");
    turned.Set("AngZ"_id, 0.0F).Set("AngY"_id, kPi / 3).Set("Pers"_id, 0.0F);
    // Turned by a third of half a turn and seen in parallel, it is half as wide.
    EXPECT_EQ(ColorAt(*turned.On(*source), 9, 10).alpha, 0.0F);
    EXPECT_NEAR(ColorAt(*turned.On(*source), 25, 10).red, (2 * 25.5F - 20) / 40, 1e-3);
}

TEST(MergeAndBone, PlacesTheForegroundAndWrapsTheLight)
{
    Picture const source = Plain(kDepthFloat, {1.0F, 0.5F, 0.25F, 1.0F}, 40, 20),
                  white = Plain(kDepthFloat, Grey(1.0F), 40, 20);
    auto const tool = [&] {
        ToolUnderTest made = Centred("BF_MergeAndBone");
        made.Set("Foreground", white.get()).Set("FoSX"_id, 0.5F).Set("FoPo"_id, KVector2(0.25F, 0.0F));
        return made;
    };
    // Half the size, with its middle at three quarters: columns 20 to 39, rows 5 to 14.
    Picture const placed = tool().On(*source);
    for (int x = 0; x < 40; ++x)
        ExpectNear(ColorAt(*placed, x, 10), x < 20 ? ColorAt(*source, 0, 0) : Grey(1.0F),
                   fmt::format("column {}", x));
    for (int y = 0; y < 20; ++y) EXPECT_EQ(ColorAt(*placed, 30, y).green == 1.0F, y >= 5 && y < 15) << y;
    EXPECT_EQ(ColorAt(*tool().Set("FoSL"_id, false).Set("FoSY"_id, 0.0F).On(*source), 30, 10),
              ColorAt(*source, 0, 0));

    // 36 of 720 are 2 pixels. Each wrap changes its own side of the edge at column 20 alone, less farther
    // away.
    auto const wrapped = [&](std::uint32_t amount, std::uint32_t size, int x) {
        return ColorAt(*tool().Set(amount, 1.0F).Set(size, 36.0F).On(*source), x, 10).green;
    };
    EXPECT_GT(wrapped("WFor"_id, "WFSX"_id, 19), wrapped("WFor"_id, "WFSX"_id, 18));
    EXPECT_GT(wrapped("WFor"_id, "WFSX"_id, 18), 0.5F);
    EXPECT_EQ(wrapped("WFor"_id, "WFSX"_id, 21), 1.0F);
    EXPECT_LT(wrapped("WBac"_id, "WBSX"_id, 20), wrapped("WBac"_id, "WBSX"_id, 21));
    EXPECT_LT(wrapped("WBac"_id, "WBSX"_id, 21), 1.0F);
    EXPECT_EQ(wrapped("WBac"_id, "WBSX"_id, 18), 0.5F);
    // Two steps of which the second does not spread are half of the first and half of the sharp matte.
    auto const stepped =
        tool().Set("WFor"_id, 1.0F).Set("WFSX"_id, 36.0F).Set("WFSt"_id, 2).Set("WFSG"_id, 1e-5F);
    EXPECT_NEAR(ColorAt(*ToolUnderTest(stepped).On(*source), 19, 10).green,
                (wrapped("WFor"_id, "WFSX"_id, 19) + 0.5F) / 2, 1e-3);
}

TEST(Positioner, TakesPointsWhereTheyBelong)
{
    Picture const source = Places(kDepthFloat, 40, 40);
    struct {
        int type;
        std::vector<KVector2> from, to;
        KVector2i at, seen; // a pixel, and the one that it shows
    } const cases[] = {
        {0, {{0.5F, 0.5F}}, {{0.75F, 0.25F}}, {30, 10}, {20, 20}},
        // A quarter turn about (0.5, 0.5).
        {1, {{0.5F, 0.5F}, {0.75F, 0.5F}}, {{0.5F, 0.5F}, {0.5F, 0.75F}}, {20, 29}, {29, 19}},
        // Half as high, the bottom kept.
        {2, {{0, 0}, {1, 0}, {0, 1}}, {{0, 0}, {1, 0}, {0, 0.5F}}, {7, 5}, {7, 10}},
        // Three in a row tell as much as the first two: twice as large.
        {2, {{0, 0}, {0.5F, 0}, {0.25F, 0}}, {{0, 0}, {1, 0}, {0.5F, 0}}, {20, 20}, {10, 10}},
        // Twice on the same place: moved.
        {1, {{0.5F, 0.5F}, {0.5F, 0.5F}}, {{0.75F, 0.5F}, {0.1F, 0.5F}}, {30, 20}, {20, 20}},
        // The square to a trapezium whose diagonals meet at (0.5, 1/3), where its middle goes.
        {3,
         {{0, 0}, {1, 0}, {1, 1}, {0, 1}},
         {{0, 0}, {1, 0}, {0.75F, 0.5F}, {0.25F, 0.5F}},
         {20, 13},
         {20, 20}},
    };
    for (auto const& c : cases) {
        ToolUnderTest tool("BF_Positioner");
        tool.Set("PoTy"_id, c.type);
        for (std::uint32_t i = 0; i < c.from.size(); ++i)
            tool.Set("PoS0"_id + i, c.from[i]).Set("PoD0"_id + i, c.to[i]);
        KColor const seen = ColorAt(*tool.On(*source), c.at.x, c.at.y),
                     expected = ColorAt(*source, c.seen.x, c.seen.y);
        EXPECT_NEAR(seen.red, expected.red, 0.026F) << c.type << " at " << c.at.x;
        EXPECT_NEAR(seen.green, expected.green, 0.026F) << c.type << " at " << c.at.x;
    }
    ToolUnderTest half("BF_Positioner");
    Picture const map = Plain(kDepthFloat, Grey(0.5F), 3, 3);
    half.Set("PoTy"_id, 0)
        .Set("PoS0"_id, KVector2(0, 0))
        .Set("PoD0"_id, KVector2(0.5F, 0))
        .Set("Map (optional)", map.get());
    ExpectNear(ColorAt(*half.On(*source), 30, 10), ColorAt(*source, 20, 10), "half of the way");
}

TEST(Project, LooksAtTheWallsOfTheRoom)
{
    struct {
        std::uint32_t wall;
        float x, y; // turn of the camera
    } const looks[] = {{"ImaJ"_id, 0, 0},
                       {"ImaG"_id, 0, kPi},
                       {"ImaN"_id, 0, kPi / 2},
                       {"ImaU"_id, 0, -kPi / 2},
                       {"ImS0"_id, kPi / 2, 0}};
    Picture const empty = Plain(kDepthFloat, KColor(), 20, 20);
    std::vector<Picture> walls;
    for (std::size_t i = 0; i < 5; ++i)
        walls.push_back(Places(kDepthFloat, 20, 20, static_cast<float>(i + 1) / 8.0F));
    for (std::size_t i = 0; i < 5; ++i) {
        ToolUnderTest tool("BF_Project");
        for (std::size_t j = 0; j < 5; ++j) tool.Set(looks[j].wall, walls[j].get());
        tool.Set("ScAX"_id, looks[i].x).Set("ScAY"_id, looks[i].y).Set("CaAn"_id, 90.0F);
        // A quarter of the full circle shows one wall, as if seen from outside.
        Picture const seen = tool.On(*empty);
        for (KVector2i const& at : {KVector2i(0, 0), KVector2i(15, 3), KVector2i(19, 19)})
            ExpectNear(ColorAt(*seen, at.x, at.y), ColorAt(*walls[i], at.x, at.y),
                       fmt::format("wall {} at {}", i, at.x));
    }
    ToolUnderTest down("BF_Project");
    Picture const floor = Places(kDepthFloat, 20, 20);
    down.Set("ImaJ"_id, walls[0].get()).Set("ScAX"_id, -kPi / 2).Set("CaAn"_id, 90.0F);
    ExpectNear(ColorAt(*down.On(*floor), 15, 3), ColorAt(*floor, 15, 3), "the source is the floor");
    // Wider, the walls beside it come in; one without a picture is empty.
    ToolUnderTest wide("BF_Project");
    wide.Set("ImaJ"_id, walls[0].get())
        .Set("ImaU"_id, walls[3].get())
        .Set("CaAn"_id, 120.0F)
        .Set("ImP3"_id, 1);
    Picture const seen = wide.On(*empty);
    EXPECT_EQ(ColorAt(*seen, 0, 10).alpha, 0.0F);
    EXPECT_NEAR(ColorAt(*seen, 10, 10).blue, 1 / 8.0F, 1e-5);
    EXPECT_NEAR(ColorAt(*seen, 19, 10).blue, 4 / 8.0F, 1e-5);
    EXPECT_NEAR(ColorAt(*seen, 19, 10).green, 0.75F, 0.03F) << "the upper half of its picture";
}

TEST(Project, HangsAPictureIntoTheRoom)
{
    Picture const room = Plain(kDepthFloat, Grey(0.5F), 40, 40),
                  white = Plain(kDepthFloat, Grey(1.0F), 10, 10);
    ToolUnderTest tool("BF_Project");
    tool.Set("Image to be combined", white.get())
        .Set("CaAn"_id, 90.0F)
        .Set("MeSX"_id, 0.5F)
        .Set("MeSY"_id, 0.5F)
        .Set("MeBl"_id, 0.5F);
    // The frame is as wide as the wall on which it hangs at first, and half as wide in the middle of the way.
    auto const columns = [&](float z) {
        tool.Set("MePZ"_id, z);
        Picture const seen = tool.On(*room);
        int count = 0;
        for (int x = 0; x < 40; ++x) count += ColorAt(*seen, x, 20).red > 0.6F;
        EXPECT_NEAR(ColorAt(*seen, 20, 20).red, 0.75F, 1e-5);
        return count;
    };
    EXPECT_EQ(columns(0.0F), 20);
    EXPECT_EQ(columns(0.5F), 40);
    EXPECT_EQ(columns(-1.0F), 10);
    EXPECT_TRUE(SameBytes(*tool.Set("MePZ"_id, 2.0F).On(*room), *room)) << "behind the camera";
}

} // namespace
} // namespace ombrelune::test
