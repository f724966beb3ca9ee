#include <gtest/gtest.h>

#include <csignal>
#include <ctime>

#include <sys/resource.h>

#include "host/image/PixPtr.h"
#include "host/io/Pictures.h"
#include "host/io/Rows.h"
#include "host/value/MachineMemory.h"
#include "host/value/Parallel.h"
#include "tests/host/io_files.h"

namespace ombrelune {
namespace {

using namespace testing_files;

/// Awkward but valid pixels: every alpha, colour up to alpha, all words different from their neighbours.
Ref<Image> TestImage(int width, int height, int depth, bool opaque = false)
{
    Ref<Image> image = NewImageTagList({{Img_Width, width}, {Img_Height, height}, {Img_Depth, depth}});
    Pixel pixel;
    for (int y = 0; y < height; ++y) {
        PixPtr out(image.Get(), 0, y);
        for (int x = 0; x < width; ++x) {
            auto const n = static_cast<std::uint32_t>(x * 7919 + y * 104729);
            pixel.alpha = opaque || n % 3 == 0 ? 65535 : n % 65536;
            for (std::uint32_t c = 0; c < 3; ++c) pixel.word[c] = (n * (c + 3)) % (pixel.alpha + 1);
            if (depth == kDepthInt8) { // stays valid when it is cut to 8 bits
                pixel.alpha = pixel.alpha / 257 * 257;
                for (std::uint32_t c = 0; c < 3; ++c)
                    pixel.word[c] = std::min(pixel.word[c], pixel.alpha) / 257 * 257;
            }
            out >>= pixel;
        }
    }
    return image;
}

Ref<Image> ReadOrFail(std::string const& path, ReadOptions const& options = {})
{
    ReadResult result = ReadPicture(path, options);
    EXPECT_FALSE(result.problem) << result.problem->Format();
    return result.image;
}

Pixel At(Ref<Image> const& image, int x, int y)
{
    Pixel pixel;
    PixPtr(image.Get(), x, y).GetPixel(pixel);
    return pixel;
}

FltPixel FloatAt(Ref<Image> const& image, int x, int y)
{
    FltPixel pixel;
    PixPtr(image.Get(), x, y).GetPixel(pixel);
    return pixel;
}

std::vector<float> Words(FltPixel const& pixel) { return {pixel.red, pixel.green, pixel.blue, pixel.alpha}; }
std::vector<std::uint32_t> Words(Pixel const& pixel)
{
    return {pixel.red, pixel.green, pixel.blue, pixel.alpha};
}

TEST(Pictures, ComeBackWithTheSameValuesWhereTheFormatHoldsThem)
{
    TemporaryFolder const folder;
    struct {
        char const* extension;
        int depth, readDepth;
        bool opaque; // where the way through straight colour rounds
    } const cases[] = {
        {"png", kDepthInt8, kDepthInt8, false},    {"png", kDepthInt16, kDepthInt16, false},
        {"png", kDepthFloat, kDepthInt16, true},   {"tif", kDepthInt8, kDepthInt8, false},
        {"TIFF", kDepthInt16, kDepthInt16, false}, {"tif", kDepthHalf, kDepthFloat, false},
        {"tif", kDepthFloat, kDepthFloat, false},  {"exr", kDepthInt16, kDepthFloat, false},
        {"exr", kDepthHalf, kDepthHalf, false},    {"exr", kDepthFloat, kDepthFloat, false},
        {"dpx", kDepthInt8, kDepthInt16, false},   {"dpx", kDepthInt16, kDepthInt16, false},
        {"dpx", kDepthFloat, kDepthInt16, false},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(std::string(c.extension) + " from depth " + std::to_string(c.depth));
        Ref<Image> const image = TestImage(37, 70, c.depth, c.opaque);
        std::string const path = folder / (std::string("new/") + std::to_string(c.depth) + "." + c.extension);
        ASSERT_FALSE(WritePicture(*image, path));
        Ref<Image> const read = ReadOrFail(path);
        ASSERT_TRUE(read);
        EXPECT_EQ(read->Depth(), c.readDepth);
        ASSERT_EQ(read->Width(), 37);
        ASSERT_EQ(read->Height(), 70);
        for (int y = 0; y < 70; ++y)
            for (int x = 0; x < 37; ++x) {
                if (c.depth == kDepthHalf) ASSERT_EQ(Words(FloatAt(read, x, y)), Words(FloatAt(image, x, y)));
                else ASSERT_EQ(Words(At(read, x, y)), Words(At(image, x, y))) << x << ", " << y;
            }
    }
}

TEST(Pictures, TenBitDpxBecomesSixteenBits)
{
    TemporaryFolder const folder;
    // 802 in ten bits is 802 * 64 + 802 / 16 in sixteen.
    Save(folder / "a.dpx", TenBitDpx(2, 1, 3, {0, 1023, 802, 64, 5, 1}));
    Ref<Image> const image = ReadOrFail(folder / "a.dpx");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->Depth(), kDepthInt16);
    EXPECT_EQ(Words(At(image, 0, 0)), (std::vector<std::uint32_t>{0, 65535, 51378, 65535}));
    EXPECT_EQ(Words(At(image, 1, 0)), (std::vector<std::uint32_t>{4100, 320, 64, 65535}));
    Save(folder / "odd.dpx", TenBitDpx(1, 1, 4, {1, 2, 3, 4}));
    EXPECT_EQ(ReadPicture(folder / "odd.dpx").problem->text,
              "has 10 bits and rows of 4 samples, which cannot be read right; save it with 16 bits");
}

TEST(Pictures, FloatsKeepWhatIntegersCannotHold)
{
    TemporaryFolder const folder;
    Ref<Image> const image = NewImageTagList({{Img_Width, 2}, {Img_Height, 1}, {Img_Depth, kDepthFloat}});
    float const stored[8] = {-2.5F, 1e30F, 3.0F, 0.25F,
                             7.0F,  0.0F,  1.5F, 0.0F}; // colour beyond alpha, alpha 0
    std::memcpy(image->MainRow(0), stored, sizeof stored);
    for (char const* name : {"a.exr", "a.tif"}) {
        ASSERT_FALSE(WritePicture(*image, folder / name));
        Ref<Image> const read = ReadOrFail(folder / name);
        ASSERT_TRUE(read);
        EXPECT_EQ(std::memcmp(read->MainRow(0), stored, sizeof stored), 0) << name;
    }
    // Straight colour: 3 / 0.25 is limited to 1 and -2.5 to 0; without alpha nothing can shine.
    ASSERT_FALSE(WritePicture(*image, folder / "a.png"));
    Ref<Image> const png = ReadOrFail(folder / "a.png");
    EXPECT_EQ(Words(At(png, 0, 0)), (std::vector<std::uint32_t>{16384, 16384, 0, 16384}));
    EXPECT_EQ(Words(At(png, 1, 0)), (std::vector<std::uint32_t>{0, 0, 0, 0}));
    ASSERT_FALSE(WritePicture(*image, folder / "8.png", {.depth = kDepthInt8}));
    EXPECT_EQ(ReadOrFail(folder / "8.png")->Depth(), kDepthInt8);
}

TEST(Pictures, JpegKeepsFlatColourAndDropsAlpha)
{
    TemporaryFolder const folder;
    Ref<Image> const image = NewImageTagList({{Img_Width, 16}, {Img_Height, 16}, {Img_Depth, kDepthFloat}});
    Pixel pixel;
    pixel.red = 100 * 257;
    pixel.green = 50 * 257;
    pixel.blue = 20 * 257;
    pixel.alpha = 30000;
    image->Fill(pixel);
    ASSERT_FALSE(WritePicture(*image, folder / "a.jpeg"));
    Ref<Image> const read = ReadOrFail(folder / "a.jpeg");
    EXPECT_EQ(read->Depth(), kDepthInt8);
    Pixel const middle = At(read, 8, 8);
    EXPECT_NEAR(middle.red, 100 * 257, 2 * 257);
    EXPECT_NEAR(middle.green, 50 * 257, 2 * 257);
    EXPECT_NEAR(middle.blue, 20 * 257, 2 * 257);
    EXPECT_EQ(middle.alpha, 65535U);
}

TEST(Pictures, PngIsPremultipliedAndBottomUp)
{
    TemporaryFolder const folder;
    // Top row straight 200, 100, 50 under alpha 128: 100.4, 50.2, 25.1. Bottom row: alpha 0 and 255.
    Save(folder / "8.png", Png(2, 2, 8, 6,
                               {"\xc8\x64\x32\x80" + std::string("\xc8\x64\x32\xff"),
                                std::string("\xc8\x64\x32\0", 4) + std::string("\x01\x02\x03\xff")}));
    Ref<Image> image = ReadOrFail(folder / "8.png");
    ASSERT_TRUE(image);
    auto const bytes = [](std::uint32_t r, std::uint32_t g, std::uint32_t b, std::uint32_t a) {
        return std::vector<std::uint32_t>{r * 257, g * 257, b * 257, a * 257};
    };
    EXPECT_EQ(Words(At(image, 0, 1)), bytes(100, 50, 25, 128));
    EXPECT_EQ(Words(At(image, 1, 1)), bytes(200, 100, 50, 255));
    EXPECT_EQ(Words(At(image, 0, 0)), bytes(0, 0, 0, 0));
    EXPECT_EQ(Words(At(image, 1, 0)), bytes(1, 2, 3, 255));

    // 40000 x 30000 / 65535 is 18310.8, in grey and alpha.
    Save(folder / "16.png", Png(1, 1, 16, 4, {Big(std::uint16_t{40000}) + Big(std::uint16_t{30000})}));
    EXPECT_EQ(Words(At(ReadOrFail(folder / "16.png"), 0, 0)),
              (std::vector<std::uint32_t>{18311, 18311, 18311, 30000}));
    Save(folder / "grey.png", Png(1, 1, 8, 0, {"\x40"}));
    EXPECT_EQ(Words(At(ReadOrFail(folder / "grey.png"), 0, 0)), bytes(64, 64, 64, 255));
}

TEST(Pictures, ASmallPngHoldsTheSameInLess)
{
    TemporaryFolder const folder;
    // A ramp with an alpha that is 1 all over, and one that is not in one pixel.
    for (bool isOpaque : {true, false}) {
        Ref<Image> const image =
            NewImageTagList({{Img_Width, 200}, {Img_Height, 100}, {Img_Depth, kDepthInt8}});
        for (int y = 0; y < 100; ++y) {
            auto* out = reinterpret_cast<std::uint8_t*>(image->MainRow(y));
            for (int x = 0; x < 200; ++x, out += 4) {
                out[0] = static_cast<std::uint8_t>(x);
                out[1] = static_cast<std::uint8_t>(x * y % 251);
                out[2] = static_cast<std::uint8_t>(2 * y);
                out[3] = 255;
            }
        }
        if (!isOpaque) std::fill_n(image->MainRow(50), 4, std::byte{0});
        ASSERT_FALSE(WritePicture(*image, folder / "quick.png"));
        ASSERT_FALSE(WritePicture(*image, folder / "small.png", {.isSmall = true}));
        Ref<Image> const read = ReadOrFail(folder / "small.png");
        for (int y = 0; y < 100; ++y)
            EXPECT_EQ(std::memcmp(read->MainRow(y), image->MainRow(y), 800), 0) << y;
        EXPECT_LT(std::filesystem::file_size(folder / "small.png"),
                  std::filesystem::file_size(folder / "quick.png"));
    }
}

TEST(Pictures, TiffIsMultipliedOnlyWhereItSaysSo)
{
    TemporaryFolder const folder;
    std::string const pixel = LittleAll<std::uint16_t>({40000, 20000, 0, 30000});
    for (std::uint16_t kind : {1, 2}) { // associated, unassociated
        Save(folder / "a.tif", Tiff(1, 1, 4, 16, pixel, {{338, kind}}));
        std::uint32_t const red = kind == 1 ? 40000 : 18311, green = kind == 1 ? 20000 : 9155;
        EXPECT_EQ(Words(At(ReadOrFail(folder / "a.tif"), 0, 0)),
                  (std::vector<std::uint32_t>{red, green, 0, 30000}));
    }
    Save(folder / "float.tif",
         Tiff(1, 1, 4, 32, LittleAll<float>({4.0F, 2.0F, -1.0F, 0.5F}), {{338, 2}, {339, 3}}));
    Ref<Image> const image = ReadOrFail(folder / "float.tif");
    EXPECT_EQ(image->Depth(), kDepthFloat);
    EXPECT_EQ(Words(FloatAt(image, 0, 0)), (std::vector<float>{2.0F, 1.0F, -0.5F, 0.5F}));
    // The kind is known by the contents, not by the name.
    Save(folder / "misnamed.jpg", Tiff(1, 1, 3, 8, "\x10\x20\x30"));
    EXPECT_EQ(Words(At(ReadOrFail(folder / "misnamed.jpg"), 0, 0)),
              (std::vector<std::uint32_t>{16 * 257, 32 * 257, 48 * 257, 65535}));
}

TEST(Pictures, StraightAndPremultipliedCancel)
{
    for (int alpha = 0; alpha < 256; ++alpha)
        for (int colour = 0; colour < 256; ++colour) {
            auto const a = static_cast<std::uint8_t>(alpha), c = static_cast<std::uint8_t>(colour);
            ASSERT_EQ(Premultiplied(c, a), (2 * colour * alpha + 255) / 510) << colour << " x " << alpha;
            if (colour > alpha) continue;
            ASSERT_EQ(Premultiplied(Straight(c, a), a), c) << colour << " / " << alpha;
        }
    for (std::uint64_t alpha = 0; alpha < 65536; alpha += 97)
        for (std::uint64_t colour = 0; colour < 65536; colour += 89) {
            auto const a = static_cast<std::uint16_t>(alpha), c = static_cast<std::uint16_t>(colour);
            ASSERT_EQ(Premultiplied(c, a), (2 * colour * alpha + 65535) / 131070) << colour << " x " << alpha;
            if (colour > alpha) continue;
            ASSERT_EQ(Premultiplied(Straight(c, a), a), c) << colour << " / " << alpha;
        }
}

TEST(Pictures, TurnedCameraPicturesStandUpright)
{
    TemporaryFolder const folder;
    // Stored rows "ab", "cd", "ef"; expected rows from the top, by orientation.
    std::vector<std::string> const upright[] = {{"ab", "cd", "ef"}, {"ba", "dc", "fe"}, {"fe", "dc", "ba"},
                                                {"ef", "cd", "ab"}, {"ace", "bdf"},     {"eca", "fdb"},
                                                {"fdb", "eca"},     {"bdf", "ace"}};
    for (std::uint16_t orientation = 1; orientation <= 8; ++orientation) {
        Save(folder / "a.tif", Tiff(2, 3, 1, 8, "abcdef", {{274, orientation}}));
        Ref<Image> const image = ReadOrFail(folder / "a.tif");
        ASSERT_TRUE(image);
        std::vector<std::string> rows(static_cast<std::size_t>(image->Height()));
        for (int y = 0; y < image->Height(); ++y)
            for (int x = 0; x < image->Width(); ++x)
                rows[static_cast<std::size_t>(image->Height() - 1 - y)] +=
                    static_cast<char>(At(image, x, y).red / 257);
        EXPECT_EQ(rows, upright[orientation - 1]) << "orientation " << orientation;
    }
}

TEST(Pictures, ExrChannelsAreKnownByNameAndWindowsAreKept)
{
    TemporaryFolder const folder;
    // Data 2 x 2 at (1, 1) in a frame of 4 x 3 that starts at (1, 0): it covers columns 0, 1, top-down rows
    // 1, 2.
    Save(folder / "a.exr", Exr({1, 1, 2, 2}, {1, 0, 4, 2},
                               {{"A", 500.0F},
                                {"B", 300.0F},
                                {"G", 200.0F},
                                {"NY", -7.0F},
                                {"R", 100.0F},
                                {"Z", 900.0F},
                                {"albedo.R", 0.0F},
                                {"velocity.X", -50.0F}},
                               2.0F));
    Ref<Image> image = ReadOrFail(folder / "a.exr");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->Width(), 4);
    EXPECT_EQ(image->Height(), 3);
    EXPECT_EQ(image->XScale() / image->YScale(), 2.0);
    EXPECT_EQ(image->AuxChannels(), (std::vector<int>{kChannelZ, kChannelNormalY, kChannelVelocityX}));
    FltPixel const pixel = FloatAt(image, 1, 0); // x 1, y 1 of the data
    EXPECT_EQ(Words(pixel), (std::vector<float>{111.0F, 211.0F, 311.0F, 511.0F}));
    EXPECT_EQ(pixel.Aux(kChannelZ), 911.0F);
    EXPECT_EQ(pixel.Aux(kChannelNormalY), 4.0F);
    EXPECT_EQ(pixel.Aux(kChannelVelocityX), -39.0F);
    for (auto [x, y] : {std::pair(0, 2), std::pair(2, 0), std::pair(3, 1)}) {
        EXPECT_EQ(Words(FloatAt(image, x, y)), (std::vector<float>{0.0F, 0.0F, 0.0F, 0.0F}))
            << x << ", " << y;
        EXPECT_EQ(FloatAt(image, x, y).Aux(kChannelZ), 0.0F);
    }

