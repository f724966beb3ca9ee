#pragma once

#include <optional>

#include "host/value/Parameter.h"
#include "host/value/Problem.h"

namespace ombrelune {

/// What asking for a value gave: the value, or null when there was none, or the reason why there is none.
struct RenderResult {
    Ref<Parameter> value;
    std::optional<Problem> problem;
};

} // namespace ombrelune
