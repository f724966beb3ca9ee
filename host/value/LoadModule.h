#pragma once

#include <optional>
#include <string>

#include "host/value/Problem.h"

namespace ombrelune {

/// The function that a module is entered by, or why there is none.
struct ModuleEntry {
    void* function = nullptr;
    std::optional<Problem> problem;
};

/// Loads a shared object that lies beside this library and stays loaded. Libraries that take long to load sit
/// behind such modules, so that only those wait who use them.
/// @param what  what cannot be had without it, for the message: "the picture library"
ModuleEntry LoadModule(char const* file, char const* entry, char const* what);

} // namespace ombrelune
