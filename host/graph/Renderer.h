#pragma once

#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "host/graph/FusionDoc.h"
#include "host/graph/RenderResult.h"

namespace ombrelune {

/// Pulls results out of a document: asking an output for a time makes a request, whose inputs are gathered by
/// priority and in their slots before the operator processes it. An operator works on one request at a time.
class Renderer {
public:
    Renderer(FusionDoc& document, RenderQuality quality) : document_(document), quality_(quality) {}

    /// Tells every operator that a job over these frames begins.
    void Start(double first, double last);
    /// Value of an output at a time. Results are kept until NewFrame, so that a node that feeds two others
    /// works once.
    RenderResult Evaluate(Output& output, double time);
    /// Processes an operator for what it does rather than what it gives, such as writing a file.
    std::optional<Problem> Run(Operator& op, double time);
    /// Runs the pre-calculation pass of one operator: numbers, texts and points are there, pictures are not.
    void PreCalc(Operator& op, double time);
    void NewFrame() { results_.clear(); }

private:
    struct Results {
        std::vector<Ref<Parameter>> values; // by output index
        std::optional<Problem> problem;
    };
    Results const& Render(Operator& op, double time);
    Results Make(Operator& op, double time);
    Results MakeField(Operator& op, double time, int fieldCount, int fieldNumber);
    void Gather(Request& request, int priority);
    void Fetch(Request& request, Input& input);
    /// Value of an input at a time. Expressions that read each other nest to kMostExpressions.
    RenderResult ValueOf(Input& input, double time, int depth);
    class Scope;
    Results PassThrough(Operator& op, double time);

    FusionDoc& document_;
    RenderQuality quality_;
    std::map<std::pair<Operator*, double>, Results> results_;
    std::set<std::pair<Operator*, double>> underWay_;
};

} // namespace ombrelune
