#pragma once

#include "host/graph/Results.h"

namespace ombrelune {

/// What asking for a value gave: the value, or null when there was none, or the reason why there is none.
struct RenderResult {
    Ref<Parameter> value = {};
    std::optional<Problem> problem = {};
    SharedResults results = {}; ///< as long as this lives, asking again costs nothing
};

} // namespace ombrelune
