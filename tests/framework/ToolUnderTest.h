#pragma once

#include <map>
#include <memory>
#include <numbers>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "framework/KEffectWarp.h"
#include "framework/KProcessImage.h"
#include "framework/Registration.h"
#include "host/value/Parallel.h"
#include "tests/framework/Pictures.h"

namespace ombrelune::test {

inline KProcessImageData DataFor(KImage const& image)
{
    KProcessImageData data;
    data.depth = image.IsFloat() ? 2 : 1;
    return data;
}

/// Runs an effect over a picture through its engine, on the worker threads, as the bridge would.
inline Picture Apply(KEffectImage& effect, KImage& source, KProcessImageData const& data)
{
    KImage* destination = source.LikeOf(-1, -1, -1.0F, -1.0F);
    effect.SetData(data);
    {
        auto const engine = MakeEngine(&source, &destination, &effect, data);
        for (int step = 0; step < engine->GetStepCount(); ++step) {
            engine->Init(step);
            ParallelFor(engine->GetThreadCount(step), [&](int chunk) { engine->DoThread(chunk, step); });
            engine->Done(step);
        }
    }
    return Picture(destination);
}

inline Picture Apply(KEffectImage& effect, KImage& source) { return Apply(effect, source, DataFor(source)); }

/// Parameter of an effect by identifier; the test fails where there is none.
inline KParameter& ParameterOf(KEffect& effect, std::uint32_t id)
{
    for (KParameter* parameter : effect.parameters.Each<KParameter>())
        for (std::uint32_t each : parameter->id)
            if (each == id) return *parameter;
    throw std::logic_error("no such parameter");
}

/// The member that a parameter targets.
template <class T> T& Target(KEffect& effect, std::uint32_t id)
{
    return *static_cast<T*>(ParameterOf(effect, id).target);
}

/// What an angle's target holds for so many degrees of its input.
inline float Degrees(double degrees) { return static_cast<float>(-degrees * std::numbers::pi / 180.0); }

/// A tool's bare effect by the name of its class, with what a test sets:
/// `ToolUnderTest("BF_Invert").Set("InTy"_id, 1).On(*picture)`. Copies share the effect. What a tool does not
/// have throws.
///
/// A warp also has a picture of 40 x 20 pixels, whose places reach from (0, 0) to (1, 0.5), and its angles
/// and points stand where their inputs do.
class ToolUnderTest {
public:
    explicit ToolUnderTest(char const* tool, bool byRows = true)
        : effect_(byRows ? FindEffectFactory(tool)->makeRowForm() : FindEffectFactory(tool)->makePlainForm())
    {
        if (!dynamic_cast<KEffectWarp*>(effect_.get())) return;
        source_ = Plain(kDepthFloat, KColor(), 40, 20);
        for (KParameter* parameter : effect_->parameters.Each<KParameter>()) {
            if (parameter->control == KCT_Angle)
                *static_cast<float*>(parameter->target) = Degrees(parameter->defaultValue);
            if (parameter->control != KCT_Point) continue;
            auto& point = *static_cast<KVector2*>(parameter->target);
            if (parameter->pointType == KPoint_CenteredAspect) point = {point.x - 0.5F, (point.y - 0.5F) / 2};
            else point.y /= 2;
        }
    }

    template <class T> ToolUnderTest& Set(std::uint32_t id, T value)
    {
        Target<T>(*effect_, id) = std::move(value);
        return *this;
    }
    ToolUnderTest& Set(std::uint32_t id, char const* text) { return Set(id, std::string(text)); }
    template <class T> ToolUnderTest& Set(std::string_view label, T value)
    {
        for (KParameter* parameter : effect_->parameters.Each<KParameter>()) {
            if (parameter->label.String() != label) continue;
            *static_cast<T*>(parameter->target) = std::move(value);
            return *this;
        }
        throw std::logic_error("no such parameter");
    }
    ToolUnderTest& SetSamples(int perAxis)
    {
        for (KParameter* parameter : effect_->parameters.Each<KParameter>())
            if (parameter->control == KCT_Standard && parameter->standard == KPS_SuperSample)
                *static_cast<int*>(parameter->target) = perAxis;
        return *this;
    }

