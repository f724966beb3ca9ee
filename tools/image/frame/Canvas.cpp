// Canvas: turns, flips and crops the frame, or lays a larger one around the picture.

#include <algorithm>
#include <utility>

#include "framework/Registration.h"

namespace ombrelune {

class KEffectCanvas : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Can", "Canvas"); }

    KEffectCanvas()
    {
        unsigned const affects = KF_AffectInputs, free = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Canvas");
        parameters.AddCheckbox(&flipX, false, "Flip Horizontal", "CaFH"_id, 0, 2);
        parameters.AddCheckbox(&flipY, false, "Flip Vertical",   "CaFV"_id, 0, 2);
        parameters.AddButtons(&rotation, 0, "Rotation", "CaRo"_id, affects, {"Do Nothing", "180°", "90° CCW", "90° CW"});
        parameters.AddButtons(&aspect,   1, "Aspect",   "CaAs"_id, affects, {"Do Nothing", "Rotate too", "Invert", "Set"});
        parameters.AddPoint(&newAspect, {1.0F, 1.0F}, "Pixel Aspect", "CaAS"_id, KF_Internal, KPoint_Normal);
        parameters.AddButtons(&crop,     0, "Crop",     "Crop"_id, affects, {"Do Nothing", "Centered", "Free"});
        parameters.AddCheckbox(&keepsAspect, false, "Maintain Aspect", "CrAs"_id, affects | KF_Hidden);
        parameters.AddScrewInt(&offset.x, 0, "Offset Horizontal", "CrOH"_id, free, -500, 500);
        parameters.AddScrewInt(&offset.y, 0, "Offset Vertical",   "CrOV"_id, free, -500, 500);
        parameters.AddScrewInt(&cropWidth,  640, "Width",  "CrWi"_id, affects | KF_SoftMax, 1, 1000);
        parameters.AddScrewInt(&cropHeight, 480, "Height", "CrHe"_id, affects | KF_SoftMax, 2, 1000);
        parameters.AddButtons(&edges, 0, "Edges", "CrEd"_id, affects | KF_Hidden, {"Solid", "Wrap", "Duplicate"});
        parameters.AddColor(&color, {0.0F, 0.0F, 0.0F, 0.0F}, "Color To Extend Canvas With", "CExR"_id, KF_Hidden | KF_MainInput);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id == "CaAs"_id) messages->Show("CaAS"_id, value.intValue == kSet);
        if (id == "Crop"_id) {
            shownCrop = value.intValue;
            for (std::uint32_t each : {"CrOH"_id, "CrOV"_id}) messages->Show(each, shownCrop == kFree);
            for (std::uint32_t each : {"CrWi"_id, "CrHe"_id, "CrAs"_id, "CrEd"_id})
                messages->Show(each, shownCrop != kWhole);
            ShowColor(*messages, shownCrop != kWhole);
        }
        if (id == "CrEd"_id) ShowColor(*messages, shownCrop != kWhole && value.intValue == 0);
        return messages;
    }

    bool GetFlag(KProcessFlag flag) override { return flag == KPF_Resize; }
    bool GetResize(int scale, int& w, int& h, float& xAspect, float& yAspect) override
    {
        bool const isQuarter = rotation == kLeft || rotation == kRight;
        if (isQuarter) std::swap(w, h);
        if (aspect == kInvert || (aspect == kRotateToo && isQuarter)) std::swap(xAspect, yAspect);
        if (aspect == kSet) {
            xAspect = std::max(newAspect.x, 1e-6F);
            yAspect = std::max(newAspect.y, 1e-6F);
        }
        origin = {0, 0};
        if (crop == kWhole) return true;
        int const croppedWidth = std::max(cropWidth / scale, 1);
        int const croppedHeight = std::max(cropHeight / scale, 1);
        if (crop == kCentered) origin = {(w - croppedWidth) / 2, (h - croppedHeight) / 2};
        else origin = {offset.x / scale, offset.y / scale};
        w = croppedWidth;
        h = croppedHeight;
        return true;
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        int w = width, h = height;
        auto xAspect = static_cast<float>(source->XScale()), yAspect = static_cast<float>(source->YScale());
        GetResize(source->Scale(), w, h, xAspect, yAspect);
        PixelFromColor(solid, color);
        PixelFromColor(solidFlt, color);
        return true;
    }

    Pixel F(int x, int y, KImage* source) override { return At(x, y, *source, solid); }
    FltPixel FFlt(int x, int y, KImage* source) override { return At(x, y, *source, solidFlt); }

    bool flipX, flipY;
    int rotation;
    int aspect;
    KVector2 newAspect;
    int crop;
    bool keepsAspect; // of the panel alone
    struct {
        int x, y;
    } offset;                  // pixels of the full-sized picture, from the lower left
    int cropWidth, cropHeight; // likewise
    int edges;
    KColor color;

private:
    enum Rotation { kUpright, kHalf, kLeft, kRight };
    enum Aspect { kKeep, kRotateToo, kInvert, kSet };
    enum Crop { kWhole, kCentered, kFree };

    template <class Record> Record At(int x, int y, KImage const& source, Record const& fill) const
    {
        int sx = x + origin.x, sy = y + origin.y;
        if (rotation == kHalf) {
            sx = width - 1 - sx;
            sy = height - 1 - sy;
        } else if (rotation == kLeft) { // rows count upwards
            sx = std::exchange(sy, height - 1 - sx);
        } else if (rotation == kRight) {
            sy = std::exchange(sx, width - 1 - sy);
        }
        if (flipX) sx = width - 1 - sx;
        if (flipY) sy = height - 1 - sy;
        bool const isInside = sx >= 0 && sy >= 0 && sx < width && sy < height;
        if (!isInside && edges == kEdgeBlack) return fill;
        Record pixel;
        source.GetSample(sx, sy, pixel, edges);
        return pixel;
    }

    static void ShowColor(KMessageList& messages, bool isShown)
    {
        for (std::uint32_t below : {0U, 11U, 16U, 17U}) messages.Show("CExR"_id - below, isShown);
    }

    int shownCrop = kWhole; // as the panel was told last
    KVector2i origin;       // of the frame, in pixels of the turned picture
    Pixel solid;
    FltPixel solidFlt;
};

OMBRELUNE_TOOL(BF_Canvas, BF_ThreadedOperator, KEffectCanvas);

} // namespace ombrelune
