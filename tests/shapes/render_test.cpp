#include <gtest/gtest.h>

#include "shapes/KImageChannel.h"
#include "tests/image/kimage_helpers.h"
#include "tests/shapes/shape_helpers.h"

namespace ombrelune::test {
namespace {

Owned Black(int width, int height, int depth = kDepthInt16)
{
    Owned image(KImage::ImageFromHost(
        NewImageTagList({{Img_Width, width}, {Img_Height, height}, {Img_Depth, depth}}).Release(), true));
    image->Clear();
    return image;
}

std::unique_ptr<KImageChannel> Filled(KImage* image, std::string const& path, int samples = 8,
                                      KImageRegion const* clip = nullptr)
{
    auto channel = std::make_unique<KImageChannel>(image, samples, clip, true);
    channel->ShapeFill(Path(path).get(), 1);
    return channel;
}

ChannelStyle RedStyle(float opacity = 1.0F)
{
    ChannelStyle style;
    style.color = {0, 0, 65535, 65535};
    style.floatColor = {0.0F, 0.0F, 1.0F, 1.0F};
    style.opacity = opacity;
    return style;
}

/// Pixels 2 and 3 of 8 across, half of pixel 4, from below the frame to above it.
char const* const kBar = "M0.25,-1 L0.5625,-1 L0.5625,2 L0.25,2 Z";

TEST(Channel, CoverageReachesTheImageByModeAndOpacity)
{
    struct Case {
        CombineMode mode;
        float opacity;
        float before, full, half; // red of a pixel beside the bar, in it, and at its edge; all were 0.25
    };
    // 32 samples of 64 are 127 of 255.
    float const half = 127.0F / 255.0F;
    for (Case const& c : {Case{kCombineMerge, 1.0F, 0.25F, 1.0F, half + (1 - half) * 0.25F},
                          Case{kCombineMerge, 0.5F, 0.25F, 0.625F, half / 2 + (1 - half / 2) * 0.25F},
                          Case{kCombineCopy, 0.5F, 0.0F, 0.5F, half / 2}}) {
        for (int depth : {kDepthInt8, kDepthInt16, kDepthHalf, kDepthFloat}) {
            Owned const image = Black(8, 4, depth);
            image->Fill(KColor(0.25F, 0.25F, 0.25F, 0.25F), true);
            ChannelStyle style = RedStyle(c.opacity);
            Filled(image.get(), kBar)->PutToImage(c.mode, style);
            double const tolerance = depth == kDepthInt8 ? 0.005 : depth == kDepthFloat ? 1e-6 : 5e-4;
            EXPECT_NEAR(At<FltPixel>(*image, 1, 0).red, c.before, tolerance) << depth;
            EXPECT_NEAR(At<FltPixel>(*image, 2, 3).red, c.full, tolerance) << depth;
            EXPECT_NEAR(At<FltPixel>(*image, 4, 1).red, c.half, tolerance) << depth;
        }
    }
    // One sample a pixel, at its middle: no soft edge. The middle of pixel 4 lies on the edge itself.
    Owned const image = Black(8, 4);
    ChannelStyle style = RedStyle(0.5F);
    Filled(image.get(), "M0.25,-1 L0.6,-1 L0.6,2 L0.25,2 Z", 1)->PutToImage(kCombineMerge, style);
    for (int x = 0; x < 8; ++x) EXPECT_EQ(At<Pixel>(*image, x, 1).red, x >= 2 && x <= 4 ? 32767U : 0U) << x;
}

TEST(Channel, ARectangleOfTheFrameCoversAllOfIt)
{
    Owned const image = Black(64, 36);
    ChannelStyle style = RedStyle();
    Filled(image.get(), "M0,0 L1,0 L1,0.5625 L0,0.5625 Z")->PutToImage(kCombineMerge, style);
    for (int y : {0, 17, 35})
        for (int x : {0, 31, 63}) EXPECT_EQ(At<Pixel>(*image, x, y).alpha, 65535U) << x << ", " << y;
}

TEST(Channel, ColoursBeyondWhatIntegersHold)
{
    Owned const image = Black(8, 4);
    ChannelStyle style = RedStyle(0.5F);
    style.floatColor.red = 1.5F;
    Filled(image.get(), kBar)->PutToImage(kCombineMerge, style);
    EXPECT_NEAR(At<FltPixel>(*image, 2, 0).red, 0.75F, 1e-4) << "worked in floats";
}

TEST(Channel, AClipMovesNothing)
{
    Owned const whole = Black(16, 16), clipped = Black(16, 16);
    char const* const path = "M0.1,0.2 L0.9,0.3 L0.6,0.9 Z";
    ChannelStyle style = RedStyle();
    Filled(whole.get(), path)->PutToImage(kCombineMerge, style);
    KImageRegion const region(0.25, 0.25, 0.6, 0.5); // pixels 4 to 10 and 4 to 8
    Filled(clipped.get(), path, 8, &region)->PutToImage(kCombineMerge, style);
    KImagePixelRegion const box = region.ToPixelRegion(16, 16, 1.0);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            bool const inside = x >= box.x && x < box.x + box.width && y > box.y && y < box.y + box.height;
            if (y == box.y) continue; // its lowest line, see the scan's tests
            EXPECT_EQ(At<Pixel>(*clipped, x, y).red, inside ? At<Pixel>(*whole, x, y).red : 0U)
                << x << ", " << y;
        }
    }
    Owned const narrow = Black(1, 8);
    Filled(narrow.get(), "M-1,-1 L2,-1 L2,9 L-1,9 Z")->PutToImage(kCombineMerge, style);
    EXPECT_EQ(At<Pixel>(*narrow, 0, 4).red, 0U) << "a clip of one column";
}

