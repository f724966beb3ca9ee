// Reassemble: copies rectangles of the picture, stretched if wanted, to other places of a new frame.

#include <algorithm>
#include <cstdint>
#include <limits>

#include "framework/Registration.h"

namespace ombrelune {

class KEffectReassemble : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Rea", "Reassemble"); }

    KEffectReassemble()
    {
        unsigned const affects = KF_AffectInputs, free = KF_SoftMin | KF_SoftMax, softMax = KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Reassemble");
        parameters.AddScrewInt (&frameWidth,  640, "Width",  "CrWi"_id, affects | softMax, 1, 1000);
        parameters.AddScrewInt (&frameHeight, 480, "Height", "CrHe"_id, affects | softMax, 2, 1000);
        parameters.AddSliderInt(&count, 1, "Number of regions", "Coun"_id, affects, 1, kRegions);
        for (std::uint32_t i = 0; i < kRegions; ++i) {
            unsigned const hidden = i == 0 ? 0U : unsigned{KF_Hidden};
            Region& region = regions[i];
            KString text;
            auto const label = [&](char const* name) { return text.Numbered(name, static_cast<int>(i) + 1, true); };
            parameters.GroupStart(label("Region"), kGroup + i, hidden);
            parameters.AddButtons (&region.sourceCorner, 0, label("Source Corner"), kSourceCorner + i, hidden, {"TopLeft", "TopRight", "BottomLeft", "BottomRight"});
            parameters.AddScrewInt(&region.sourceX, 50, label("Source X"), kSourceX + i, hidden | free, 0, 1000);
            parameters.AddScrewInt(&region.sourceY, 50, label("Source Y"), kSourceY + i, hidden | free, 0, 1000);
            parameters.AddScrewInt(&region.sourceWidth,  50, label("Source Width"),  kSourceWidth + i,  hidden | softMax, 0, 1000);
            parameters.AddScrewInt(&region.sourceHeight, 50, label("Source Height"), kSourceHeight + i, hidden | softMax, 0, 1000);
            parameters.AddButtons (&region.corner, 0, label("Destination Corner"), kCorner + i, hidden, {"TopLeft", "TopRight", "BottomLeft", "BottomRight"});
            parameters.AddScrewInt(&region.x, 50, label("Destination X"), kX + i, hidden | free, 0, 1000);
            parameters.AddScrewInt(&region.y, 50, label("Destination Y"), kY + i, hidden | free, 0, 1000);
            parameters.AddButtons (&region.isStretched, 0, label("Destination Size"), kSize + i, hidden | affects, {"Same as source", "Different"});
            parameters.AddScrewInt(&region.width,  50, label("Destination Width"),  kWidth + i,  softMax | KF_Hidden, 0, 1000);
            parameters.AddScrewInt(&region.height, 50, label("Destination Height"), kHeight + i, softMax | KF_Hidden, 0, 1000);
            parameters.GroupEnd();
        }
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "Coun"_id) {
            shownCount = value.intValue;
            for (std::uint32_t i = 0; i < kRegions; ++i) {
                for (std::uint32_t each : {kGroup, kSourceCorner, kSourceX, kSourceY, kSourceWidth,
                                           kSourceHeight, kCorner, kX, kY, kSize})
                    messages->Show(each + i, IsShown(i));
                ShowSize(*messages, i);
            }
        }
        if (id - kSize < kRegions) {
            regions[id - kSize].isStretched = value.intValue;
            ShowSize(*messages, id - kSize);
        }
        return messages;
    }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Resize; }
    bool GetResize(int scale, int& w, int& h, float& /*xAspect*/, float& /*yAspect*/) override
    {
        w = std::max(frameWidth / scale, 1);
        h = std::max(frameHeight / scale, 1);
        return true;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        pieceCount = std::clamp(count, 1, kRegionCount);
        for (int i = 0; i < pieceCount; ++i) pieces[i] = PieceOf(regions[i], source->Scale());
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return At<Pixel>(x, y, *source); }
    FltPixel FFlt(int x, int y, KImage* source) override { return At<FltPixel>(x, y, *source); }

    /// A corner of a rectangle that lies at a place. Rows count from 0 on.
    enum Corner { kTopLeft, kTopRight, kBottomLeft, kBottomRight };

    struct Region {
        int sourceCorner, sourceX, sourceY, sourceWidth, sourceHeight; // pixels of the full-sized picture
        int corner, x, y;
        int isStretched; ///< to a size of its own
        int width, height;
    };

    static constexpr std::uint32_t kRegions = 64;

    int frameWidth, frameHeight; // pixels of the full-sized picture
    int count;
    Region regions[kRegions];

