#pragma once

#include "framework/KEffectImage.h"
#include "image/KColor.h"
#include "image/KColor32.h"

namespace ombrelune {

/// An effect that sees one colour at a time, whatever its place.
class KEffectColor : public KEffectImage {
public:
    int ProcessType() override { return KProc_Color; }

    /// The base goes through the float form and back.
    virtual KColor32 F(KColor32 const& color);
    virtual KColor F(KColor const& color) = 0;

    /// F on every colour of a run, in place. The base calls the virtual F; a registered effect calls its own
    /// F directly, and one that overrides these gives the same bytes faster.
    virtual void Span(KColor32* colors, int count)
    {
        for (int i = 0; i < count; ++i) colors[i] = F(colors[i]);
    }
    virtual void Span(KColor* colors, int count)
    {
        for (int i = 0; i < count; ++i) colors[i] = F(colors[i]);
    }

    static char const* Category() { return "Ombrelune\\Image Color"; }
};

} // namespace ombrelune