    // Data larger than the frame on every side is cut; luminance alone is grey; no alpha is 1.
    Save(folder / "over.exr", Exr({-1, -2, 3, 3}, {0, 0, 1, 1}, {{"Y", 0.0F}}));
    image = ReadOrFail(folder / "over.exr");
    ASSERT_EQ(image->Width(), 2);
    EXPECT_EQ(Words(FloatAt(image, 0, 1)), (std::vector<float>{21.0F, 21.0F, 21.0F, 1.0F}));
    EXPECT_EQ(Words(FloatAt(image, 1, 0)), (std::vector<float>{32.0F, 32.0F, 32.0F, 1.0F}));

    Save(folder / "away.exr", Exr({100, 100, 101, 101}, {0, 0, 1, 1}, {{"A", 1.0F}, {"R", 1.0F}}));
    EXPECT_EQ(Words(FloatAt(ReadOrFail(folder / "away.exr"), 1, 1)), (std::vector<float>(4, 0.0F)));
    Save(folder / "far.exr", Exr({1073741000, -1073741000, 1073741001, -1073740999},
                                 {-1073741000, 0, -1073740999, 1}, {{"R", 1.0F}}));
    ReadPicture(folder / "far.exr"); // refused or empty, but no overflow

    // A channel under both of its names counts once.
    Save(folder / "twice.exr",
         Exr({0, 0, 0, 0}, {0, 0, 0, 0},
             {{"R", 1.0F}, {"VX", 2.0F}, {"Z", 3.0F}, {"depth.Z", 4.0F}, {"velocity.X", 5.0F}}));
    image = ReadOrFail(folder / "twice.exr");
    EXPECT_EQ(image->AuxChannels().size(), 2U);
    EXPECT_EQ(FloatAt(image, 0, 0).Aux(kChannelZ), 3.0F);

