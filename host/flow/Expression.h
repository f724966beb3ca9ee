#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/flow/ExpressionReads.h"
#include "host/graph/InputExpression.h"

namespace ombrelune {

/// An expression that was read, or what is wrong with it.
struct ReadExpression {
    std::unique_ptr<InputExpression> expression = {};
    std::vector<Problem> problems = {};
};

/// Compiles the expression of an input (see LuaSandbox for what it can say). Its results are converted as the
/// values of a flow are, and limited to the input's hard range.
/// @param line  of the text, for messages
ReadExpression CompileExpression(Input& input, std::string const& text, ToolNames const& tools,
                                 std::string const& file, int line);

} // namespace ombrelune
