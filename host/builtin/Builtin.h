#pragma once

#include "host/graph/Operator.h"

namespace ombrelune {

inline constexpr char const* kBuiltinCategory = "Built-in";

/// Attributes of an operator that comes with the host.
template <class Op> TagList BuiltinTags(char const* name, char const* description)
{
    OperatorNewFunction* const make = [](Registry const* registry, ScriptVal const& settings,
                                         TagList const& tags) -> Operator* {
        return new Op(registry, settings, tags);
    };
    return {{Reg_InitFunction, Operator::RegInit},
            {Reg_CleanupFunction, Operator::RegCleanup},
            {Reg_NewFunction, make},
            {Reg_Category, kBuiltinCategory},
            {Reg_ShortName, name},
            {Reg_DisplayName, name},
            {Reg_Description, description}};
}

} // namespace ombrelune
