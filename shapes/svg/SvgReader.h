#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/value/Problem.h"
#include "shapes/KShapeGroup.h"

namespace ombrelune {

/// Shapes of an SVG document, or what is wrong with it.
struct SvgShapes {
    std::unique_ptr<KShapeGroup> group; ///< null with a problem
    std::optional<Problem> problem;     ///< with the line where it is known
    std::string leftOut = {};           ///< elements that are not read: "2 text, 1 use"
};

/// Reads the paths, basic shapes, fills, strokes and transforms of SVG 1.1 into lists of one shape each, in
/// order of painting. Shape units: the document is 1 wide with its middle at the origin, y goes up, and pens
/// count in hundredths of the width. Open paths are closed for their fill. A gradient becomes the mean of its
/// colours. Text, images, uses, clips, masks, filters and the offset of dashes are left out.
SvgShapes ReadSvg(std::string const& text);

} // namespace ombrelune
