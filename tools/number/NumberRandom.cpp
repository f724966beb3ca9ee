// Random: a number that changes with each frame, or one that wanders between the numbers of every few frames.

#include <cmath>
#include <numbers>

#include "framework/Registration.h"
#include "image/KRandom.h"

namespace ombrelune {

class KEffectNumberRandom : public KEffectNumber {
public:
    static char const* Name(KProcessNameType kind) { return NameOf(kind, "Rnd", "Random", "Random Number"); }

    KEffectNumberRandom()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Value");
        parameters.AddSlider   (&minimum, 0.0F, "Minimum value", "RaMi"_id, soft, 0.0, 1.0);
        parameters.AddSlider   (&maximum, 1.0F, "Maximum value", "RaMa"_id, soft, 0.0, 1.0);
        parameters.AddSliderInt(&seed,    1234, "Seed",          "RaSe"_id, soft, 0, 10000);
        parameters.AddCheckbox (&everyFrame, true, "New value for every field/frame", "RaEv"_id, KF_AffectInputs);
        parameters.AddSlider   (&every,   5.0F, "New value every ... frames", "RaFr"_id, KF_SoftMax, 1e-05, 25.0);
        parameters.AddList     (&interpolation, 1, "Interpolation", "RaIn"_id, 0, {"Step", "Linear", "Ease-in, Ease-out"});
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id != "RaEv"_id) return messages;
        messages->Show("RaFr"_id, value.intValue == 0);
        messages->Show("RaIn"_id, value.intValue == 0);
        return messages;
    }

    void ProcessData() override { result = minimum + Random(data.time) * (maximum - minimum); }

    float minimum, maximum;
    int seed;
    bool everyFrame;
    float every;       // frames
    int interpolation; // 0 step, 1 linear, 2 ease in and out

private:
    float Drawn(float time) const { return KRandomTimeSeed(time, static_cast<unsigned>(seed)); }
    float Random(float time) const
    {
        if (everyFrame || !(every > 0.0F)) return Drawn(time);
        float const base = time - std::fmod(time, every);
        if (interpolation == 0) return Drawn(base);
        float f = (time - base) / every;
        if (interpolation == 2) f = static_cast<float>(0.5 - std::cos(f * std::numbers::pi) * 0.5);
        return (1.0F - f) * Drawn(base) + f * Drawn(base + every);
    }
};

OMBRELUNE_TOOL(BF_NumberRandom, BF_ThreadedOperator, KEffectNumberRandom, .outputType = CLSID_DataType_Number,
               .isTimeVariant = true);

} // namespace ombrelune
