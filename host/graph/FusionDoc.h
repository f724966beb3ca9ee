#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/graph/Operator.h"
#include "host/value/FrameFormat.h"

namespace ombrelune {

/// What a group of a flow shows: inputs and outputs of tools inside it, by the names that they have outside.
struct ShownByGroup {
    std::map<std::string, Input*> inputs;
    std::map<std::string, Output*> outputs;
};

/// A document: the operators of a flow, their order, the frame format and the time that the user looks at.
class FusionDoc {
public:
    FusionDoc() = default;
    FusionDoc(FusionDoc const&) = delete;
    FusionDoc& operator=(FusionDoc const&) = delete;

    double GetCurrentTime() const { return currentTime; }

    /// Makes an operator of a registered class. The name must be free and the class one that can be made.
    Operator* AddOperator(Registry const& registry, std::string const& name, ScriptVal const& settings = {});
    /// Null when there is none.
    Operator* FindOperator(std::string_view name) const;
    std::vector<std::unique_ptr<Operator>> const& Operators() const { return operators_; }

    std::string file; ///< path of the flow, empty when it was made by the program
    FrameFormat format;
    double globalStart = 0.0, globalEnd = 0.0;
    double renderStart = 0.0, renderEnd = 0.0;
    double currentTime = 0.0;
    std::map<std::string, ShownByGroup, std::less<>> groups; ///< outermost groups of the flow

private:
    std::vector<std::unique_ptr<Operator>> operators_;
};

/// A path as the document means it: relative ones start at the folder of the flow, or at the working folder
/// when there is no flow.
std::string ResolvePath(FusionDoc const* document, std::string const& path);

/// Frame format of the document; the standard one without a document.
FrameFormat const& FormatOf(FusionDoc const* document);

} // namespace ombrelune
