// Any bytes as an expression, beside tools that it may read; the same result on every run.

#include "fuzz/Require.h"
#include "host/flow/Expression.h"
#include "host/flow/FlowReader.h"

using namespace ombrelune;

namespace {

class Scope : public ExpressionScope {
public:
    RenderResult OutputAt(Output&, double time) override { return {MakeRef<Point>(time, 0.5), std::nullopt}; }
    RenderResult InputAt(Input& input, double) override { return {input.Value(), std::nullopt}; }
};

class Tools : public ToolNames {
public:
    explicit Tools(FusionDoc const& document) : document_(document) {}
    std::vector<std::string> All() const override { return {"A", "Text"}; }
    bool Has(std::string const& tool) const override { return document_.FindOperator(tool) != nullptr; }
    Readable Member(std::string const& tool, std::string const& member) const override
    {
        Operator const& op = *document_.FindOperator(tool);
        if (Input* const input = op.FindInput(member)) return input;
        if (Output* const output = op.FindOutput(member)) return output;
        return "nothing";
    }

private:
    FusionDoc const& document_;
};

std::string Shown(RenderResult const& result)
{
    if (result.problem) return result.problem->Format();
    if (auto const* number = dynamic_cast<Number const*>(result.value.Get()))
        return std::to_string(number->value);
    auto const* text = dynamic_cast<Text const*>(result.value.Get());
    return text ? text->value : "";
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static FlowReading const reading = ReadFlowText(
        "{ Tools = { A = XYPath { Inputs = { X = 3 } }, Text = Loader { Inputs = { Filename = \"t\" } } } }",
        "");
    static Tools const tools(*reading.document);
    std::string const text(reinterpret_cast<char const*>(data), size);
    Scope scope;
    for (Input* input : {reading.document->FindOperator("A")->FindInput("Y"),
                         reading.document->FindOperator("Text")->FindInput("Filename")}) {
        ReadExpression const read = CompileExpression(*input, text, tools, "f", 1);
        Require(!read.expression == !read.problems.empty(), "there is an expression or a problem");
        if (!read.expression) continue;
        RenderResult const result = read.expression->Evaluate(scope, 2.5);
        Require(result.problem || result.value, "there is a value or a problem");
        Require(Shown(result) == Shown(read.expression->Evaluate(scope, 2.5)), "two runs give the same");
    }
    return 0;
}
