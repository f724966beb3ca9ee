// Bounding Box: a filled rectangle around what a channel shows, as a garbage matte that follows its subject.

#include <algorithm>

#include "framework/KEffectThreads.h"
#include "framework/Registration.h"
#include "framework/RowForms.h"

namespace ombrelune {

class KEffectBoundingBox : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "BBox", "Bounding Box"); }

    KEffectBoundingBox()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax, affects = KF_AffectInputs;
        // clang-format off
        parameters.AddChapter("Bounding Box");
        parameters.AddButtonsChannel(&channel, 4, "Channel", "Chan"_id, 0);
        parameters.AddSlider (&threshold, 0.01F, "Threshold", "Thre"_id, 0, 0.0, 1.0);
        parameters.AddButtons(&lock, kLockAll, "Lock", "Lock"_id, affects, {"All Sides", "Vert./Horiz.", "None"});
        parameters.AddSlider (&left,   0.0F, "Extend Left",   kLeft,   soft, -0.05, 0.1);
        parameters.AddSlider (&right,  0.0F, "Extend Right",  kRight,  soft | KF_Hidden, -0.05, 0.1);
        parameters.AddSlider (&top,    0.0F, "Extend Top",    kTop,    soft | KF_Hidden, -0.05, 0.1);
        parameters.AddSlider (&bottom, 0.0F, "Extend Bottom", kBottom, soft | KF_Hidden, -0.05, 0.1);
        parameters.AddColor  (&color, {1.0F, 1.0F, 1.0F, 1.0F}, "Color", "ColR"_id, 0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id != "Lock"_id) return messages;
        messages->Show(kRight, value.intValue == kLockNone);
        messages->Show(kTop, value.intValue != kLockAll);
        messages->Show(kBottom, value.intValue == kLockNone);
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectThreads::Init(source)) return false;
        KVector2 low, high, unused;
        box = Box{};
        if (!source->BoundingBox(low, high, unused, channel, {threshold, 1.0F})) return true;
        float const across = static_cast<float>(width), up = across * pixelAspect; // pixels of 1 width
        auto const [l, r, t, b] = Extents();
        box = {low.x - l * across, high.x + r * across, low.y - b * up, high.y + t * up};
        return true;
    }

    int ThreadCount(int) override { return height; }
    void F(int /*step*/, int row, KImage* source, KImage* destination) override
    {
        destination->CopyLineFrom(source, row); // the auxiliary channels stay
        float const inRow = Overlap(row, box.low, box.high);
        FltPixel pixel, original;
        for (int x = 0; x < width; ++x) {
            float const cover = inRow * Overlap(x, box.left, box.right) * color.alpha;
            destination->GetPixel(x, row, pixel);
            original = pixel;
            pixel.red = color.red * cover;
            pixel.green = color.green * cover;
            pixel.blue = color.blue * cover;
            pixel.alpha = cover;
            KeepUnselected(pixel, original, data);
            destination->SetPixel(x, row, pixel);
        }
    }

    enum Lock { kLockAll, kLockPairs, kLockNone };

    int channel;
    float threshold;
    int lock;
    float left, right, top, bottom; // parts of the width
    KColor color;

private:
    static constexpr std::uint32_t kLeft = "PixL"_id, kRight = "PixR"_id, kTop = "PixT"_id,
                                   kBottom = "PixB"_id;

    /// In pixels; empty when nothing is over the threshold.
    struct Box {
        float left = 0.0F, right = 0.0F, low = 0.0F, high = 0.0F;
    };
    struct Sides {
        float left, right, top, bottom;
    };
    Sides Extents() const
    {
        if (lock == kLockAll) return {left, left, left, left};
        if (lock == kLockPairs) return {left, left, top, top};
        return {left, right, top, bottom};
    }
    /// Part of the pixel that lies between two places.
    static float Overlap(int pixel, float from, float to)
    {
        float const at = static_cast<float>(pixel);
        return std::max(std::min(at + 1.0F, to) - std::max(at, from), 0.0F);
    }

    Box box;
};

OMBRELUNE_TOOL(BF_BooundingBox, BF_ThreadedOperator, KEffectBoundingBox, .id = "BF_BoundingBox");

} // namespace ombrelune
