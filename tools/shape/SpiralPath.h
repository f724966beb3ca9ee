#pragma once

// The path that both spiral tools make, with the inputs for it.

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

#include "framework/KParameter.h"
#include "image/KMatrix3.h"
#include "shapes/KShape.h"

namespace ombrelune {

class SpiralPath {
public:
    static constexpr float kMostSpiralSteps = 16384.0F; // 910 turns at the default step

    void ParametersAdd(KParameterList& parameters)
    {
        unsigned const angle = KF_PreviewCentered | KF_Preview;
        // clang-format off
        parameters.AddSlider (&radiusStart, 0.1F, "RadiusStart", "RSta"_id, KF_SoftMax, 0.0, 1.0);
        parameters.AddSlider (&radiusEnd,   0.3F, "RadiusEnd",   "REnd"_id, KF_SoftMax, 0.0, 2.0);
        parameters.AddAngle  (&angleStart,   0.0F, "Angle Start", "ASta"_id, angle, KAngle_Radians);
        parameters.AddAngle  (&angleEnd,   720.0F, "Angle End",   "AEnd"_id, angle, KAngle_Radians);
        parameters.AddSlider (&angleStep, 20.0F, "Angle Step", "ASte"_id, KF_SoftMax, 0.5, 90.0);
        parameters.AddButtons(&endType, 1, "Angle End Type", "AETy"_id, 0, {"None", "Type 1", "Type 2"});
        // clang-format on
    }

    /// One open subpath. A spiral that would need more than 16384 steps stops short of its end angle.
    std::unique_ptr<KShape> Make(KVector2 const& centre) const
    {
        float const step = std::copysign(
            std::max(static_cast<float>(std::abs(angleStep) * std::numbers::pi / 180.0), 0.001F),
            angleStart > angleEnd ? -1.0F : 1.0F);
        float const count = StepCount(step);
        float const growth = count > 0.0F ? (radiusEnd - radiusStart) / count : 0.0F;

        auto path = std::make_unique<KShape>();
        float radius = radiusStart;
        KVector2 p = radius * KVector2(std::cos(-angleStart), std::sin(-angleStart));
        KMatrix3 turn;
        turn.Rotate(step);
        path->MoveTo(centre + p);
        for (int i = 0; count - 1.0 >= i; ++i) {
            radius += growth;
            p = turn * p;
            p.SetLength(radius);
            path->LineTo(centre + p);
        }
        if (endType == 0) return path;
        // The rest of a step. Without any the last point is the end: a side that is nothing but rounding
        // would turn the pen's end.
        float const rest = std::fmod(count, 1.0F);
        if (rest > 0.0F || count == 0.0F) {
            p = KMatrix3().Rotate(rest * step) * p;
            p.SetLength(endType == 1 ? radiusEnd : radius + rest * growth);
        }
        path->LineTo(centre + p);
        return path;
    }

    float radiusStart, radiusEnd;
    float angleStart, angleEnd; // radians, counted clockwise
    float angleStep;            // degrees
    int endType;                // 0 none, 1 the rest of a step to the end radius, 2 with the growth so far

private:
    /// What differs from a whole number by the rounding of the angles alone is whole.
    float StepCount(float step) const
    {
        float const count = (angleEnd - angleStart) / step, whole = std::round(count);
        float const rounding = 4.0F * 1.1920929e-7F * (std::abs(angleStart) + std::abs(angleEnd));
        return std::min(std::abs((count - whole) * step) <= rounding ? whole : count, kMostSpiralSteps);
    }
};

} // namespace ombrelune
