#include <gtest/gtest.h>

#include "image/KImage.h"
#include "image/KLookUpTable.h"
#include "image/SafeDelete.h"
#include "tests/image/kimage_helpers.h"

namespace ombrelune {
namespace {

using namespace test;

/// Whether the pixels at this address are free: the pool hands the buffer that came back last to the next
/// image of the same size.
bool IsFree(std::byte const* pixels, int width, int height)
{
    return MakeImage(width, height, kDepthInt16)->MainRow(0) == pixels;
}

TEST(KImageOwnership, AnOwnerLetsGoAndAGuestDoesNot)
{
    Ref<Image> host = MakeImage(37, 11, kDepthInt16);
    std::byte const* const pixels = host->MainRow(0);
    delete KImage::ImageFromHost(host.Get(), false);
    EXPECT_FALSE(IsFree(pixels, 37, 11));

    KImage* slot = new KImage(host.Release(), true);
    slot->Use();
    KImage* const guest = KImage::ImageFromHost(slot->FImage(), false);
    KImage::ImageReplace(&slot, nullptr);
    EXPECT_EQ(slot, nullptr);
    EXPECT_FALSE(IsFree(pixels, 37, 11)) << "one more reference was counted";
    guest->Recycle();
    EXPECT_TRUE(IsFree(pixels, 37, 11));
    delete guest;
    EXPECT_EQ(KImage::ImageFromHost(nullptr, true), nullptr);
}

TEST(KImage, NewImagesTakeTheirFormatFromWhatIsAskedFor)
{
    KImage const plain(20, 10, 1.0F, false);
    EXPECT_FALSE(plain.IsFloat());
    EXPECT_FALSE(plain.HasVelocity());
    EXPECT_TRUE(KImage(2, 2, 1.0F, true).HasVelocity());
    EXPECT_EQ(KImage(0, -5, 1.0F, false).Height(), 1);

    Owned const host(KImage::ImageFromHost(
        NewImageTagList({{Img_Width, 20}, {Img_Height, 10}, {Img_Depth, kDepthHalf}, {Img_XScale, 2.0}})
            .Release(),
        true));
    EXPECT_EQ(host->PixelAspect(), 2.0F);
    EXPECT_EQ(host->FrameAspect(), 4.0F);
    Owned const same(host->LikeOf(0, 100, 1.0F, 1.0F));
    EXPECT_TRUE(same->SameSize(host.get()));
    EXPECT_EQ(same->Depth(), kDepthHalf);
    EXPECT_EQ(same->PixelAspect(), 2.0F);
    Owned const wide(host->LikeOf(50, 4, 0.0F, 1.0F));
    EXPECT_EQ(wide->Width(), 50);
    EXPECT_EQ(wide->PixelAspect(), 2.0F) << "both scales are needed";
    EXPECT_EQ(Owned(host->LikeOf(50, 4, 1.0F, 4.0F))->PixelAspect(), 0.25F);
    EXPECT_EQ(host->LikeOf(1 << 20, 4, 1.0F, 1.0F), nullptr);
    Owned const moving(host->LikeOfPlusVelocity());
    EXPECT_TRUE(moving->HasVelocity());
    EXPECT_EQ(moving->FImage()->AuxFloats(), 2);
}

TEST(KImage, KnowsItsSizeWithoutProxy)
{
    KImage image(20, 10, 1.0F, false);
    EXPECT_EQ(image.Scale(), 1);
    EXPECT_EQ(image.OriginalHeight(), 10);
    image.Set(1, 79);
    image.Set(2, 40);
    image.Set(3, 1);
    image.Set(4, 7);
    EXPECT_EQ(image.Scale(), 3);
    EXPECT_EQ(image.OriginalHeight(), 40);
    EXPECT_EQ(image.FImage()->attributes.GetInt(Img_Field), 1);
    Owned const copy(image.CopyOf());
    EXPECT_EQ(copy->OriginalWidth(), 79);
    image.Set(1, 5);
    EXPECT_EQ(image.Scale(), 1) << "never below 1";
    // The wrapper of a field sees pixels of twice the height, and the frame keeps its shape.
    image.SetYScale(2.0);
    EXPECT_EQ(image.FrameAspect(), 1.0F);
    EXPECT_EQ(image.FImage()->YScale(), 1.0);
}

template <class Record> class KImageEdges : public testing::Test {};
using Records = testing::Types<Pixel, FltPixel>;
TYPED_TEST_SUITE(KImageEdges, Records);

TYPED_TEST(KImageEdges, EveryAccessorFollowsItsRule)
{
    for (int depth : kAllDepths) {
        Owned const image = NoiseImage(10, 7, depth);
        int const places[][2] = {{0, 0}, {9, 6}, {-1, -1}, {10, 0}, {-5, 3}, {4, 7}, {-20, -14}, {33, -8}};
        for (auto const& [x, y] : places) {
            for (EdgeModes edges : kAllEdges) {
                TypeParam record;
                record.Clear();
                record.SetAux(kChannelVelocityX, 3.5F);
                image->GetSample(x, y, record, edges);
                for (int i = 0; i < 4; ++i) {
                    double const unit =
                        (record.word[i] + 0.0) / (std::is_same_v<TypeParam, Pixel> ? 65535 : 1);
                    double const stored =
                        WordAt(*image->FImage(), x, y, i, edges) / (image->IsFloat() ? 1 : 65535);
                    EXPECT_NEAR(unit, stored, 1e-5) << x << ", " << y << " word " << i << " mode " << edges;
                }
                bool const inside = x >= 0 && y >= 0 && x < 10 && y < 7;
                if (edges == kEdgeBlack && !inside) {
                    EXPECT_EQ(record.Aux(kChannelVelocityX), 3.5F);
                }
            }
        }
    }
}

TEST(KImageRegion, GrowsAndStaysEmptyUntilThen)
{
    KImageRegion region;
    EXPECT_TRUE(region.IsEmpty());
    region.Scale(0.5F, 0.5F);
    region.Expand(1e6, 1e6);
    region.Add(KImageRegion());
    EXPECT_TRUE(region.IsEmpty());
    region.Add(3, 5);
    EXPECT_EQ(region.left, 3);
    EXPECT_EQ(region.right, 3);
    EXPECT_EQ(region.low, 5);
    EXPECT_EQ(region.high, 5);
    region.Add({1, 2, 4, 4});
    region.Expand(1, 0);
    region.Scale(2, 10);
    EXPECT_EQ(region.left, 0);
    EXPECT_EQ(region.right, 10);
    EXPECT_EQ(region.low, 20);
    EXPECT_EQ(region.high, 50);
    EXPECT_TRUE(region.IsInFrame(1, 30));
    EXPECT_FALSE(region.IsInFrame(1, 20)) << "above the frame";
    EXPECT_FALSE(KImageRegion(-2, 0, 0, 1).IsInFrame(1, 1));
    EXPECT_FALSE(region.LineCuts({-1, 0}, {-5, 90}));
    EXPECT_TRUE(region.LineCuts({-1, 30}, {20, 90}));
}

TEST(KImageRegion, PixelsAreOneMoreThanNeededWithinTheFrame)
{
    KImagePixelRegion p = KImageRegion(0.25, 0.1, 0.5, 0.2).ToPixelRegion(100, 50, 1.0);
    EXPECT_EQ(p.x, 25);
    EXPECT_EQ(p.width, 26);
    EXPECT_EQ(p.y, 10);
    EXPECT_EQ(p.height, 11);
    p = KImageRegion(2, 0, 3, 1).ToPixelRegion(100, 50, 2.0); // wholly right of the frame
    EXPECT_EQ(p.x, 99);
    EXPECT_EQ(p.width, 1);
    EXPECT_EQ(p.height, 50);
    EXPECT_TRUE(KImageRegion().ToPixelRegion(100, 50, 1.0).IsEmpty());
    EXPECT_EQ(KImagePixelRegion(1, 2, 3, 4).Scale(3).y, 6);
}

TEST(KLookUpTable, AnEmptyTableIsTheIdentity)
{
    KLookUpTable const table(nullptr);
    EXPECT_EQ(table.GetCount(), 0);
    EXPECT_EQ(table.GetValue(1234), 1234.0F);
    EXPECT_EQ(table.GetValueNormalised(32768), 0.5F);
    EXPECT_NEAR(table.GetValueFloat(0.3F), 0.3F, 2e-5F);
    EXPECT_EQ(table.GetValueFloat(-1), 0.0F);
}

TEST(KLookUpTable, SamplesACurveAndLooksItUp)
{
    // The line from (0, 1) to (1, 0).
    BezierCurve curve = BezierCurve::Identity();
    for (auto& key : curve.keys) {
        key.y = 1 - key.y;
        key.leftY = 1 - key.leftY;
        key.rightY = 1 - key.rightY;
    }
    auto const host = MakeRef<LookUpTable>(curve);
    KLookUpTable const table(host.Get());
    ASSERT_EQ(table.GetCount(), 65536);
    for (int i : {0, 1, 1000, 65535}) EXPECT_NEAR(table.GetValue(i), 65535 - i, 1) << i;

    KLookUpTable small;
    small.SetCount(4);
    for (int i = 0; i < 4; ++i) small.Entries()[i] = static_cast<std::uint16_t>(10 * i);
    std::unique_ptr<KLookUpTable> const copy(small.CopyOf());
    // The place f x 3.4999 truncated is the entry, whose value is divided by the number of entries.
    EXPECT_EQ(copy->GetValueFloat(0.0F), 0.0F);
    EXPECT_EQ(copy->GetValueFloat(0.28F), 0.0F);
    EXPECT_EQ(copy->GetValueFloat(0.29F), 2.5F);
    EXPECT_EQ(copy->GetValueFloat(1.0F), 7.5F);
    EXPECT_EQ(copy->GetValueFloat(9.0F), 7.5F);
    small.SetCount(0);
    EXPECT_EQ(small.Entries(), nullptr);
}

} // namespace
} // namespace ombrelune
