#pragma once

#include <vector>

#include "host/graph/FusionDoc.h"
#include "host/value/Problem.h"

namespace ombrelune {

/// Every connection or expression by which an operator or an input would need itself. An operator needs all
/// of its inputs; an input needs the operator it is connected to, or what its expression reads.
std::vector<Problem> FindCycles(FusionDoc const& document);

} // namespace ombrelune
