#pragma once

#include <optional>
#include <string_view>

#include "host/value/Problem.h"

namespace ombrelune {

/// What keeps a text from being read as an SVG document, with its line: it is not well-formed XML, its first
/// element is not svg, it declares entities or nests deeper than 100 elements.
std::optional<Problem> CheckSvgXml(std::string_view text);

} // namespace ombrelune
