#pragma once

#include <cstdio>
#include <cstdlib>

namespace ombrelune {

/// Ends the run as a crash when something that must hold does not.
inline void Require(bool holds, char const* what)
{
    if (holds) return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

} // namespace ombrelune