    Picture On(KImage& source) { return Apply(Image(), source); }
    /// A single colour of a float picture, or of one of 16 bits.
    KColor OfFloat(KColor const& color) { return ColorAt(*On(*Plain(kDepthFloat, color, 2, 2)), 1, 1); }
    KColor32 OfInt(KColor32 const& color)
    {
        return WordsAt(*On(*Plain(kDepthInt16, KColor(color), 2, 2)), 1, 1);
    }
    /// Result for frames in their slots, null for a missing one; the first is the source too.
    Picture On(std::vector<KImage*> const& frames, float time = 0.0F, KProcessImageData data = {})
    {
        data.time = time;
        data.bottomUp = true;
        data.depth = frames[0]->IsFloat() ? 2 : 1;
        for (std::size_t i = 0; i < frames.size(); ++i)
            Image().SetImage(static_cast<int>(i),
                             frames[i] ? new KImage(frames[i]->FImage(), false) : nullptr);
        return Apply(Image(), *frames[0], data);
    }
    /// Times that it asks for at a time; kNoFrame for an empty slot.
    std::vector<float> TimesAt(float time)
    {
        std::vector<float> times(static_cast<std::size_t>(Image().GetInputTimes(0, time, nullptr)));
        Image().GetInputTimes(0, time, times.data());
        return times;
    }
    /// The same without the slots that ask for nothing.
    std::vector<float> FramesAt(float time)
    {
        std::vector<float> times = TimesAt(time);
        std::erase(times, kNoFrame);
        return times;
    }

    std::string TextAt(float time) { return Run(time), dynamic_cast<KEffectText&>(*effect_).result; }
    float NumberAt(float time) { return Run(time), dynamic_cast<KEffectNumber&>(*effect_).result; }

    bool Init() { return Image().Init(source_.get()); }
    /// Source of a place of a warp; nothing when it has none.
    std::optional<KVector2> At(KVector2 const& destination)
    {
        Init();
        KVector2 source = destination;
        bool const isFound = Warp().F(source, destination);
        return isFound ? std::optional(source) : std::nullopt;
    }

    /// What an artist's change of an input makes of others: "shown", "hidden", a label, both as "shown,
    /// Label", or
    /// "= 7".
    std::map<std::uint32_t, std::string> Change(std::uint32_t id, int value)
    {
        KParameterValue given;
        given.floatValue = static_cast<float>(value);
        given.intValue = value;
        std::unique_ptr<KMessageList> const messages(effect_->AffectInputs(id, given));
        std::map<std::uint32_t, std::string> told;
        for (KMessage const* message : messages->Each<KMessage>()) {
            ParameterOf(*effect_, message->target);
            std::string& text = told[message->target];
            if (message->type == KMsg_Name)
                text += (text.empty() ? "" : ", ") + std::string(message->value.text.String());
            else if (message->type == KMsg_Value) text = fmt::format("= {}", message->value.intValue);
            else text = message->value.intValue > 0 ? "shown" : "hidden";
        }
        return told;
    }

    KEffect& Effect() { return *effect_; }
    KEffectWarp& Warp() { return dynamic_cast<KEffectWarp&>(*effect_); }
    KEffectImage& Image() { return dynamic_cast<KEffectImage&>(*effect_); }
    KImage& Source() { return *source_; }

private:
    void Run(float time)
    {
        KProcessImageData data;
        data.time = time;
        effect_->SetData(data);
        effect_->ProcessData();
    }
    std::shared_ptr<KEffect> effect_;
    std::shared_ptr<KImage> source_;
};

/// Runs a tool that makes a picture of another size.
inline Picture Resized(ToolUnderTest& tool, KImage& source, int scale = 1)
{
    int w = source.Width(), h = source.Height();
    float xs = 1.0F, ys = 1.0F;
    tool.Image().GetResize(scale, w, h, xs, ys);
    KImage* destination = source.LikeOf(w, h, xs, ys);
    auto const engine = MakeEngine(&source, &destination, &tool.Image(), DataFor(source));
    engine->Process();
    engine->Finish();
    return Picture(destination);
}

} // namespace ombrelune::test