    Save(folder / "layers.exr", Exr({0, 0, 1, 1}, {0, 0, 1, 1}, {{"a.R", 0.0F}, {"b.R", 0.0F}}));
    EXPECT_EQ(ReadPicture(folder / "layers.exr").problem->text,
              "has no channel R, G, B, A, Y or Z; it has 'a.R, b.R'");
}

TEST(Pictures, ExrKeepsAuxiliaryChannelsAndAspect)
{
    TemporaryFolder const folder;
    Ref<Image> const image = NewImageTagList({{Img_Width, 3},
                                              {Img_Height, 2},
                                              {Img_Depth, kDepthHalf},
                                              {Img_XScale, 1.5},
                                              {Img_Channel, +kChannelVelocityY},
                                              {Img_Channel, +kChannelZ}});
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) {
            FltPixel pixel;
            pixel.Clear();
            pixel.green = static_cast<float>(x);
            pixel.SetAux(kChannelZ, 1000.1F + static_cast<float>(x)); // more digits than a half has
            pixel.SetAux(kChannelVelocityY, -static_cast<float>(y));
            PixPtr(image.Get(), x, y).SetPixel(pixel);
        }
    ASSERT_FALSE(WritePicture(*image, folder / "a.exr"));
    Ref<Image> const read = ReadOrFail(folder / "a.exr");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->Depth(), kDepthHalf);
    EXPECT_EQ(read->XScale(), 1.5);
    FltPixel const pixel = FloatAt(read, 2, 1);
    EXPECT_EQ(pixel.green, 2.0F);
    EXPECT_EQ(pixel.Aux(kChannelZ), 1002.1F);
    EXPECT_EQ(pixel.Aux(kChannelVelocityY), -1.0F);
}