TEST(Channel, AlphaAtOnce)
{
    Owned const image = Black(8, 4);
    image->Fill(KColor(1, 1, 1, 1), true);
    Filled(image.get(), kBar)->CopyToAlpha();
    EXPECT_EQ(At<Pixel>(*image, 2, 0).alpha, 255U << 8);
    EXPECT_EQ(At<Pixel>(*image, 4, 0).alpha, 127U << 8);
    EXPECT_EQ(At<Pixel>(*image, 0, 0).alpha, 0U);
    EXPECT_EQ(At<Pixel>(*image, 0, 0).red, 65535U);

    KImageChannel channel(image.get(), 8, nullptr, false);
    for (bool invert : {false, true}) {
        channel.SimpleShapeFill(Path(kBar).get(), invert, 1);
        EXPECT_EQ(At<Pixel>(*image, 2, 3).alpha, invert ? 0U : 65535U);
        EXPECT_EQ(At<Pixel>(*image, 4, 3).alpha, invert ? 32768U : 32767U);
        EXPECT_EQ(At<Pixel>(*image, 7, 0).alpha, invert ? 65535U : 0U);
        EXPECT_EQ(At<Pixel>(*image, 7, 0).red, 65535U);
    }
    channel.SimpleShapeFill(nullptr, true, 1);
    EXPECT_EQ(At<Pixel>(*image, 5, 1).alpha, 65535U);
    EXPECT_EQ(At<Pixel>(*image, 5, 1).red, 0U);
}

TEST(Channel, BitmapsLieInTheShape)
{
    // A bitmap of two columns, red and green, over a frame of 9 pixels: places p are n / 8. They are moved by
    // a half, divided by the size and taken through the inverse of the bitmap's matrix.
    Owned const image = Black(9, 9), bitmap = Black(2, 2);
    for (int y : {0, 1}) {
        bitmap->DrawPoint(0, y, KColor(1, 0, 0, 1));
        bitmap->DrawPoint(1, y, KColor(0, 1, 0, 1));
    }
    ChannelStyle style;
    style.type = 1;
    style.bitmap = bitmap.get();
    style.sampling = 0;
    style.edges = 2;
    style.bitmapMatrix.Move(0.5F, 0.5F, 0.0F);
    auto const draw = [&] {
        Filled(image.get(), "M-1,-1 L2,-1 L2,2 L-1,2 Z")->PutToImage(kCombineMerge, style);
    };
    draw();
    for (int x = 0; x < 9; ++x) EXPECT_EQ(At<Pixel>(*image, x, 4).red, x < 4 ? 65535U : 0U) << x;
    style.bitmapSize = 0.5;
    style.bitmapMatrix.Move(0.5F, 0.0F, 0.0F); // 2 (p + 1/2) - 1
    draw();
    for (int x = 0; x < 9; ++x) EXPECT_EQ(At<Pixel>(*image, x, 4).red, x < 2 ? 65535U : 0U) << x;
    style.bitmap = nullptr;
    draw();
    EXPECT_EQ(style.type, 0) << "no bitmap, no bitmap's style";
}

TEST(Channel, BlurSoftensTheEdgeAlone)
{
    // A half plane: its edge lies in the middle of 64 pixels; far from it nothing changes.
    char const* const half = "M-1,-1 L0.5,-1 L0.5,3 L-1,3 Z";
    Owned const bitmap = Black(2, 2);
    bitmap->Fill(KColor(1, 0, 0, 1), true);
    for (int type : {0, 1}) {
        Owned const image = Black(64, 32);
        ChannelStyle style = RedStyle(0.5F);
        style.type = type;
        style.bitmap = bitmap.get();
        style.edges = 2;
        style.blurX = style.blurY = 90.0; // 8 pixels
        Filled(image.get(), half)->PutToImage(kCombineMerge, style);
        auto const red = [&](int x) { return At<FltPixel>(*image, x, 16).red; };
        EXPECT_NEAR(red(10), 0.5F, 0.003) << type;
        EXPECT_NEAR((red(31) + red(32)) / 2, 0.25F, 0.01) << type;
        EXPECT_NEAR(red(60), 0.0F, 0.003) << type;
        EXPECT_GT(red(29), red(34)) << type;
        EXPECT_LT(red(29), 0.45F) << type << ": soft";
    }
}

