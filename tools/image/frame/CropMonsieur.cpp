// Crop Monsieur: a window of the picture becomes the frame, around a centre or at a corner.

#include <algorithm>
#include <cmath>

#include "framework/Registration.h"
#include "image/Saturate.h"

namespace ombrelune {

class KEffectCropMonsieur : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "CrM", "Crop Monsieur"); }

    KEffectCropMonsieur()
    {
        unsigned const affects = KF_AffectInputs, free = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Crop");
        parameters.AddButtons (&crop, kFree, "Crop", "Crop"_id, affects, {"Centered", "Free"});
        parameters.AddPoint   (&center, kMiddle, "Center", "CrCe"_id, KF_Preview | KF_Hidden, KPoint_Normal);
        parameters.AddScrewInt(&offset.x, 0, "Offset horizontal", "CrOH"_id, free, -500, 500);
        parameters.AddScrewInt(&offset.y, 0, "Offset vertical",   "CrOV"_id, free, -500, 500);
        parameters.AddScrewInt(&cropWidth,  kWidth,  "Width",  "CrWi"_id, KF_SoftMax, 1, 1000);
        parameters.AddScrewInt(&cropHeight, kHeight, "Height", "CrHe"_id, KF_SoftMax, 2, 1000);
        parameters.AddScrew   (&part.x, 1.0F, "Normalized width",  "CrNW"_id, 0, 0.0, 1.0);
        parameters.AddScrew   (&part.y, 1.0F, "Normalized height", "CrNH"_id, 0, 0.0, 1.0);
        parameters.AddButtons (&edges, 0, "Edges", "CrEd"_id, affects, {"Solid", "Wrap", "Duplicate"});
        parameters.AddColor   (&color, {0.0F, 0.0F, 0.0F, 0.0F}, "Color to extend canvas with", "CrCR"_id, 0);
        parameters.AddButton  ("Reset", "Rest"_id, affects);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "Crop"_id) messages->Show("CrCe"_id, value.intValue == kCentered);
        if (id == "CrEd"_id)
            for (std::uint32_t each : {"CrCR"_id, "CrCG"_id, "CrCB"_id, "CrCA"_id})
                messages->Show(each, value.intValue == kEdgeBlack);
        if (id == "Rest"_id) {
            messages->SetValue("Crop"_id, kFree);
            messages->SetPoint("CrCe"_id, kMiddle);
            for (std::uint32_t each : {"CrOH"_id, "CrOV"_id}) messages->SetValue(each, 0);
            messages->SetValue("CrWi"_id, kWidth);
            messages->SetValue("CrHe"_id, kHeight);
            for (std::uint32_t each : {"CrNW"_id, "CrNH"_id}) messages->SetValue(each, 1.0F);
        }
        return messages;
    }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Resize; }
    bool GetResize(int scale, int& w, int& h, float& /*xAspect*/, float& /*yAspect*/) override
    {
        int const newWidth = SideOf(cropWidth, part.x, scale), newHeight = SideOf(cropHeight, part.y, scale);
        origin = {offset.x / scale, offset.y / scale};
        if (crop == kCentered) {
            origin.x = Corner(center.x, w, newWidth, origin.x);
            origin.y = Corner(center.y, h, newHeight, origin.y);
        }
        w = newWidth;
        h = newHeight;
        return true;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        int w = width, h = height;
        float xAspect = 1.0F, yAspect = 1.0F;
        GetResize(source->Scale(), w, h, xAspect, yAspect);
        PixelFromColor(solid, color);
        PixelFromColor(solidFlt, color);
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return At(x, y, *source, solid); }
    FltPixel FFlt(int x, int y, KImage* source) override { return At(x, y, *source, solidFlt); }

    enum Crop { kCentered, kFree };

    int crop;
    KVector2 center;           // parts of the size
    KVector2i offset;          // pixels of the full-sized picture, from the lower left corner or the centre
    int cropWidth, cropHeight; // likewise
    KVector2 part;             // of that width and height
    int edges;
    KColor color;

private:
    static constexpr KVector2 kMiddle{0.5F, 0.5F};
    static constexpr int kWidth = 640, kHeight = 480;

    static int SideOf(int full, float part, int scale)
    {
        return std::max(SaturatedInt(std::lround(static_cast<double>(std::max(full / scale, 1)) * part)), 1);
    }
    static int Corner(float at, int side, int newSide, int offset)
    {
        return SaturatedInt(std::floor(double{at} * side - newSide / 2.0 + 0.5) + offset);
    }

    template <class Record> Record At(int x, int y, KImage const& source, Record const& fill) const
    {
        // What lies beyond the numbers of pixels lies outside.
        int const sx = SaturatedInt(static_cast<double>(x) + origin.x);
        int const sy = SaturatedInt(static_cast<double>(y) + origin.y);
        bool const isInside = sx >= 0 && sy >= 0 && sx < width && sy < height;
        if (!isInside && edges == kEdgeBlack) return fill;
        Record pixel;
        source.GetSample(sx, sy, pixel, edges);
        return pixel;
    }

    KVector2i origin; // of the window, in the source's pixels
    Pixel solid;
    FltPixel solidFlt;
};

OMBRELUNE_TOOL(BF_CropMonsieur, BF_ThreadedOperator, KEffectCropMonsieur);

} // namespace ombrelune
