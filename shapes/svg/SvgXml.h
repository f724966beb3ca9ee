#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "host/value/Problem.h"

namespace ombrelune {

/// What keeps a text from being read as an SVG document, with its line: it is not well-formed XML, its first
/// element is not svg, it declares entities or nests deeper than 100 elements. Counts the elements that would
/// be drawn and are not read, by their names.
std::optional<Problem> CheckSvgXml(std::string_view text, std::map<std::string, int>& leftOut);

} // namespace ombrelune
