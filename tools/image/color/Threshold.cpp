// Threshold: compares a channel with a threshold and gives a step, a soft ramp, or a ramp that repeats; the
// result is written to all four channels, alpha included.

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <type_traits>

#include "framework/Registration.h"
#include "image/ColorVectors.h"

namespace ombrelune {

namespace {

enum TestedChannel { kTestLuminance = 4, kTestEach = 5 };

/// v in 0 to 2, mirrored at 1.
float PingPong(float v)
{
    float const folded = std::fmod(v, 2.0F);
    return folded > 1.0F ? 2.0F - folded : folded;
}

/// What a ramp of so many repeats ends at, and holds above the threshold.
float EndValue(float repeat, bool pingPong)
{
    if (pingPong) return PingPong(repeat);
    float const end = std::fmod(repeat, 1.0F);
    return end == 0.0F && repeat > 0.0F ? 1.0F : end;
}

} // namespace

class KEffectThreshold : public KEffectColor {
public:
    static char const* Name(KProcessNameType kind)
    {
        return NameOf(kind, "Thr", "Threshold", "Clips the color in reference to the threshold");
    }

    KEffectThreshold()
    {
        // clang-format off
        parameters.AddChapter("Threshold");
        parameters.AddButtons(&channel, 4, "Channel used as threshold", "ThCh"_id, 0,
                              {"Red", "Green", "Blue", "Alpha", "Lumin.", "Each"});
        parameters.AddCheckbox(&invert, false, "Invert", "Inve"_id, 0);

        parameters.AddCheckbox(&lockThreshold, true, "Lock threshold for all color channels", "ThLo"_id, KF_AffectInputs);
        parameters.AddSlider(&red.threshold,   0.5F, "Threshold",       "ThRe"_id, 0,         0.0, 1.0);
        parameters.AddSlider(&green.threshold, 0.5F, "Threshold Green", "ThGr"_id, KF_Hidden, 0.0, 1.0);
        parameters.AddSlider(&blue.threshold,  0.5F, "Threshold Blue",  "ThBl"_id, KF_Hidden, 0.0, 1.0);
        parameters.AddSlider(&alpha.threshold, 0.5F, "Threshold Alpha", "ThAl"_id, KF_Hidden, 0.0, 1.0);

        parameters.AddCheckbox(&lockSoftness, true, "Lock Softness for all color channels", "SoLo"_id, KF_AffectInputs);
        parameters.AddSlider(&red.softness,   0.0F, "Softness",       "SoRe"_id, KF_SoftMax,             0.0, 1.0);
        parameters.AddSlider(&green.softness, 0.0F, "Softness Green", "SoGr"_id, KF_SoftMax,             0.0, 1.0);
        parameters.AddSlider(&blue.softness,  0.0F, "Softness Blue",  "SoBl"_id, KF_SoftMax,             0.0, 1.0);
        parameters.AddSlider(&alpha.softness, 0.0F, "Softness Alpha", "SoAl"_id, KF_SoftMax,             0.0, 1.0);

        parameters.AddCheckbox(&lockRepeat, true, "Lock Repeat for all color channels", "ReLo"_id, KF_AffectInputs);
        parameters.AddSlider  (&red.repeat,     1.0F, "Repeat",          "ReRe"_id, KF_SoftMax,             0.0, 5.0);
        parameters.AddCheckbox(&red.pingPong,   true, "Ping-pong",       "RePR"_id, 0);
        parameters.AddSlider  (&green.repeat,   1.0F, "Repeat Green",    "ReGr"_id, KF_SoftMax | KF_Hidden, 0.0, 5.0);
        parameters.AddCheckbox(&green.pingPong, true, "Ping-pong Green", "RePG"_id, KF_Hidden);
        parameters.AddSlider  (&blue.repeat,    1.0F, "Repeat Blue",     "ReBl"_id, KF_SoftMax | KF_Hidden, 0.0, 5.0);
        parameters.AddCheckbox(&blue.pingPong,  true, "Ping-pong Blue",  "RePB"_id, KF_Hidden);
        parameters.AddSlider  (&alpha.repeat,   1.0F, "Repeat Alpha",    "ReAl"_id, KF_SoftMax | KF_Hidden, 0.0, 5.0);
        parameters.AddCheckbox(&alpha.pingPong, true, "Ping-pong Alpha", "RePA"_id, KF_Hidden);
        // clang-format on
    }

    KMessageList* AffectInputs(std::uint32_t id, KParameterValue& value) override
    {
        auto* messages = new KMessageList;
        auto const showUnlessLocked = [&](std::initializer_list<std::uint32_t> targets) {
            for (std::uint32_t target : targets) messages->Show(target, value.intValue == 0);
        };
        switch (id) {
        case "ThLo"_id: showUnlessLocked({"ThGr"_id, "ThBl"_id, "ThAl"_id}); break;
        case "SoLo"_id: showUnlessLocked({"SoGr"_id, "SoBl"_id, "SoAl"_id}); break;
        case "ReLo"_id:
            showUnlessLocked({"ReGr"_id, "ReBl"_id, "ReAl"_id, "RePG"_id, "RePB"_id, "RePA"_id});
            break;
        }
        return messages;
    }

    bool Init(KImage* source) override
    {
        ramps[0] = MakeRamp(red);
        ramps[1] = MakeRamp(green);
        ramps[2] = MakeRamp(blue);
        ramps[3] = MakeRamp(alpha);
        return KEffectColor::Init(source);
    }

