#pragma once

#include <string>

#include <pango/pangocairo.h>

namespace ombrelune {

/// A font that is there, and what of the wish it does not meet.
struct ChosenFont {
    PangoFontDescription* description =
        nullptr; ///< without a size, owned by the caller; null when there is no font at all
    std::string otherFamily, otherStyle; ///< what stands in; empty where the wish is met
};

/// The face of a family by its name. Names are compared without case; "Regular", "Normal" and "Book" are one
/// style, and so are "Italic" and "Oblique". A family that is not there is replaced by DejaVu Sans, or else
/// by the first in the order of the alphabet, so that the choice does not hang on how fonts are configured.
ChosenFont ChooseFont(PangoFontMap* fonts, std::string const& family, std::string const& style);

} // namespace ombrelune
