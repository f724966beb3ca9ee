// Beat: a pulse that repeats with each beat of a music: up to the maximum, down to the sustain value, held,
// and down to the minimum. Between the end of a pulse and the next beat it gives 0.

#include <algorithm>
#include <cmath>

#include "framework/Registration.h"

namespace ombrelune {

class KEffectNumberBeat : public KEffectNumber {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Beat", "Beat", "Pulse your animation in sync with the beat of your music");
    }

    KEffectNumberBeat()
    {
        unsigned const soft = KF_SoftMin | KF_SoftMax;
        // clang-format off
        parameters.AddChapter("Beat");
        parameters.AddButtons (&rateType, 0, "Rate type", "Type"_id, KF_AffectInputs, {"Frames/beat", "Beats/Minute (BPM)"});
        parameters.AddScrew   (&frequency,       10.0F,   "Frequency",         "TiFr"_id, KF_SoftMax, 0.0,    100.0);
        parameters.AddScrew   (&beatsPerMinute,  120.0F,  "Beats per Minute",  "TBPM"_id, KF_SoftMax, 0.0001, 240.0);
        parameters.AddScrew   (&framesPerSecond, 25.0F,   "Frames per Second", "TFPS"_id, KF_SoftMax, 0.0001, 30.0);
        parameters.AddScrew   (&start,           0.0F,    "Start time",        "TiSt"_id, soft, 0.0, 100.0);
        parameters.AddScrew   (&end,             1000.0F, "End time",          "TiEn"_id, soft, 0.0, 1000.0);
        parameters.AddCheckbox(&roundEnd, true, "Round end time to full beat cycle", "TiER"_id, 0);
        parameters.AddScrew   (&attack,  2.0F, "Attack time",  "TiAt"_id, soft, 0.0, 10.0);
        parameters.AddScrew   (&decay,   2.0F, "Decay time",   "TiDe"_id, soft, 0.0, 10.0);
        parameters.AddScrew   (&sustain, 2.0F, "Sustain time", "TiSu"_id, soft, 0.0, 10.0);
        parameters.AddScrew   (&release, 2.0F, "Release time", "TiRe"_id, soft, 0.0, 10.0);
        // Has no effect: the pulse is made of straight lines.
        parameters.AddButtons (&interpolation, 1, "Interpolation", "RaIn"_id, 0, {"Linear", "Ease-in, Ease-out"});

        parameters.AddChapter("Output value");
        parameters.AddSlider  (&maximum,      1.0F, "Maximum value", "VaMa"_id, soft, 0.0, 1.0);
        parameters.AddSlider  (&sustainValue, 0.5F, "Sustain value", "VaSu"_id, soft, 0.0, 1.0);
        parameters.AddSlider  (&minimum,      0.0F, "Minimum value", "VaMi"_id, soft, 0.0, 1.0);
        parameters.AddButtons (&combineType, 0, "How to combine value below", "VaCT"_id, 0, {"Add", "Multiply", "Maximum", "Minimum"});
        parameters.AddScrew   (&combineValue, 0.0F, "Combine value, connect to another Beat or so)", "VaCo"_id, soft, 0.0, 1.0);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        if (id != "Type"_id) return messages;
        bool const isByFrames = value.intValue == 0;
        messages->Show("TiFr"_id, isByFrames);
        messages->Show("TBPM"_id, !isByFrames);
        messages->Show("TFPS"_id, !isByFrames);
        return messages;
    }

    void ProcessData() override
    {
        float const v = Pulse(data.time);
        switch (combineType) {
        case 0: result = combineValue + v; break;
        case 1: result = combineValue * v; break;
        case 2: result = std::max(combineValue, v); break;
        default: result = std::min(combineValue, v); break;
        }
    }

    int rateType;    // 0 frames a beat, 1 beats a minute
    float frequency; // frames a beat
    float beatsPerMinute, framesPerSecond;
    float start, end;
    bool roundEnd;
    float attack, decay, sustain, release; // lengths in frames
    int interpolation;
    float maximum, sustainValue, minimum;
    int combineType;
    float combineValue;

private:
    float Pulse(float time) const
    {
        float const beat = rateType == 1 ? framesPerSecond * 60.0F / beatsPerMinute : frequency;
        if (!(beat > 0.0F)) return 0.0F;
        float last = end;
        if (roundEnd) {
            float n = (end - start) / beat;
            if (n != std::trunc(n)) n = std::trunc(n) + 1.0F;
            last = start + n * beat;
        }
        if (time - start < 0.0F || time > last) return 0.0F;

        float const p = std::fmod(time - start, beat);
        if (p <= attack && attack > 0.0F) return minimum + (maximum - minimum) * p / attack;
        if (p < attack + decay && decay > 0.0F)
            return maximum + (sustainValue - maximum) * (p - attack) / decay;
        if (p < attack + decay + sustain) return sustainValue;
        if (p < attack + decay + sustain + release && release > 0.0F)
            return sustainValue + (minimum - sustainValue) * (p - attack - decay - sustain) / release;
        return 0.0F;
    }
};

OMBRELUNE_TOOL(BF_NumberBeat, BF_ThreadedOperator, KEffectNumberBeat, .outputType = CLSID_DataType_Number,
               .isTimeVariant = true);

} // namespace ombrelune