    KColor32 F(KColor32 const& c) override { return KColor32(F(KColor(c))); }
    KColor F(KColor const& c) override
    {
        if (channel == kTestEach)
            return {ramps[0].At(c.red), ramps[1].At(c.green), ramps[2].At(c.blue), ramps[3].At(c.alpha)};
        float const v = channel == kTestLuminance ? c.Brightness() : c.GetChannel(channel);
        return {ramps[0].At(v), ramps[1].At(v), ramps[2].At(v), ramps[3].At(v)};
    }

    // Without softness it is one comparison a channel, by lanes.
    static constexpr bool kOwnSpan = true;
    void Span(KColor32* colors, int count) override { SpanOf<Int4>(colors, count); }
    void Span(KColor* colors, int count) override { SpanOf<Float4>(colors, count); }

    struct Curve {
        float threshold, softness, repeat;
        bool pingPong;
    };

    int channel; // 0 to 3 that channel, 4 luminance, 5 each by itself
    bool invert;
    bool lockThreshold, lockSoftness, lockRepeat;
    Curve red, green, blue, alpha; // the first stands for all where a lock is on

private:
    /// One channel's curve with all that is constant for a frame.
    struct Ramp {
        float low, high; // below it is 0, above it is the end value
        float threshold, softness, halfSoftness, repeat, endValue;
        bool pingPong, invert;

        float At(float v) const
        {
            float const result = v <= low ? 0.0F : v >= high ? endValue : Between(v);
            return invert ? 1.0F - result : result;
        }
        float Between(float v) const
        {
            float const t = repeat * (v - threshold + halfSoftness) / softness;
            return pingPong ? PingPong(t) : std::fmod(t, 1.0F);
        }
    };

    /// A ramp without softness: what lies above the threshold gets one value and the rest another.
    struct Step {
        float low, below, above;

        /// Channels as floats, or as words of a 16-bit pixel, whose lanes are always numbers.
        template <class Vector> Vector At(Float4 v) const
        {
            Float4 const zero{};
            if constexpr (std::is_same_v<Vector, Int4>)
                return Select(v > zero + low, Int4{} + static_cast<int>(Truncate16(above)),
                              Int4{} + static_cast<int>(Truncate16(below)));
            else // What is neither above nor below is not a number, and stays that.
                return Select(v > zero + low, zero + above, Select(v <= zero + low, zero + below, v));
        }
    };
    std::array<Step, 4> Steps() const
    {
        auto const step = [this](Ramp const& r) {
            return invert ? Step{r.low, 1.0F, 1.0F - r.endValue} : Step{r.low, 0.0F, r.endValue};
        };
        return {step(ramps[0]), step(ramps[1]), step(ramps[2]), step(ramps[3])};
    }
    /// One value is compared with one threshold for all four channels.
    bool IsOneForAll() const { return channel != kTestEach && lockThreshold && lockRepeat; }

    bool IsHard() const
    {
        return std::all_of(std::begin(ramps), std::end(ramps),
                           [](Ramp const& r) { return r.softness == 0.0F; });
    }

    template <class Vector, class Color> void SpanOf(Color* colors, int count)
    {
        auto const one = [this](Color const& c) { return KEffectThreshold::F(c); };
        if (!IsHard()) {
            for (int i = 0; i < count; ++i) colors[i] = one(colors[i]);
            return;
        }
        std::array<Step, 4> const steps = Steps();
        if (IsOneForAll()) {
            auto const four = [&](FourColors<Vector>& c) {
                Vector const result = steps[0].template At<Vector>(Tested(c).red);
                c = {result, result, result, result};
            };
            return ForFours(colors, count, four, one);
        }
        auto const four = [&](FourColors<Vector>& c) {
            FourColors<Float4> const v = Tested(c);
            c = {steps[0].template At<Vector>(v.red), steps[1].template At<Vector>(v.green),
                 steps[2].template At<Vector>(v.blue), steps[3].template At<Vector>(v.alpha)};
        };
        ForFours(colors, count, four, one);
    }

    /// What each channel compares with its threshold.
    FourColors<Float4> Tested(FourColors<Int4> const& c) const
    {
        return Tested(FourColors<Float4>{FloatsFrom16(c.red), FloatsFrom16(c.green), FloatsFrom16(c.blue),
                                         FloatsFrom16(c.alpha)});
    }
    FourColors<Float4> Tested(FourColors<Float4> const& c) const
    {
        auto const same = [](Float4 v) { return FourColors<Float4>{v, v, v, v}; };
        switch (channel) {
        case 0: return same(c.red);
        case 1: return same(c.green);
        case 2: return same(c.blue);
        case 3: return same(c.alpha);
        case kTestEach: return c;
        default:
            return same((Larger(Larger(c.red, c.green), c.blue) + Smaller(Smaller(c.red, c.green), c.blue)) /
                        2.0F);
        }
    }

    Ramp MakeRamp(Curve const& own) const
    {
        Ramp ramp;
        ramp.threshold = lockThreshold ? red.threshold : own.threshold;
        ramp.softness = lockSoftness ? red.softness : own.softness;
        ramp.halfSoftness = ramp.softness * 0.5F;
        ramp.low = ramp.threshold - ramp.halfSoftness;
        ramp.high = ramp.threshold + ramp.halfSoftness;
        ramp.repeat = lockRepeat ? red.repeat : own.repeat;
        ramp.pingPong = lockRepeat ? red.pingPong : own.pingPong;
        ramp.endValue = EndValue(ramp.repeat, ramp.pingPong);
        ramp.invert = invert;
        return ramp;
    }

    Ramp ramps[4];
};

OMBRELUNE_TOOL(BF_Threshold, BF_ThreadedOperator, KEffectThreshold);

} // namespace ombrelune
