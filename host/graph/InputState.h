#pragma once

#include <limits>
#include <memory>

#include "host/value/Parameter.h"

namespace ombrelune {

class InputExpression;
class Output;

/// What an input has at one version of its document.
struct InputState {
    Ref<Parameter> value = {};                              ///< that was set, else the default
    Output* source = nullptr;                               ///< counts before a value
    std::shared_ptr<InputExpression const> expression = {}; ///< counts before both
    int priority = 0;
    bool isVisible = true;
    bool isRequired = false;
    double least = -std::numeric_limits<double>::infinity(); ///< the hard range of a number
    double most = std::numeric_limits<double>::infinity();

    /// A number that was computed, brought into the hard range; any other value as it is.
    Ref<Parameter> Limited(Ref<Parameter> computed) const;
};

} // namespace ombrelune
