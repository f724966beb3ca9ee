#pragma once

#include <string>
#include <vector>

#include "host/value/BezierCurve.h"
#include "host/value/Problem.h"
#include "host/value/ScriptVal.h"

namespace ombrelune {

/// A curve read from a flow; empty when there are problems.
struct KeyFrames {
    BezierCurve curve = {};
    std::vector<Problem> problems = {}, warnings = {};
};

/// Reads the field KeyFrames of a table. Its keys are times, or places of 0 to 1 for a look-up table:
///
///     [0] = { 0.2, LH = { -3, 0.2 }, RH = { 8, 0.33 }, Flags = { Linear = true } }
///
/// holds the value 0.2 with the handles towards the key before and after, which are absolute positions. A
/// handle that is missing lies a third of the way along the straight line. Linear makes the segment from this
/// key to the next straight. [0] = 0.2 is a key without handles.
/// @param place  whose keys these are, for messages: "Size1" or "Curve1.Red"
KeyFrames ReadKeyFrames(ScriptVal const& table, std::string const& place, std::string const& file);

} // namespace ombrelune
