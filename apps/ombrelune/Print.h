#pragma once

#include "apps/ombrelune/Commands.h"
#include "host/render/Renderer.h"

namespace ombrelune::app {

/// Prints the numbers and texts of options.print, frame by frame; writes no file. An output that does not
/// exist, or gives something else, is a wrong command.
ExitStatus PrintValues(FusionDoc const& document, Renderer& renderer, std::vector<int> const& frames,
                       RenderOptions const& options);

} // namespace ombrelune::app
