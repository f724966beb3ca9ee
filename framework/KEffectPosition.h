#pragma once

#include "framework/KEffectImage.h"

namespace ombrelune {

/// One output row of an effect that is given each source pixel with its place.
struct KPositionRow {
    KImage* source;
    KImage* destination;
    int y;
    int width, height;
    float frameAspect;
    KProcessImageData const* data;
};

/// An effect that makes a pixel from the source pixel and its place: x in 0 to 1 along the width, y in 0 to
/// 1 / frame aspect. Overrides at least one of the two forms; the base of each converts and calls the other,
/// and keeps the auxiliary channels of the source pixel.
class KEffectPosition : public KEffectImage {
public:
    int ProcessType() override { return KProc_Position; }

    virtual Pixel F(Pixel& source, KVector2& position);
    virtual FltPixel F(FltPixel& source, KVector2& position);

    /// A whole row. The base calls the virtual forms, a registered effect its own directly.
    virtual void Row(KPositionRow const& row);

    static char const* Category() { return "Ombrelune\\Image Position"; }
};

} // namespace ombrelune
