// Extrude: gives what a matte shows a body, drawn out in one direction or towards a vanishing point, and lit.

#include <algorithm>
#include <cmath>
#include <memory>

#include "framework/PixelConversion.h"
#include "framework/Registration.h"
#include "image/KOffsets.h"
#include "tools/image/ray/HeightField.h"

namespace ombrelune {

class KEffectExtrude : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Extr", "Extrude"); }

    KEffectExtrude()
    {
        unsigned const affects = KF_AffectInputs;
        // clang-format off
        parameters.AddChapter("Extrude");
        parameters.AddButtons (&perspective, kParallel, "Perspective type", "ExPe"_id, affects, {"Parallel", "Radial"});
        parameters.AddAngle   (&angle, 45.0F, "Angle", "ExAn"_id, 0, KAngle_Radians);
        parameters.AddPoint   (&center, {0.5F, 0.5F}, "Center", "ExCe"_id, KF_Preview | KF_Hidden, KPoint_Pixels);
        parameters.AddSlider  (&length, 0.01F, "Length", "ExLe"_id, KF_SoftMax, 0.0, 0.5);
        parameters.AddButtons (&colorType, kSolid, "Color type", "ExCT"_id, affects, {"Solid", "Original"});
        parameters.AddColor   (&color, {0.5F, 0.5F, 0.5F, 1.0F}, "Color", "ExCR"_id, 0);
        parameters.AddChapter("Light");
        parameters.AddCheckbox(&isLit, true, "Use light", "ExSh"_id, affects);
        parameters.AddAngle   (&lightAngle, 45.0F, "Light angle", "ExSA"_id, 0, KAngle_Radians);
        parameters.AddSlider  (&smoothing,  0.0F, "Remove lighting detail", "ExSS"_id, KF_SoftMax, 0.0, 5.0);
        parameters.AddSlider  (&importance, 1.0F, "Importance", "ExSi"_id, 0, 0.0, 1.0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "ExPe"_id) {
            messages->Show("ExAn"_id, value.intValue == kParallel);
            messages->Show("ExCe"_id, value.intValue != kParallel);
        }
        if (id == "ExCT"_id)
            for (std::uint32_t each : {"ExCR"_id, "ExCG"_id, "ExCB"_id, "ExCA"_id})
                messages->Show(each, value.intValue == kSolid);
        if (id == "ExSh"_id)
            for (std::uint32_t each : {"ExSA"_id, "ExSS"_id, "ExSi"_id})
                messages->Show(each, value.intValue > 0);
        return messages;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source) || !(length > 0.0F)) return false;
        matte = std::make_unique<BF_HeightField>(*source, 0.0F);
        if (isLit) relief = std::make_unique<BF_HeightField>(*source, kLeastSmoothing + smoothing);
        light.SetByAngle(lightAngle, 1.0F);
        // From a pixel of the side back to the matte.
        if (perspective == kParallel)
            way = std::make_unique<KOffsets>(angle, length * static_cast<float>(width), pixelAspect, true,
                                             true);
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return RoundedPixel(FFlt(x, y, source)); }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel result;
        source->GetPixel(x, y, result);
        if (result.alpha >= 1.0F) return result;
        Side side{*source, result, std::max(result.alpha, 0.0F)};
        if (perspective == kParallel) {
            for (KOffset const& offset : way->entries)
                if (!Cover(side, x + offset.x, y + offset.y)) break;
        } else {
            WalkOutward(side, x, y);
        }
        return result;
    }

    void Done(KImage** destination) override
    {
        matte.reset();
        relief.reset();
        way.reset();
        KEffectPixel::Done(destination);
    }

    enum Perspective { kParallel, kRadial };
    enum ColorType { kSolid, kOriginal };

    int perspective;
    float angle;     // radians
    KVector2 center; // pixels; what lies behind shrinks towards it
    float length;    // parts of the width; radial, of the way to the centre
    int colorType;
    KColor color;
    bool isLit;
    float lightAngle; // radians, from where it comes
    float smoothing;  // 720ths of the width
    float importance; // 0 flat, 1 all light

private:
    static constexpr float kLeastSmoothing = 1.0F; // a hard edge has but eight slopes

    /// A pixel on its way behind the picture.
    struct Side {
        KImage const& source;
        FltPixel& pixel;
        float covered; // alpha of what lies in front
    };

    /// What the body shows of a pixel of the matte; false when nothing behind it can be seen.
    bool Cover(Side& side, int x, int y) const
    {
        if (x < 0 || y < 0 || x >= width || y >= height) return true;
        float const alpha = matte->At(x, y);
        if (!(alpha > side.covered)) return true;
        float const seen = alpha - side.covered, lit = seen * Brightness(x, y);
        FltPixel& pixel = side.pixel;
        auto const add = [&pixel](auto const& from, float weight) {
            if (!(weight > 0.0F)) return; // what is infinite has no part in the dark
            pixel.red += weight * from.red;
            pixel.green += weight * from.green;
            pixel.blue += weight * from.blue;
        };
        if (colorType == kOriginal) {
            FltPixel from;
            side.source.GetPixel(x, y, from);
            add(from, lit / alpha);
            pixel.alpha += seen;
        } else {
            add(color, lit * color.alpha);
            pixel.alpha += seen * color.alpha;
        }
        side.covered = alpha;
        return alpha < 1.0F;
    }

    /// The part of the body at a place of the picture is one of the matte that is farther from the centre.
    void WalkOutward(Side& side, int x, int y) const
    {
        float const dx = static_cast<float>(x) + 0.5F - center.x,
                    dy = static_cast<float>(y) + 0.5F - center.y;
        float const longest = std::max(std::abs(dx), std::abs(dy));
        if (!(longest > 0.0F)) return;
        float const depth = std::min(length, 0.999F);
        // No farther than to the other edge.
        float const most = static_cast<float>(width + height);
        int const steps = static_cast<int>(std::min(longest * (1.0F / (1.0F - depth) - 1.0F), most));
        float const stepX = dx / longest, stepY = dy / longest;
        float atX = static_cast<float>(x) + 0.5F, atY = static_cast<float>(y) + 0.5F;
        for (int i = 0; i < steps; ++i) {
            atX += stepX;
            atY += stepY;
            int const qx = static_cast<int>(std::floor(atX)), qy = static_cast<int>(std::floor(atY));
            if ((qx < 0 && stepX <= 0.0F) || (qy < 0 && stepY <= 0.0F) || (qx >= width && stepX >= 0.0F) ||
                (qy >= height && stepY >= 0.0F) || !Cover(side, qx, qy))
                return;
        }
    }

    float Brightness(int x, int y) const
    {
        if (!relief) return 1.0F;
        float const lit = 0.5F + 0.5F * (relief->Down(x, y) * light);
        return 1.0F + importance * (lit - 1.0F);
    }

    std::unique_ptr<BF_HeightField> matte, relief; // the relief is smoothed
    std::unique_ptr<KOffsets> way;
    KVector2 light; // towards it
};

OMBRELUNE_TOOL(BF_Extrude, BF_ThreadedOperator, KEffectExtrude);

} // namespace ombrelune
