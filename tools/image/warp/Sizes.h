#pragma once

#include <algorithm>

namespace ombrelune {

/// A size that may be divided by: at least 1e-7, also for what is not a number.
inline float AboveZero(float size) { return std::max(1e-07F, size); }

} // namespace ombrelune
