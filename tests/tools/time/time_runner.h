#pragma once

#include <map>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "framework/Registration.h"
#include "tests/framework/EffectRunner.h"

namespace ombrelune::test {

/// A tool's bare effect with its frames, run through its engine as the bridge would.
class FrameTool {
public:
    explicit FrameTool(char const* tool, bool byRows = true)
        : effect_(byRows ? FindEffectFactory(tool)->makeRowForm() : FindEffectFactory(tool)->makePlainForm()),
          image(dynamic_cast<KEffectImage&>(*effect_))
    {}

    template <class T> FrameTool& Set(std::uint32_t id, T value)
    {
        Target<T>(*effect_, id) = std::move(value);
        return *this;
    }

    /// Times that it asks for at a time; kNoFrame for an empty slot.
    std::vector<float> TimesAt(float time)
    {
        std::vector<float> times(static_cast<std::size_t>(image.GetInputTimes(0, time, nullptr)));
        image.GetInputTimes(0, time, times.data());
        return times;
    }
    /// The same without the slots that ask for nothing.
    std::vector<float> FramesAt(float time)
    {
        std::vector<float> times = TimesAt(time);
        std::erase(times, kNoFrame);
        return times;
    }

    /// Result for frames in their slots, null for a missing one; the first is the source too.
    Picture Run(std::vector<KImage*> const& frames, float time = 0.0F, KProcessImageData data = {})
    {
        data.time = time;
        data.bottomUp = true;
        data.depth = frames[0]->IsFloat() ? 2 : 1;
        for (std::size_t i = 0; i < frames.size(); ++i)
            image.SetImage(static_cast<int>(i), frames[i] ? new KImage(frames[i]->FImage(), false) : nullptr);
        return Apply(image, *frames[0], data);
    }

    /// What a change of an input shows and hides.
    std::map<std::uint32_t, bool> Shown(std::uint32_t id, int value)
    {
        KParameterValue given;
        given.intValue = value;
        given.floatValue = static_cast<float>(value);
        std::unique_ptr<KMessageList> const messages(effect_->AffectInputs(id, given));
        std::map<std::uint32_t, bool> shown;
        for (KMessage const* message : messages->Each<KMessage>())
            shown[message->target] = message->value.intValue > 0;
        return shown;
    }

private:
    std::unique_ptr<KEffect> effect_;

public:
    KEffectImage& image;
};

inline Picture Plain(int depth, KColor const& color, int width = 7, int height = 5)
{
    return MakePicture(depth, width, height, [=](int, int) { return color; });
}

inline void ExpectWords(KImage const& image, int x, int y, KColor32 const& words, int limit = 0)
{
    KColor32 const found = WordsAt(image, x, y);
    EXPECT_NEAR(found.red, words.red, limit) << x << ", " << y;
    EXPECT_NEAR(found.green, words.green, limit) << x << ", " << y;
    EXPECT_NEAR(found.blue, words.blue, limit) << x << ", " << y;
    EXPECT_NEAR(found.alpha, words.alpha, limit) << x << ", " << y;
}

} // namespace ombrelune::test