TEST(Pictures, ProxiesTellTheOriginalSize)
{
    TemporaryFolder const folder;
    ASSERT_FALSE(WritePicture(*TestImage(9, 2, kDepthInt16), folder / "a.png"));
    Ref<Image> const proxy = ReadOrFail(folder / "a.png", {.proxy = 4});
    ASSERT_TRUE(proxy);
    EXPECT_EQ(proxy->Width(), 2); // so that 9 / 2 is 4 in integers
    EXPECT_EQ(proxy->Height(), 1);
    EXPECT_EQ(proxy->attributes.GetInt(Img_OriginalWidth), 9);
    EXPECT_EQ(proxy->attributes.GetInt(Img_OriginalHeight), 2);
    EXPECT_FALSE(ReadOrFail(folder / "a.png")->attributes.Has(Img_OriginalWidth));
}

TEST(Pictures, SamePictureGivesTheSameBytes)
{
    TemporaryFolder const folder;
    Ref<Image> const image = TestImage(333, 600, kDepthHalf);
    for (char const* extension : {"png", "tif", "jpg", "exr", "dpx"}) {
        auto const written = [&](int threads, std::string const& name) {
            SetThreadCount(threads);
            std::string const path = folder / (name + "." + extension);
            EXPECT_FALSE(WritePicture(*image, path));
            Ref<Image> const read = ReadOrFail(path);
            std::string bytes = Load(path);
            for (int y = 0; y < read->Height(); ++y)
                bytes.append(reinterpret_cast<char const*>(read->MainRow(y)),
                             static_cast<std::size_t>(read->Width() * read->PixelBytes()));
            return bytes;
        };
        std::string const one = written(1, "one");
        EXPECT_TRUE(one == written(4, "another")) << extension;
        std::time_t const now = std::time(nullptr);
        std::string const date = std::to_string(1900 + std::localtime(&now)->tm_year) + ":";
        EXPECT_EQ(one.find(date), std::string::npos) << extension;
        EXPECT_EQ(one.find("OpenImageIO"), std::string::npos) << extension;
    }
    SetThreadCount(0);
}

