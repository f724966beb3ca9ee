#pragma once

#include "framework/KEffectImage.h"

namespace ombrelune {

/// One output row of an effect that is called per pixel and reads what it wants through the source.
struct KPixelRow {
    KImage* source;
    KImage* destination;
    int y;
    KProcessImageData const* data;
    bool keepUnselected; ///< channels that are not selected get the source's value back
};

/// An effect that makes one pixel at a time from any pixels of the source. Overrides at least one of F and
/// FFlt.
class KEffectPixel : public KEffectImage {
public:
    int ProcessType() override { return KProc_Pixel; }

    /// The base calls FFlt, limits and truncates.
    virtual Pixel F(int x, int y, KImage* source);
    /// The base calls F and divides by 65535.
    virtual FltPixel FFlt(int x, int y, KImage* source);

    /// A whole row. The base calls the virtual forms, a registered effect its own directly.
    virtual void Row(KPixelRow const& row);

    static char const* Category() { return "Ombrelune\\Image Pixel"; }
};

} // namespace ombrelune
