#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/value/Parameter.h"
#include "host/value/Problem.h"

namespace ombrelune {

/// What one operator made for one time: a value for each output, or why there is none. Shared and never
/// changed.
struct Results {
    std::vector<Ref<Parameter>> values = {}; ///< by output index
    std::optional<Problem> problem = {};
    std::size_t bytes = 0; ///< memory that the values keep beyond that of what fed the operator
};
using SharedResults = std::shared_ptr<Results const>;

} // namespace ombrelune
