#pragma once

#include <memory>

#include "image/KImage.h"

namespace ombrelune {

/// What rays start from: the picture, its edges, or a mixture of both (edges 0 to 1), within a mask if there
/// is one. Null when memory is out.
inline std::unique_ptr<KImage> MakeEdgeLight(KImage const& source, float edges, KImage const* mask)
{
    std::unique_ptr<KImage> light(edges > 0.0F ? source.SobelOf() : source.CopyOf());
    if (!light) return nullptr;
    if (edges > 0.0F) light->BlendWith(&source, 1.0F - edges);
    if (mask) light->ApplyMask(mask, false);
    return light;
}

} // namespace ombrelune
