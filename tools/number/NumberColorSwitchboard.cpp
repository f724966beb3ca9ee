// Color Switcher: one of eight sets of eight colours as numbers, with the first colours of the set turned
// round and each taken from a place of its own choice.

#include <algorithm>
#include <string>

#include "framework/Registration.h"

namespace ombrelune {

namespace {

constexpr int kSets = 8, kColors = 8;

} // namespace

class KEffectNumberColorSwitchboard : public KEffectNumber {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "CSw", "Color Switcher"); }

    KEffectNumberColorSwitchboard()
    {
        parameters.AddChapter("General");
        parameters.AddSliderInt(&set, 1, "Set", "SetC"_id, 0, 1, kSets);
        parameters.AddSliderInt(&cycleRange, kColors, "Cycle Range", "SetC"_id, 0, 2, kColors);
        parameters.AddScrewInt(&cycleOffset, 0, "Cycle Offset", "Cycl"_id, KF_SoftMax, 0, kColors);
        for (int i = 0; i < kColors; ++i)
            parameters.AddSliderInt(&remap[i], i + 1, Label("Remap ", i).c_str(), Id("Rem0"_id, i), 0, 1,
                                    kColors);
        for (int s = 0; s < kSets; ++s) {
            parameters.AddChapter(Label("Set ", s).c_str());
            for (int c = 0; c < kColors; ++c) {
                float const grey = static_cast<float>(c) * 0.1F;
                std::string const label = Label("Color  ", s) + Label(" ", c);
                parameters.AddColor(&colors[s][c], {grey, grey, grey, 1.0F}, label.c_str(),
                                    Id(0x43000000, s * 65536 + c * 256), 0);
            }
        }
        for (int i = 0; i < kColors; ++i) {
            outputs.AddFloat(&chosen[i].red, Label("R ", i).c_str(), Id("CoR0"_id, i), 0);
            outputs.AddFloat(&chosen[i].green, Label("G ", i).c_str(), Id("CoG0"_id, i), 0);
            outputs.AddFloat(&chosen[i].blue, Label("B ", i).c_str(), Id("CoB0"_id, i), 0);
        }
    }

    void ProcessData() override
    {
        for (int i = 0; i < kColors; ++i) {
            // Cycling in 64 bits: the offset has no upper end.
            auto const cycled =
                static_cast<int>((i + static_cast<long long>(cycleOffset)) % std::max(cycleRange, 1));
            int const place = i < cycleRange ? cycled : i;
            chosen[i] =
                colors[std::clamp(set - 1, 0, kSets - 1)][std::clamp(remap[place] - 1, 0, kColors - 1)];
        }
        result = chosen[0].red;
    }

    int set;        // from 1
    int cycleRange; // colours that take part in the cycle
    int cycleOffset;
    int remap[kColors]; // from 1
    KColor colors[kSets][kColors];
    KColor chosen[kColors];

private:
    static std::string Label(char const* text, int index) { return text + std::to_string(index + 1); }
    static std::uint32_t Id(std::uint32_t first, int index)
    {
        return first + static_cast<std::uint32_t>(index);
    }
};

OMBRELUNE_TOOL(BF_NumberColorSwitchboard, BF_ThreadedOperator, KEffectNumberColorSwitchboard,
               .outputType = CLSID_DataType_Number);

} // namespace ombrelune
