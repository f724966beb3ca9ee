#pragma once

#include <optional>
#include <string>

#include "host/value/Problem.h"

namespace ombrelune {

class KShapeGroup;
struct FrameFormat;

/// Appends the group as an SVG 1.1 document of the frame's size in square pixels, so that a browser shows
/// what drawing it shows: brushes by the even-odd rule, pens as strokes, or as the area of the stroke where
/// SVG has no word for them. Colours that let through are exact on nothing; bitmaps show their colour, and
/// nothing is blurred. A point that is no number or beyond 1e6 frames is a problem.
std::optional<Problem> WriteSvg(KShapeGroup const& group, FrameFormat const& format, std::string& text);

} // namespace ombrelune
