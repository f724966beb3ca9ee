#pragma once

#include "framework/KEffectImage.h"

namespace ombrelune {

/// An effect that tells for each place of the output where in the source it comes from. Places are x in 0 to
/// 1 along the width, y in 0 to 1 / frame aspect.
class KEffectWarp : public KEffectImage {
public:
    int ProcessType() override { return KProc_Warp; }

    /// False when the destination has no source. `source` holds the destination on entry.
    virtual bool F(KVector2& source, KVector2 const& destination) = 0;

    /// F on a run of places. The base calls the virtual F, a registered effect its own directly.
    virtual void Span(KVector2* sources, bool* found, KVector2 const* destinations, int count)
    {
        for (int i = 0; i < count; ++i) {
            sources[i] = destinations[i];
            found[i] = F(sources[i], destinations[i]);
        }
    }

    static char const* Category() { return "Ombrelune\\Image Warp"; }
};

} // namespace ombrelune
