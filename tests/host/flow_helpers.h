#pragma once

#include <gtest/gtest.h>

#include <fmt/format.h>

#include "host/flow/FlowReader.h"
#include "host/render/Renderer.h"

namespace ombrelune {

/// Problems and warnings, a line each: "f:3: text".
inline std::string Told(FlowReading const& reading)
{
    std::string told;
    for (Problem const& problem : reading.problems) told += problem.Format() + "\n";
    for (Problem const& warning : reading.warnings) told += "warning: " + warning.Format() + "\n";
    return told;
}

/// A flow that must be right, and the values of its inputs and outputs as texts.
class ReadDocument : public ExpressionScope {
public:
    explicit ReadDocument(std::string const& text) : reading_(ReadFlowText(text, "f"))
    {
        if (!reading_.document) throw std::runtime_error(Told(reading_));
        renderer_.emplace(*reading_.document, RenderQuality{});
    }
    FusionDoc& Document() { return *reading_.document; }
    FlowReading const& Reading() const { return reading_; }

    /// "Tool.Member" at a time: a number, "x,y", a text, or the problem.
    std::string At(std::string const& name, double time)
    {
        auto const dot = name.find('.');
        Operator* const op = Document().FindOperator(name.substr(0, dot));
        if (!op) return "no tool " + name;
        Input* const input = op->FindInput(name.substr(dot + 1));
        RenderResult const result =
            input ? InputAt(*input, time) : OutputAt(*op->FindOutput(name.substr(dot + 1)), time);
        if (result.problem) return result.problem->Format();
        if (auto* number = dynamic_cast<Number const*>(result.value.Get()))
            return fmt::format("{:.10g}", number->value);
        if (auto* point = dynamic_cast<Point const*>(result.value.Get()))
            return fmt::format("{:.10g},{:.10g}", point->x, point->y);
        if (auto* text = dynamic_cast<Text const*>(result.value.Get())) return text->value;
        return "nothing";
    }

    RenderResult OutputAt(Output& output, double time) override { return renderer_->Evaluate(output, time); }
    RenderResult InputAt(Input& input, double time) override
    {
        if (input.Expression()) return input.Expression()->Evaluate(*this, time);
        return input.Source() ? OutputAt(*input.Source(), time) : RenderResult{input.Value(), std::nullopt};
    }

private:
    FlowReading reading_;
    std::optional<Renderer> renderer_;
};

} // namespace ombrelune
