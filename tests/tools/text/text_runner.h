#pragma once

#include <memory>
#include <utility>

#include <gtest/gtest.h>

#include "framework/Registration.h"
#include "tests/framework/EffectRunner.h"

namespace ombrelune::test {

/// A tool's bare effect, to be set and run at a time.
class ValueTool {
public:
    explicit ValueTool(char const* tool) : effect_(FindEffectFactory(tool)->makeRowForm()) {}

    template <class T> ValueTool& Set(std::uint32_t id, T value)
    {
        Target<T>(*effect_, id) = std::move(value);
        return *this;
    }
    ValueTool& Set(std::uint32_t id, char const* text) { return Set(id, std::string(text)); }

    std::string TextAt(float time) { return Run(time), dynamic_cast<KEffectText&>(*effect_).result; }
    float NumberAt(float time) { return Run(time), dynamic_cast<KEffectNumber&>(*effect_).result; }
    KEffect& Effect() { return *effect_; }

private:
    void Run(float time)
    {
        KProcessImageData data;
        data.time = time;
        effect_->SetData(data);
        effect_->ProcessData();
    }
    std::shared_ptr<KEffect> effect_;
};

} // namespace ombrelune::test
