#pragma once

#include "host/graph/Operator.h"

namespace ombrelune {

inline constexpr char const* kBuiltinCategory = "Built-in";

/// Whether results change with the time, beyond what feeds the operator.
enum class Varies { kNo, kWithTime };

/// Attributes of an operator that comes with the host.
template <class Op>
TagList BuiltinTags(char const* name, char const* description, Varies varies = Varies::kNo)
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
            {Reg_Description, description},
            {Reg_TimeVariant, varies == Varies::kWithTime}};
}

} // namespace ombrelune
