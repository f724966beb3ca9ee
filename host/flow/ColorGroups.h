#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/graph/Operator.h"

namespace ombrelune {

/// The inputs of one colour, which can be set together.
struct ColorGroup {
    std::string name;             ///< "Color" for ColorRed, ColorGreen, ColorBlue and ColorAlpha
    std::vector<Input*> channels; ///< red, green, blue and, mostly, alpha
};

/// The colours of an operator in order of declaration. A colour's name is its label with nothing but letters,
/// digits and underscores, up to the first "("; a name that an input or an earlier colour has gets "_1",
/// "_2".
std::vector<ColorGroup> ColorGroups(Operator const& op);

/// The channels of a colour from "#rrggbb", "#rrggbbaa" or three or four numbers with commas between, as a
/// text for each channel's input (see ValueFromText). Three channels leave alpha alone. Empty for anything
/// else.
std::vector<std::string> ColorChannels(std::string_view text);

} // namespace ombrelune
