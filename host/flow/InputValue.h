#pragma once

#include <string>
#include <string_view>

#include "host/graph/Input.h"
#include "host/value/Problem.h"
#include "host/value/ScriptVal.h"

namespace ombrelune {

/// A value for an input, or what is wrong with what was given. The problem's text names "Tool.Input".
struct InputValue {
    Ref<Parameter> value = {};
    std::optional<Problem> problem = {};
    std::optional<Problem> warning = {}; ///< the value was limited to the input's hard range
};

/// From a document: a number or truth value, a table of two or three numbers for a point, a text, or the name
/// of a button for a list. A number beyond the hard range is limited, with a warning.
InputValue ValueFromScript(Input const& input, ScriptVal const& given, std::string const& file);

/// From a command line, where everything is a text: "0.5", "true", "0.2,0.7", "Luminance". A number beyond
/// the hard range is a problem. A relative file name starts at the working folder.
InputValue ValueFromText(Input const& input, std::string_view text);

/// "Tool.Input", for messages.
std::string PlaceOf(Input const& input);

} // namespace ombrelune
