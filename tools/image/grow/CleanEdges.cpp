// Clean Edges: replaces a border of the frame by a colour or by the last pixels that are kept.

#include <algorithm>

#include "framework/Registration.h"

namespace ombrelune {

class KEffectCleanEdges : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "ClE", "Clean Edges"); }
    static char const* Category() { return KEffectImage::Category(); }

    KEffectCleanEdges()
    {
        // clang-format off
        parameters.AddChapter("Edge Cleaner");
        parameters.AddButtons  (&lock, kLockAll, "Lock", "Lock"_id, KF_AffectInputs, {"All Sides", "Vert./Horiz.", "None"});
        parameters.AddSliderInt(&pixelsLeft,   10, "Pixels Left",   "PixL"_id, KF_SoftMax, 0, 40);
        parameters.AddSliderInt(&pixelsRight,  10, "Pixels Right",  "PixR"_id, KF_SoftMax, 0, 40);
        parameters.AddSliderInt(&pixelsTop,    10, "Pixels Top",    "PixT"_id, KF_SoftMax, 0, 40);
        parameters.AddSliderInt(&pixelsBottom, 10, "Pixels Bottom", "PixB"_id, KF_SoftMax, 0, 40);
        parameters.AddButtons  (&type, 1, "Type", "Type"_id, KF_AffectInputs, {"Solid", "Duplicate"});
        parameters.AddColor    (&color, {0.0F, 0.0F, 0.0F, 0.0F}, "Color", "ColR"_id, KF_Hidden);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        int const v = value.intValue;
        if (id == "Lock"_id) {
            messages->Show("PixT"_id, v > kLockAll);
            for (std::uint32_t each : {"PixR"_id, "PixB"_id}) messages->Show(each, v > kLockOpposite);
            messages->SetName("PixL"_id, v == kLockAll        ? "Pixels"
                                         : v == kLockOpposite ? "Pixels Left/Right"
                                                              : "Pixels Left");
            if (v > kLockAll)
                messages->SetName("PixT"_id, v == kLockOpposite ? "Pixels Top/Bottom" : "Pixels Top");
            if (v > kLockOpposite) {
                messages->SetName("PixR"_id, "Pixels Right");
                messages->SetName("PixB"_id, "Pixels Bottom");
            }
        } else if (id == "Type"_id) {
            for (std::uint32_t each : {"ColR"_id, "ColG"_id, "ColB"_id, "ColA"_id})
                messages->Show(each, v == 0);
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        int const scale = source->Scale();
        int const left = std::min(pixelsLeft / scale, width / 2);
        int const right = std::min((lock == kLockNone ? pixelsRight : pixelsLeft) / scale, width / 2);
        int const ownTop = lock == kLockAll ? pixelsLeft : pixelsTop;
        int const top = std::min(ownTop / scale, height / 2);
        int const bottom = std::min((lock == kLockNone ? pixelsBottom : ownTop) / scale, height / 2);
        // "Top" counts from row 0, which is the lowest of the picture.
        kept = {left, width - right, top, height - bottom};
        PixelFromColor(solid, color);
        PixelFromColor(solidFlt, color);
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return Cleaned(x, y, source, solid); }
    FltPixel FFlt(int x, int y, KImage* source) override { return Cleaned(x, y, source, solidFlt); }

    int lock;
    int pixelsLeft, pixelsRight, pixelsTop, pixelsBottom; // of the full-sized picture
    int type;                                             // 0 solid, 1 duplicate
    KColor color;

private:
    enum Lock { kLockAll, kLockOpposite, kLockNone };

    struct Box {
        int left, right, low, high; // up to, not including, right and high
    };

    template <class Record> Record Cleaned(int x, int y, KImage const* source, Record const& fill) const
    {
        bool const isKept = kept.left <= x && x < kept.right && kept.low <= y && y < kept.high;
        if (!isKept && type == 0) return fill;
        Record pixel;
        source->GetPixel(Within(x, kept.left, kept.right), Within(y, kept.low, kept.high), pixel);
        return pixel;
    }

    /// First up to the lower bound, then down to the upper one, which wins where nothing is kept.
    static int Within(int i, int low, int high) { return std::min(std::max(i, low), high - 1); }

    Box kept;
    Pixel solid;
    FltPixel solidFlt;
};

OMBRELUNE_TOOL(BF_CleanEdges, BF_ThreadedOperator, KEffectCleanEdges);

} // namespace ombrelune