private:
    static constexpr int kRegionCount = kRegions;
    static constexpr std::uint32_t kGroup = "Gro0"_id, kSourceCorner = "SoT0"_id, kSourceX = "SoX0"_id,
                                   kSourceY = "SoY0"_id, kSourceWidth = "SoW0"_id, kSourceHeight = "SoH0"_id,
                                   kCorner = "DeT0"_id, kX = "DeX0"_id, kY = "DeY0"_id, kSize = "DeS0"_id,
                                   kWidth = "DeW0"_id, kHeight = "DeH0"_id;

    /// A region in pixels of this picture.
    struct Piece {
        int left, bottom, right, top; // of the frame, upper bounds excluded
        float ratioX, ratioY;         // source pixels for one of the frame
        int originX, originY;         // of the source
    };

    bool IsShown(std::uint32_t region) const { return static_cast<int>(region) < shownCount; }
    void ShowSize(KMessageList& messages, std::uint32_t region) const
    {
        for (std::uint32_t each : {kWidth, kHeight})
            messages.Show(each + region, IsShown(region) && regions[region].isStretched > 0);
    }

    static bool IsRight(int corner) { return corner == kTopRight || corner == kBottomRight; }
    static bool IsBottom(int corner) { return corner == kBottomLeft || corner == kBottomRight; }

    static Piece PieceOf(Region const& region, int scale)
    {
        std::int64_t const w = region.isStretched > 0 ? region.width : region.sourceWidth,
                           h = region.isStretched > 0 ? region.height : region.sourceHeight;
        std::int64_t const left = region.x - (IsRight(region.corner) ? w : 0),
                           bottom = region.y - (IsBottom(region.corner) ? h : 0);
        std::int64_t const originX = std::int64_t{region.sourceX} -
                                     (IsRight(region.sourceCorner) ? region.sourceWidth : 0),
                           originY = std::int64_t{region.sourceY} -
                                     (IsBottom(region.sourceCorner) ? region.sourceHeight : 0);
        auto const scaled = [=](std::int64_t pixels) {
            using Limits = std::numeric_limits<int>;
            return static_cast<int>(std::clamp<std::int64_t>(pixels / scale, Limits::min(), Limits::max()));
        };
        return {scaled(left),
                scaled(bottom),
                scaled(left + w),
                scaled(bottom + h),
                static_cast<float>(region.sourceWidth) / static_cast<float>(w),
                static_cast<float>(region.sourceHeight) / static_cast<float>(h),
                scaled(originX),
                scaled(originY)};
    }

    /// What the last region that holds the place shows there.
    template <class Record> Record At(int x, int y, KImage const& source) const
    {
        Record pixel;
        pixel.Clear();
        for (int i = pieceCount - 1; i >= 0; --i) {
            Piece const& piece = pieces[i];
            if (x < piece.left || x >= piece.right || y < piece.bottom || y >= piece.top) continue;
            source.SamplePixelB(
                piece.ratioX * static_cast<float>(x - piece.left) + static_cast<float>(piece.originX),
                piece.ratioY * static_cast<float>(y - piece.bottom) + static_cast<float>(piece.originY),
                pixel);
            break;
        }
        return pixel;
    }

    int shownCount = 1; // as the panel was told last
    int pieceCount = 0;
    Piece pieces[kRegions];
};

OMBRELUNE_TOOL(BF_Reassemble, BF_ThreadedOperator, KEffectReassemble);

} // namespace ombrelune
