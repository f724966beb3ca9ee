#pragma once

#include <string>
#include <vector>

#include "host/graph/RenderResult.h"

namespace ombrelune {

class Input;
class Operator;
class Output;

/// Where an expression finds the values that it reads: the renderer of the frame. Both may render, and may
/// evaluate further expressions.
class ExpressionScope {
public:
    virtual ~ExpressionScope() = default;
    virtual RenderResult OutputAt(Output& output, double time) = 0;
    /// Value of an input at a time, whether it is set, connected or has an expression itself.
    virtual RenderResult InputAt(Input& input, double time) = 0;
};

/// A formula that gives an input its value at every time. May be evaluated on several threads at once; no
/// lock is held while the scope is asked.
class InputExpression {
public:
    virtual ~InputExpression() = default;
    /// Value of the input's type, or a problem that names the input.
    virtual RenderResult Evaluate(ExpressionScope& scope, double time) const = 0;
    virtual std::string const& Text() const = 0;
    /// Operators whose outputs it reads, each once.
    virtual std::vector<Operator*> const& Reads() const = 0;
    /// Inputs, of any operator, whose values it reads, each once.
    virtual std::vector<Input*> const& InputsRead() const = 0;
};

} // namespace ombrelune