std::unique_ptr<KShapeList> ListOf(std::string const& path, bool brush, bool pen)
{
    auto list = std::make_unique<KShapeList>();
    list->AddLast(Path(path).release());
    KStyle style;
    style.brush.enabled = brush;
    style.penChannel.enabled = pen;
    style.fill.color = KColor(1, 0, 0, 1);
    style.pen.color = KColor(0, 1, 0, 1);
    style.pen.thickness = 10.0F; // a tenth of the width
    style.pen.endType = 0;
    list->SetStyle(style);
    return list;
}

TEST(Render, BrushesFillWhatIsClosedAndPensDrawAll)
{
    struct Case {
        char const* name;
        char const* path;
        bool brush, pen, force;
        unsigned inside, line; // red in the middle, green on the lower side
    };
    char const* const square = "M0.3,0.3 L0.7,0.3 L0.7,0.7 L0.3,0.7 Z";
    char const* const open = "M0.3,0.3 L0.7,0.3 L0.7,0.7 L0.3,0.7";
    char const* const two = "M0.3,0.3 L0.7,0.3 L0.7,0.7 L0.3,0.7 Z M0.1,0.9 L0.2,0.9 L0.2,0.8";
    for (Case const& c : {
             Case{"both", square, true, true, false, 65535, 65535},
             Case{"brush alone", square, true, false, false, 65535, 0},
             Case{"pen alone", square, false, true, false, 0, 65535},
             Case{"neither", square, false, false, false, 0, 0},
             Case{"open", open, true, true, false, 0, 65535},
             Case{"open, forced", open, true, true, true, 65535, 65535},
             Case{"one part open", two, true, true, false, 0, 65535},
             Case{"one part open, forced", two, true, true, true, 65535, 65535},
         }) {
        Owned const image = Black(40, 40);
        KShapeRenderData data;
        data.forceFill = c.force;
        ListOf(c.path, c.brush, c.pen)->Render(image.get(), data);
        EXPECT_EQ(At<Pixel>(*image, 20, 20).red, c.inside) << c.name;
        EXPECT_EQ(At<Pixel>(*image, 20, 12).green, c.line) << c.name;
        EXPECT_EQ(At<Pixel>(*image, 5, 20).alpha, 0U) << c.name;
    }
    Owned const image = Black(40, 40);
    auto const list = ListOf(square, true, true);
    list->styles[0].pen.thickness = 0.0F;
    list->Render(image.get(), {});
    EXPECT_EQ(At<Pixel>(*image, 20, 12).red, 65535U) << "no thickness, no stroke, the same brush";
    EXPECT_EQ(At<Pixel>(*image, 20, 12).green, 0U);
}

TEST(Render, ShapesOfAListCoverEachOtherInOrderAndWindingIsTheBrushs)
{
    Owned image = Black(40, 40);
    KShapeGroup group;
    group.Add(ListOf("M0,0 L1,0 L1,1 L0,1 Z", true, false).release(), false);
    group.Add(ListOf("M0.25,0.25 L0.75,0.25 L0.75,0.75 L0.25,0.75 Z", true, false).release(), false);
    group.Get(1)->styles[0].fill.color = KColor(0, 0, 1, 1);
    group.Render(image.get(), {});
    EXPECT_EQ(At<Pixel>(*image, 20, 20).blue, 65535U);
    EXPECT_EQ(At<Pixel>(*image, 20, 20).red, 0U);
    EXPECT_EQ(At<Pixel>(*image, 4, 20).red, 65535U);

    // Twice round: even-odd leaves it empty.
    for (int winding : {0, 1}) {
        image = Black(40, 40);
        KShapeRenderData data;
        data.winding = winding;
        ListOf("M0.1,0.1 L0.9,0.1 L0.9,0.9 L0.1,0.9 Z M0.1,0.1 L0.9,0.1 L0.9,0.9 L0.1,0.9 Z", true, false)
            ->Render(image.get(), data);
        EXPECT_EQ(At<Pixel>(*image, 20, 20).red, winding ? 65535U : 0U);
    }
}

TEST(Render, CurvesOfManyPointsStayInMemory)
{
    // 100,000 curves on a wide picture: a step for each of its pixels would be 1.6e9 points.
    KShapeList list;
    auto* const shape = new KShape;
    shape->MoveTo({0.5F, 0.0F});
    for (int i = 1; i <= 100000; ++i) {
        float const y = static_cast<float>(i) * 1e-5F;
        shape->ConicTo({0.9F, y}, {0.5F, y}, i == 100000);
    }
    list.AddLast(shape);
    list.styles[0].penChannel.enabled = false;
    list.styles[0].fill.color = KColor(1, 1, 1, 1);
    Owned const image = Black(16384, 4);
    list.Render(image.get(), {});
    EXPECT_GT(At<Pixel>(*image, 9000, 1).alpha, 0U);
}

} // namespace
} // namespace ombrelune::test
