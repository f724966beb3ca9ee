#pragma once

#include <string>

#include "host/flow/Parser.h"

namespace ombrelune {

/// The text of a value in one canonical layout: two spaces a level, a table on one line where that is no
/// longer than kLineWidth and holds no comments, texts in double quotes, the shortest digits that give the
/// same number. Entries keep their order, comments and single empty lines their places. What was written
/// reads back as the same value and is written the same way again. Numbers must be finite.
std::string WriteScript(Parsed const& parsed);

inline constexpr std::size_t kLineWidth = 110;

} // namespace ombrelune
