#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/value/Problem.h"

namespace ombrelune {

// A path whose fields stand for the frame number: a run of two or more '#', one digit each, or "%d" and
// "%04d" as in C. All fields of a path take the same frame; nothing else is special, '~' neither.

/// True when the path has a field for the frame.
bool IsPattern(std::string_view path);

/// What is wrong with a path as a pattern: one lone '#' in the file name, or a field wider than 20.
std::optional<Problem> CheckPattern(std::string const& path);

/// The path of a frame. A frame with fewer digits than its field is wide is filled with zeros; the minus of a
/// negative one takes a place, as in C. A path without fields comes back as it is.
std::string PathOfFrame(std::string_view path, int frame);

/// Frames of a sequence that are on disk, ascending: those whose PathOfFrame is the path of a file. Only
/// fields in the name of the file are followed, not those in a folder's. Empty when there are none, or the
/// folder cannot be read.
std::vector<int> FramesOnDisk(std::string const& pattern);

} // namespace ombrelune
