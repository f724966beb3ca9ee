#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ombrelune {

/// The candidate that was most likely meant by a mistyped name, for "did you mean": the same name in another
/// case, else the least number of typing errors, at most a quarter of the name's length but one at least; the
/// first of equals. Empty when none is near. Method: optimal string alignment (Damerau-Levenshtein in which
/// no part is edited twice).
std::string NearestName(std::string_view name, std::vector<std::string> const& candidates);

/// "; did you mean 'x'?" for the end of a message, or nothing.
std::string DidYouMean(std::string_view name, std::vector<std::string> const& candidates);

} // namespace ombrelune