TEST(Pictures, CutFilesAreRefusedOrWhole)
{
    TemporaryFolder const folder;
    for (char const* name : {"a.png", "a.tif", "a.jpg", "a.exr", "a.dpx"})
        ASSERT_FALSE(WritePicture(*TestImage(61, 83, kDepthInt16), folder / name));
    // Without filter and compression: what is missing would pass for black.
    Save(folder / "plain.png", Png(40, 50, 8, 0, std::vector<std::string>(50, std::string(40, '\x55'))));
    for (std::string const& name : folder.Names()) {
        std::string const path = folder / name, bytes = Load(path);
        Ref<Image> const whole = ReadOrFail(path);
        int refused = 0;
        for (std::size_t i = 1; i <= 40; ++i) {
            Save(path, bytes.substr(0, i < 40 ? bytes.size() * i / 40 : bytes.size() - 1));
            ReadResult const result = ReadPicture(path);
            EXPECT_NE(result.problem.has_value(), static_cast<bool>(result.image));
            refused += result.problem.has_value();
            if (result.problem) {
                EXPECT_EQ(result.problem->file, path);
                continue;
            }
            for (int y = 0; y < whole->Height(); ++y)
                ASSERT_EQ(std::memcmp(whole->MainRow(y), result.image->MainRow(y),
                                      static_cast<std::size_t>(whole->Width() * whole->PixelBytes())),
                          0)
                    << name << " cut at " << i << ", row " << y;
        }
        EXPECT_GE(refused, 38) << name;
    }
}

