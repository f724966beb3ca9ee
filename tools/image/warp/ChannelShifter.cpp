// Channel Shifter: moves the colour channels apart, for fringes, misprints and the look of old film.

#include "framework/PixelConversion.h"
#include "framework/Registration.h"

namespace ombrelune {

class KEffectChannelShifter : public KEffectPixel {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "ChS", "Channel Shifter"); }

    KEffectChannelShifter()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        parameters.AddChapter("Master");
        parameters.AddSlider(&effect, 1.0F, "Overall Effect", "ChOE"_id, KF_SoftMax, 0.0, 2.0);
        static constexpr char const* names[] = {"All", "Red", "Green", "Blue", "Alpha"};
        for (std::uint32_t i = 0; i < kShifts; ++i) {
            KString text;
            parameters.AddChapter(names[i]);
            parameters.AddScrew(&shifts[i].x, 0.0F, text.Concatenate(names[i], " Horizontal"), "ChH0"_id + i,
                                soft, -0.1, 0.1);
            parameters.AddScrew(&shifts[i].y, 0.0F, text.Concatenate(names[i], " Vertical"), "ChV0"_id + i,
                                soft, -0.1, 0.1);
        }
    }

    bool Init(KImage* source) override
    {
        if (!KEffectPixel::Init(source)) return false;
        // Parts of the width, to the right and up as seen; rows count from the bottom.
        float const across = static_cast<float>(width) * effect;
        float const rows = across * pixelAspect * (data.bottomUp ? -1.0F : 1.0F);
        bool moves = false;
        for (int i = 0; i < 4; ++i) {
            KVector2 const shift = shifts[kAll] + shifts[kRed + i];
            places[i] = {-shift.x * across, shift.y * rows};
            moves = moves || !(places[i] == KVector2());
        }
        return moves;
    }

    Pixel F(int x, int y, KImage* source) override { return RoundedPixel(FFlt(x, y, source)); }
    FltPixel FFlt(int x, int y, KImage* source) override
    {
        FltPixel result, sample;
        source->GetPixel(x, y, result);
        auto const shifted = [&](int i) -> FltPixel& {
            source->SamplePixelD(static_cast<float>(x) + places[i].x, static_cast<float>(y) + places[i].y,
                                 sample);
            return sample;
        };
        result.red = shifted(0).red;
        result.green = shifted(1).green;
        result.blue = shifted(2).blue;
        result.alpha = shifted(3).alpha;
        return result;
    }

    enum Shift { kAll, kRed, kGreen, kBlue, kAlpha };
    static constexpr int kShifts = 5;

    float effect;
    KVector2 shifts[kShifts]; // parts of the width

private:
    KVector2 places[4]; // where red, green, blue and alpha are read, in pixels from the own one
};

OMBRELUNE_TOOL(BF_ChannelShifter, BF_ThreadedOperator, KEffectChannelShifter);

} // namespace ombrelune
