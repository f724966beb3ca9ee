// Replace Color: shifts the channels of the colours in a soft box of a colour space, so that one range of
// colours becomes another, and blends the result in by how far each pixel lies in the box.

#include <algorithm>

#include "framework/Registration.h"
#include "host/image/PixPtr.h"
#include "image/PixelMath.h"

namespace ombrelune {

namespace {

struct SpaceChannels {
    char const* names[3];
    bool isCircular; // the first one
};

constexpr SpaceChannels kSpaces[] = {
    {{"Red", "Green", "Blue"}, false}, {{"H", "L", "S"}, true},  {{"Y", "U", "V"}, false},
    {{"Y", "I", "Q"}, false},          {{"C", "M", "Y"}, false}, {{"H", "S", "V"}, true},
    {{"X", "Y", "Z"}, false},          {{"L", "A", "B"}, false},
};

int To16(float v) { return static_cast<int>(v * 65535.0); }

/// The selected range of one channel in 16-bit units.
struct Box {
    int low, high, soft;
    int correction;
    bool isCircular;

    /// A hue range may cross 0: values beyond the window around the range's centre come round from the other
    /// side.
    int Unwrapped(int v) const
    {
        if (!isCircular) return v;
        if (v < (high + low - 65535) / 2) return v + 65535;
        return v > (high + low + 65535) / 2 ? v - 65535 : v;
    }
    /// 1 inside, falling to 0 over the softness outside.
    float Membership(int v) const
    {
        if (v >= low && v <= high) return 1.0F;
        int const reached = v < low ? v - low + soft : high + soft - v;
        return reached > 0 ? static_cast<float>(reached) / static_cast<float>(soft) : 0.0F;
    }
    std::uint32_t Corrected(int v) const
    {
        int const moved = v + correction;
        return static_cast<std::uint32_t>(isCircular ? moved & 0xffff : std::clamp(moved, 0, 65535));
    }
};

} // namespace

class KEffectReplaceColor : public KEffectThreads {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Rpl", "Replace Color",
                      "This color correcting tool replaces a certain color range with another");
    }
    static char const* Category() { return "Ombrelune\\Image Color"; }

    KEffectReplaceColor()
    {
        unsigned const affects = KF_AffectInputs, hidden = KF_Hidden, soft = KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Correction");
        parameters.AddSlider(&redCorrection,   0.0F, "Red Correction",   "CoRe"_id, 0, -1.0, 1.0);
        parameters.AddSlider(&greenCorrection, 0.0F, "Green Correction", "CoGr"_id, 0, -1.0, 1.0);
        parameters.AddSlider(&blueCorrection,  0.0F, "Blue Correction",  "CoBl"_id, 0, -1.0, 1.0);
        parameters.AddSlider(&alphaCorrection, 0.0F, "Alpha Correction", "CoAl"_id, 0, -1.0, 1.0);
        parameters.AddButton("Match source to destination", "CoMa"_id, affects);
        parameters.AddColor(&sourceColor,      KColor(), "Source Color",      "CoSR"_id, affects);
        parameters.AddColor(&destinationColor, KColor(), "Destination Color", "CoDR"_id, affects);

        parameters.AddChapter("Selection");
        parameters.AddList(&selectionType, 0, "Type", "SeTy"_id, affects, {"Around source color", "Free range"});
        parameters.AddCheckbox(&lockRange,    true, "Lock range for all channels",    "SeLR"_id, affects);
        parameters.AddCheckbox(&lockSoftness, true, "Lock Softness For All Channels", "SeLS"_id, affects);

        parameters.AddRange (&red.bounds, {0.0F, 1.0F}, "Red Low", "Red High", "SeRL"_id, "SeRH"_id, affects | hidden, 0.0, 1.0);
        parameters.AddSlider(&red.range,    0.1F, "Red Range",    "SeRR"_id, 0,             0.0, 1.0);
        parameters.AddSlider(&red.softness, 0.1F, "Red Softness", "SeRS"_id, soft | hidden, 0.0, 0.5);
        parameters.AddRange (&green.bounds, {0.0F, 1.0F}, "Green Low", "Green High", "SeGL"_id, "SeGH"_id, affects | hidden, 0.0, 1.0);
        parameters.AddSlider(&green.range,    0.1F, "Green Range",    "SeGR"_id, hidden,        0.0, 1.0);
        parameters.AddSlider(&green.softness, 0.1F, "Green Softness", "SeGS"_id, soft | hidden, 0.0, 0.5);
        parameters.AddRange (&blue.bounds, {0.0F, 1.0F}, "Blue Low", "Blue High", "SeBL"_id, "SeBH"_id, affects | hidden, 0.0, 1.0);
        parameters.AddSlider(&blue.range,    0.1F, "Blue Range",    "SeBR"_id, hidden,        0.0, 1.0);
        parameters.AddSlider(&blue.softness, 0.1F, "Blue Softness", "SeBS"_id, soft | hidden, 0.0, 0.5);

        parameters.AddSlider(&softness, 0.1F, "Softness", "SeSo"_id, soft, 0.0, 0.5);
        parameters.AddCheckbox(&invertSelection, false, "Invert Selection", "SeIn"_id, 0);
        parameters.AddList(&alphaOutput, 0, "Alpha Output", "SeAl"_id, 0, {"Processed alpha", "Selection"});
        parameters.AddButton("Set Selection Around Source Color", "SeSb"_id, affects | hidden);
        parameters.AddSlider(&selectionWidth, 0.1F, "Selection Width On Setting With Button Above", "SeWi"_id, affects | hidden, 0.0, 1.0);
        parameters.AddButton("Set Selection To Full Range", "SeFb"_id, affects);

        parameters.AddStandard(&colorSpace, 0, KPS_ColorSpace,   0);
        parameters.AddStandard(&channels,   1, KPS_ChannelsRGBA, 0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        bool const isOn = value.intValue > 0;
        switch (id) {
        // The colours are kept at once, so that a button works with the newest values.
        case "CoSR"_id: sourceColor.red = value.floatValue; break;
        case "CoSG"_id: sourceColor.green = value.floatValue; break;
        case "CoSB"_id: sourceColor.blue = value.floatValue; break;
        case "CoSA"_id: sourceColor.alpha = value.floatValue; break;
        case "CoDR"_id: destinationColor.red = value.floatValue; break;
        case "CoDG"_id: destinationColor.green = value.floatValue; break;
        case "CoDB"_id: destinationColor.blue = value.floatValue; break;
        case "CoDA"_id: destinationColor.alpha = value.floatValue; break;
        case "SeWi"_id: selectionWidth = value.floatValue; break;
        case "CoMa"_id:
            if (isOn) MatchSourceToDestination(*messages);
            break;
        case "SeSb"_id:
            if (isOn) SelectAroundSource(*messages);
            break;
        case "SeFb"_id:
            if (!isOn) break;
            SelectFullRange(*messages);
            ShowSelectionType(*messages, true);
            break;
        case "SeTy"_id: ShowSelectionType(*messages, isOn); break;
        case "SeLR"_id:
            lockRange = isOn;
            for (std::uint32_t range : {"SeGR"_id, "SeBR"_id}) messages->Show(range, !isOn);
            break;
        case "SeLS"_id:
            messages->Show("SeSo"_id, isOn);
            for (std::uint32_t own : {"SeRS"_id, "SeGS"_id, "SeBS"_id}) messages->Show(own, !isOn);
            break;
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        SetColors();
        float const centre[] = {workingSource.red, workingSource.green, workingSource.blue};
        float const corrections[] = {redCorrection, greenCorrection, blueCorrection};
        Selection const* const own[] = {&red, &green, &blue};
        for (int c = 0; c < 3; ++c) {
            float const half = lockRange ? red.range : own[c]->range;
            bool const isFree = selectionType == 1;
            boxes[c].low = To16(isFree ? own[c]->bounds.low : centre[c] - half);
            boxes[c].high = To16(isFree ? own[c]->bounds.high : centre[c] + half);
            boxes[c].soft = To16(lockSoftness ? softness : own[c]->softness);
            boxes[c].correction = To16(corrections[c]);
            boxes[c].isCircular = c == 0 && kSpaces[Space()].isCircular;
        }
        bool const corrects = redCorrection != 0.0F || greenCorrection != 0.0F || blueCorrection != 0.0F ||
                              alphaCorrection != 0.0F;
        return KEffectThreads::Init(source) && (corrects || alphaOutput != 0);
    }

    // Converted as a whole, corrected by rows, converted back as a whole, blended by rows.
    int StepCount() override { return 4; }
    int ThreadCount(int step) override { return step % 2 == 1 ? height : 1; }
    void F(int step, int chunk, KImage* source, KImage* destination) override
    {
        switch (step) {
        case 0:
            destination->CopyFrom(source);
            destination->ConvertSpace(0, Space());
            break;
        case 1: CorrectRow(destination, chunk); break;
        case 2: destination->ConvertSpace(Space(), 0); break;
        default:
            if (data.depth == 2) BlendRow<FltPixel>(source, destination, chunk);
            else BlendRow<Pixel>(source, destination, chunk);
            break;
        }
    }

    struct Selection {
        KRange bounds;
        float range, softness;
    };

    float redCorrection, greenCorrection, blueCorrection, alphaCorrection;
    KColor sourceColor, destinationColor;
    int selectionType; // 0 around the source colour, 1 free range
    bool lockRange, lockSoftness;
    Selection red, green, blue;
    float softness;
    bool invertSelection;
    int alphaOutput; // 0 processed alpha, 1 selection
    float selectionWidth;
    int colorSpace;
    int channels; // bit mask

private:
    int Space() const { return std::clamp(colorSpace, 0, 7); }

    /// The two colours in the working space.
    void SetColors()
    {
        workingSource = sourceColor;
        workingDestination = destinationColor;
        if (Space() == 0) return;
        KImage pair(2, 2, 1.0F, false);
        Pixel pixel;
        pixel.Clear();
        KColor* const colors[] = {&workingSource, &workingDestination};
        for (int x = 0; x < 2; ++x) {
            PixelFromColor(pixel, *colors[x]);
            for (int y = 0; y < 2; ++y) pair.SetPixel(x, y, pixel);
        }
        pair.ConvertSpace(0, Space());
        for (int x = 0; x < 2; ++x) {
            pair.GetPixel(x, 0, pixel);
            *colors[x] = KColor(pixel);
        }
    }

    void MatchSourceToDestination(KMessageList& messages)
    {
        SetColors();
        messages.SetValue("CoRe"_id, workingDestination.red - workingSource.red);
        messages.SetValue("CoGr"_id, workingDestination.green - workingSource.green);
        messages.SetValue("CoBl"_id, workingDestination.blue - workingSource.blue);
    }

    void SelectAroundSource(KMessageList& messages)
    {
        SetColors();
        float const centre[] = {workingSource.red, workingSource.green, workingSource.blue};
        for (int c = 0; c < 3; ++c) {
            messages.SetValue(kBoundIds[c][0], centre[c] - selectionWidth);
            messages.SetValue(kBoundIds[c][1], centre[c] + selectionWidth);
        }
    }

    void SelectFullRange(KMessageList& messages)
    {
        for (auto const& bounds : kBoundIds) {
            messages.SetValue(bounds[0], 0.0F);
            messages.SetValue(bounds[1], 1.0F);
        }
        for (std::uint32_t range : {"SeRR"_id, "SeGR"_id, "SeBR"_id}) messages.SetValue(range, 1.0F);
    }

    void ShowSelectionType(KMessageList& messages, bool isFree)
    {
        for (auto const& bounds : kBoundIds)
            for (std::uint32_t bound : bounds) messages.Show(bound, isFree);
        for (std::uint32_t shared : {"SeLR"_id, "SeRR"_id}) messages.Show(shared, !isFree);
        for (std::uint32_t own : {"SeGR"_id, "SeBR"_id}) messages.Show(own, !isFree && !lockRange);
        for (std::uint32_t setting : {"SeSb"_id, "SeWi"_id}) messages.Show(setting, isFree);
    }

    /// Corrects a row of the converted picture and leaves the selection in its alpha.
    void CorrectRow(KImage* image, int y) const
    {
        PixPtr in(image->FImage(), 0, y), out(image->FImage(), 0, y);
        Pixel pixel;
        std::uint32_t* const words[] = {&pixel.red, &pixel.green, &pixel.blue};
        for (int x = 0; x < width; ++x) {
            pixel >>= in;
            float selection = 1.0F;
            for (int c = 0; c < 3; ++c) {
                int const v = boxes[c].Unwrapped(static_cast<int>(*words[c]));
                selection *= boxes[c].Membership(v);
                *words[c] = boxes[c].Corrected(v);
            }
            if (invertSelection) selection = 1.0F - selection;
            pixel.alpha = static_cast<std::uint32_t>(std::clamp(selection * 65535.0, 0.0, 65535.0));
            out >>= pixel;
        }
    }

    // The two depths differ in their one, their product and nothing else.
    static std::uint32_t One(std::uint32_t) { return 65535; }
    static float One(float) { return 1.0F; }
    static std::uint32_t Product(std::uint32_t a, std::uint32_t b) { return ScaledProduct(a, b); }
    static float Product(float a, float b) { return a * b; }

    template <class Record> void BlendRow(KImage* source, KImage* destination, int y) const
    {
        PixPtr original(source->FImage(), 0, y);
        PixPtr in(destination->FImage(), 0, y), out(destination->FImage(), 0, y);
        Record before, pixel;
        for (int x = 0; x < width; ++x) {
            before >>= original;
            pixel >>= in;
            auto const m = pixel.alpha, rest = One(m) - m;
            for (int w : {kChannelBlue, kChannelGreen, kChannelRed})
                pixel.word[w] = Product(rest, before.word[w]) + Product(m, pixel.word[w]);
            if (alphaOutput == 0) pixel.alpha = Product(rest, before.alpha) + Product(m, m);
            out >>= channels == 0 ? before : pixel;
        }
    }

    static constexpr std::uint32_t kBoundIds[3][2] = {
        {"SeRL"_id, "SeRH"_id}, {"SeGL"_id, "SeGH"_id}, {"SeBL"_id, "SeBH"_id}};

    KColor workingSource, workingDestination;
    Box boxes[3];
};

OMBRELUNE_TOOL(BF_ReplaceColor, BF_ThreadedOperator, KEffectReplaceColor);

} // namespace ombrelune