TEST(Pictures, ATextThatAHeaderOnlyAnnouncesTakesNoMemory)
{
    TemporaryFolder const folder;
    using namespace std::string_literals;
    Save(folder / "long.exr", "\x76\x2f\x31\x01\x02\0\0\0owner\0string\0\0\0\0\x60some"s);
    struct rusage before, after;
    getrusage(RUSAGE_SELF, &before);
    ReadResult const result = ReadPicture(folder / "long.exr");
    getrusage(RUSAGE_SELF, &after);
    ASSERT_TRUE(result.problem);
    EXPECT_EQ(result.problem->text, "cannot be read as OpenEXR; is the file whole?");
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 500000) << "KiB; 1.5 GiB were announced";
}

TEST(Pictures, BadFilesAreNamed)
{
    TemporaryFolder const folder;
    Save(folder / "coast.png", Png(1, 1, 8, 0, {"\x40"}));
    Save(folder / "empty.png", "");
    Save(folder / "text.png", "not a picture at all");
    Save(folder / "broken.exr", std::string("\x76\x2f\x31\x01garbage that goes on", 24));
    Save(folder / "huge.png", Png(200000, 200000, 8, 6, {"abcd"}));
    Save(folder / "large.png", Png(65536, 65536, 16, 6, {"abcd"}));
    Save(folder / "huge.exr", Exr({0, 0, 0, 0}, {0, 0, 199999, 199999}, {{"R", 0.0F}}));
    Save(folder / "huge.tif", Tiff(65535, 65535, 4, 32, "abcd", {{338, 1}, {339, 3}}));
    std::string noBits = TenBitDpx(600, 400, 3, {});
    noBits[803] = 0;
    Save(folder / "bits.dpx", noBits);
    struct {
        std::string path, text;
    } const cases[] = {
        {folder / "bits.dpx", "has 0 bits a sample; a DPX file has 1 to 64"},
        {folder / "cost.png", "there is no such file; did you mean 'coast.png'?"},
        {folder / "quite-another.png", "there is no such file"},
        {folder / "coast.png/below.png", "there is no such file"},
        {folder / "", "is a folder; give the name of a picture"},
        {"/dev/zero", "is no regular file"},
        {std::string("a\0b.png", 7), "a file name cannot hold a zero byte"},
        {folder / "empty.png", "is empty; was it cut off, or is it still being written?"},
        {folder / "text.png", "is no picture of a known kind (PNG, TIFF, JPEG, OpenEXR, DPX)"},
        {folder / "broken.exr", "cannot be read as OpenEXR; is the file whole?"},
        {folder / "huge.png", "is 200000 x 200000 pixels; a side has 1 to 65536"},
        {folder / "large.png",
         MachineMemory() / 2 < std::size_t{32} << 30
             ? "is 65536 x 65536 pixels and needs 32.0 GiB, more than half of the memory"
             : "cannot be read as PNG"},
        {folder / "huge.exr", "is 200000 x 200000 pixels; a side has 1 to 65536"},
        {folder / "huge.tif", "cannot be read as TIFF; is the file whole?"},
    };
    for (auto const& c : cases) {
        ReadResult const result = ReadPicture(c.path);
        EXPECT_FALSE(result.image);
        ASSERT_TRUE(result.problem) << c.path;
        EXPECT_EQ(result.problem->file, c.path);
        EXPECT_EQ(result.problem->text.substr(0, c.text.size()), c.text);
    }
}

