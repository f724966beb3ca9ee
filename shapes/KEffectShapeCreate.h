#pragma once

#include "shapes/KEffectShape.h"

namespace ombrelune {

/// An effect that makes shapes from nothing or from an image. Its tools end with the transformation and the
/// shading.
class KEffectShapeCreate : public KEffectShape {
public:
    static char const* Category() { return "Ombrelune\\Shape Create"; }
};

} // namespace ombrelune
