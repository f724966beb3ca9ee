#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "host/graph/Registry.h"

namespace ombrelune::app {

using Json = nlohmann::ordered_json;

/// All that a tool declares: class, id, name, category, description, inputs in order (label, id, kind, type,
/// default, hard and soft range, page, ...), colours that can be set together, outputs.
Json ToolJson(Registry const& registry);

/// Range of an input of ToolJson for people: "0 to 1", "0 to 2~" where the control ends but values may go on,
/// the names of buttons, or nothing.
std::string RangeText(Json const& input);

} // namespace ombrelune::app