TEST(Pictures, WritingThatFailsLeavesNothingBehind)
{
    TemporaryFolder const folder;
    Ref<Image> const image = TestImage(64, 64, kDepthInt16);
    Save(folder / "file.png", "earlier");
    std::string const known = "known are .png, .tif, .tiff, .jpg, .jpeg, .exr, .dpx";
    struct {
        std::string path, text;
    } const cases[] = {
        {folder / "a.gif", "unknown extension '.gif'; " + known},
        {folder / "a", "the name has no extension; " + known},
        {folder / "file.png/below/a.png", "cannot make the folder "},
        {std::string("a\0.png", 6), "a file name cannot hold a zero byte"},
        {folder / "folder.png", "is a folder; give the name of a file"},
    };
    std::filesystem::create_directory(folder / "folder.png");
    for (auto const& c : cases) {
        auto const problem = WritePicture(*image, c.path);
        ASSERT_TRUE(problem) << c.path;
        EXPECT_EQ(problem->file, c.path);
        EXPECT_EQ(problem->text.substr(0, c.text.size()), c.text);
    }
    std::filesystem::create_symlink("/dev/null", folder / "null.png");
    EXPECT_EQ(WritePicture(*image, folder / "null.png")->text, "is no regular file; give another name");
    std::filesystem::remove(folder / "null.png");

    // A limit on the size of files stands in for a full disk.
    signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit const small = {5000, before.rlim_max};
    for (char const* extension : {"png", "tif", "jpg", "exr", "dpx"}) {
        Save(folder / (std::string("file.") + extension), "earlier");
        setrlimit(RLIMIT_FSIZE, &small);
        auto const problem =
            WritePicture(*TestImage(300, 300, kDepthFloat), folder / (std::string("file.") + extension));
        setrlimit(RLIMIT_FSIZE, &before);
        ASSERT_TRUE(problem) << extension;
        EXPECT_EQ(problem->text.substr(0, 26), "could not be written whole") << extension;
        EXPECT_EQ(Load(folder / (std::string("file.") + extension)), "earlier");
    }
    EXPECT_EQ(folder.Names().size(), 6U); // five files and the folder, no temporaries
}

} // namespace
} // namespace ombrelune
