// Pixel Region: paints rectangles that are given in pixels from a corner of theirs.

#include <algorithm>

#include "framework/Registration.h"

namespace ombrelune {

class KEffectPixelRegion : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "PiR", "Pixel Region"); }

    KEffectPixelRegion()
    {
        unsigned const affects = KF_AffectInputs, soft = KF_SoftMax, free = KF_SoftMin | KF_SoftMax;
        KColor const white(1.0F, 1.0F, 1.0F, 1.0F);
        // clang-format off
        parameters.AddChapter("Pixel Regions");
        parameters.AddSliderInt(&count, 1, "Number of regions", "Coun"_id, affects, 1, kRegions);
        parameters.AddColor(&color, white, "Color", "Colo"_id, 0);
        for (int i = 0; i < kRegions; ++i) {
            unsigned const hidden = i == 0 ? 0U : unsigned{KF_Hidden};
            auto const n = static_cast<std::uint32_t>(i);
            Region& region = regions[i];
            KString label;
            parameters.GroupStart(label.Numbered("Region", i + 1, true), "Gro0"_id + n, hidden);
            parameters.AddButtons (&region.corner, 0,  label.Numbered("Offset Corner", i + 1, true), "OfT0"_id + n, hidden, {"Top-Left", "Top-Right", "Bottom-Left", "Bottom-Right"});
            parameters.AddScrewInt(&region.x,      50, label.Numbered("Region X", i + 1, true),      "ReX0"_id + n, free | hidden, 0, 1000);
            parameters.AddScrewInt(&region.y,      50, label.Numbered("Region Y", i + 1, true),      "ReY0"_id + n, free | hidden, 0, 1000);
            parameters.AddScrewInt(&region.width,  50, label.Numbered("Region Width", i + 1, true),  "ReW0"_id + n, soft | hidden, 0, 1000);
            parameters.AddScrewInt(&region.height, 50, label.Numbered("Region Height", i + 1, true), "ReH0"_id + n, soft | hidden, 0, 1000);
            parameters.AddButtons (&region.colorType, 0, label.Numbered("Color Type", i + 1, true),  "CoT0"_id + n, affects | hidden, {"Default", "Custom"});
            parameters.AddColor   (&region.color, white, label.Numbered("Region Color", i + 1, true), ColorId(n), KF_Hidden);
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
                for (std::uint32_t first :
                     {"Gro0"_id, "OfT0"_id, "ReX0"_id, "ReY0"_id, "ReW0"_id, "ReH0"_id, "CoT0"_id})
                    messages->Show(first + i, static_cast<int>(i) < shownCount);
                ShowColor(*messages, i);
            }
        } else if (id - "CoT0"_id < kRegions) {
            std::uint32_t const i = id - "CoT0"_id;
            shownTypes[i] = value.intValue;
            ShowColor(*messages, i);
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        int const scale = source->Scale();
        for (int i = 0; i < count; ++i) {
            Region const& r = regions[i];
            bool const isRight = r.corner == kTopRight || r.corner == kBottomRight;
            bool const isBottom = r.corner == kBottomLeft || r.corner == kBottomRight;
            int const left = isRight ? r.x - r.width : r.x, low = isBottom ? r.y - r.height : r.y;
            Box& box = boxes[i];
            box.left = left / scale;
            box.right = (left + r.width) / scale;
            box.low = low / scale;
            box.high = (low + r.height) / scale;
            KColor const& own = r.colorType == 0 ? color : r.color;
            PixelFromColor(box.pixel, own);
            PixelFromColor(box.pixelFlt, own);
        }
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return Painted(x, y, source, &Box::pixel); }
    FltPixel FFlt(int x, int y, KImage* source) override { return Painted(x, y, source, &Box::pixelFlt); }

    static constexpr int kRegions = 64;
    struct Region {
        int corner;
        int x, y, width, height; // pixels of the full-sized picture, rows from 0
        int colorType;           // 0 the tool's, 1 its own
        KColor color;
    };

    int count;
    KColor color;
    Region regions[kRegions];

private:
    enum Corner { kTopLeft, kTopRight, kBottomLeft, kBottomRight };

    struct Box {
        int left, right, low, high; // up to, not including, right and high
        Pixel pixel;
        FltPixel pixelFlt;
    };

    /// The last region that holds a pixel wins.
    template <class Record> Record Painted(int x, int y, KImage const* source, Record Box::*fill) const
    {
        Record pixel;
        source->GetPixel(x, y, pixel);
        for (int i = count; i-- > 0;) {
            Box const& box = boxes[i];
            if (x < box.left || x >= box.right || y < box.low || y >= box.high) continue;
            for (int c = 0; c < 4; ++c) pixel.word[c] = (box.*fill).word[c];
            break;
        }
        return pixel;
    }

    static constexpr std::uint32_t ColorId(std::uint32_t i) { return "RC00"_id + i * 0x100; }
    void ShowColor(KMessageList& messages, std::uint32_t i) const
    {
        bool const isShown = static_cast<int>(i) < shownCount && shownTypes[i] > 0;
        for (std::uint32_t below : {0U, 11U, 16U, 17U}) messages.Show(ColorId(i) - below, isShown);
    }

    int shownCount = 1; // as the panel was told last
    int shownTypes[kRegions] = {};
    Box boxes[kRegions];
};

OMBRELUNE_TOOL(BF_PixelRegion, BF_ThreadedOperator, KEffectPixelRegion);

} // namespace ombrelune
