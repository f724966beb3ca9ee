#pragma once

#include <memory>
#include <numbers>
#include <optional>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "framework/KEffectWarp.h"
#include "framework/Registration.h"
#include "tests/framework/EffectRunner.h"

namespace ombrelune::test {

/// What an angle's target holds for so many degrees of its input.
inline float Degrees(double degrees) { return static_cast<float>(-degrees * std::numbers::pi / 180.0); }

/// A warp on a picture of 40 x 20 pixels, whose places reach from (0, 0) to (1, 0.5). Points start at the
/// middle.
class WarpTool {
public:
    explicit WarpTool(char const* tool)
        : effect_(FindEffectFactory(tool)->makeRowForm()),
          picture_(MakePicture(kDepthFloat, 40, 20, [](int, int) { return KColor(); }))
    {
        for (KParameter* parameter : effect_->parameters.Each<KParameter>()) {
            if (parameter->control == KCT_Angle)
                *static_cast<float*>(parameter->target) = Degrees(parameter->defaultValue);
            if (parameter->control != KCT_Point) continue;
            auto& point = *static_cast<KVector2*>(parameter->target);
            if (parameter->pointType == KPoint_CenteredAspect) point = {point.x - 0.5F, (point.y - 0.5F) / 2};
            else point.y /= 2;
        }
    }

    template <class T> WarpTool& Set(std::uint32_t id, T const& value)
    {
        Target<T>(*effect_, id) = value;
        return *this;
    }
    KEffectWarp& Effect() { return dynamic_cast<KEffectWarp&>(*effect_); }
    KImage& Picture() { return *picture_; }
    bool Init() { return Effect().Init(picture_.get()); }

    /// Source of a place; nothing when it has none.
    std::optional<KVector2> At(KVector2 const& destination)
    {
        Init();
        KVector2 source = destination;
        bool const isFound = Effect().F(source, destination);
        return isFound ? std::optional(source) : std::nullopt;
    }

private:
    std::unique_ptr<KEffect> effect_;
    std::unique_ptr<KImage> picture_;
};

struct Pair {
    KVector2 destination, source;
};

inline void ExpectAt(WarpTool& tool, std::initializer_list<Pair> pairs, double limit = 1e-6)
{
    for (Pair const& pair : pairs) {
        SCOPED_TRACE(fmt::format("at {}, {}", pair.destination.x, pair.destination.y));
        auto const source = tool.At(pair.destination);
        ASSERT_TRUE(source);
        EXPECT_NEAR(source->x, pair.source.x, limit);
        EXPECT_NEAR(source->y, pair.source.y, limit);
    }
}

inline void ExpectIdentity(WarpTool& tool, double limit = 1e-6)
{
    ExpectAt(tool,
             {{{0, 0}, {0, 0}},
              {{0.3F, 0.1F}, {0.3F, 0.1F}},
              {{0.7F, 0.4F}, {0.7F, 0.4F}},
              {{1, 0.5F}, {1, 0.5F}}},
             limit);
}

} // namespace ombrelune::test
