// Values of inputs: an expression, one that reads others, a spline. Time for one value.

#include <benchmark/benchmark.h>

#include "host/flow/FlowReader.h"
#include "host/render/Renderer.h"

namespace ombrelune {
namespace {

char const* const kFlow = R"flow({ Tools = {
    A = XYPath { Inputs = { X = Input { Expression = "0.5 + sin(time / 10)" } } },
    B = XYPath { Inputs = { X = Input { Expression = "A.X * A.Y + time" }, Y = 3 } } } })flow";

/// Values as the renderer reads them, without operators around.
class Scope : public ExpressionScope {
public:
    RenderResult OutputAt(Output&, double) override { return {MakeRef<Number>(0.0), std::nullopt}; }
    RenderResult InputAt(Input& input, double time) override
    {
        if (input.Expression()) return input.Expression()->Evaluate(*this, time);
        return {input.Value(), std::nullopt};
    }
};

void Expression(benchmark::State& state, char const* tool)
{
    FlowReading const reading = ReadFlowText(kFlow, "flow");
    Input& input = *reading.document->FindOperator(tool)->FindInput("X");
    Scope scope;
    double time = 0.0;
    for (auto _ : state) benchmark::DoNotOptimize(scope.InputAt(input, time += 0.5));
}
BENCHMARK_CAPTURE(Expression, alone, "A");
BENCHMARK_CAPTURE(Expression, reads_an_expression_and_a_value, "B");

void ReadingAnExpression(benchmark::State& state)
{
    for (auto _ : state) benchmark::DoNotOptimize(ReadFlowText(kFlow, "flow").document);
}
BENCHMARK(ReadingAnExpression);

void Curve(benchmark::State& state)
{
    BezierCurve const curve{
        {{.x = 0, .y = 0, .rightX = 30, .rightY = 0}, {.x = 100, .y = 1, .leftX = 90, .leftY = 1}}};
    double time = 0.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(curve.Evaluate(time));
        time = time < 99.0 ? time + 0.37 : 0.0;
    }
}
BENCHMARK(Curve);

} // namespace
} // namespace ombrelune
