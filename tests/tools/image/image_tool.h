#pragma once

#include <map>
#include <memory>
#include <stdexcept>
#include <string_view>

#include <gtest/gtest.h>

#include "framework/Registration.h"
#include "tests/framework/EffectRunner.h"

namespace ombrelune::test {

/// A tool's bare effect with what a test sets.
class ImageTool {
public:
    explicit ImageTool(char const* tool) : effect_(FindEffectFactory(tool)->makeRowForm()) {}

    template <class T> ImageTool& Set(std::uint32_t id, T const& value)
    {
        Target<T>(*effect_, id) = value;
        return *this;
    }
    template <class T> ImageTool& Set(std::string_view label, T const& value)
    {
        for (KParameter* parameter : effect_->parameters.Each<KParameter>()) {
            if (parameter->label.String() != label) continue;
            *static_cast<T*>(parameter->target) = value;
            return *this;
        }
        throw std::logic_error("no such parameter");
    }
    ImageTool& SetSamples(int perAxis)
    {
        for (KParameter* parameter : effect_->parameters.Each<KParameter>())
            if (parameter->control == KCT_Standard && parameter->standard == KPS_SuperSample)
                *static_cast<int*>(parameter->target) = perAxis;
        return *this;
    }
    Picture On(KImage& source) { return Apply(dynamic_cast<KEffectImage&>(*effect_), source); }
    KEffect& Effect() { return *effect_; }

    /// What a change of an input does: what it shows and hides, and the labels that it gives.
    struct Changes {
        std::map<std::uint32_t, bool> shown;
        std::map<std::uint32_t, std::string> labels;
    };
    Changes Change(std::uint32_t id, int value)
    {
        KParameterValue given;
        given.floatValue = static_cast<float>(value);
        given.intValue = value;
        std::unique_ptr<KMessageList> const messages(effect_->AffectInputs(id, given));
        Changes changes;
        for (KMessage const* message : messages->Each<KMessage>()) {
            if (message->type == KMsg_Name) changes.labels[message->target] = message->value.text.String();
            else changes.shown[message->target] = message->value.intValue > 0;
        }
        return changes;
    }

private:
    std::unique_ptr<KEffect> effect_;
};

inline KColor Grey(float v) { return {v, v, v, v}; }

/// A picture of one row of greys, alpha included.
inline Picture GreyRow(int depth, std::vector<float> const& values)
{
    return MakePicture(depth, static_cast<int>(values.size()), 1,
                       [&](int x, int) { return Grey(values[static_cast<std::size_t>(x)]); });
}

inline void ExpectNear(KColor const& actual, KColor const& expected, float limit = 2e-6F)
{
    EXPECT_NEAR(actual.red, expected.red, limit);
    EXPECT_NEAR(actual.green, expected.green, limit);
    EXPECT_NEAR(actual.blue, expected.blue, limit);
    EXPECT_NEAR(actual.alpha, expected.alpha, limit);
}

} // namespace ombrelune::test
