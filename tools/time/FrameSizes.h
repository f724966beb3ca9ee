#pragma once

#include <memory>

#include "framework/KEffectImage.h"

namespace ombrelune {

/// Brings the frames of an effect to the size of its source, so that every pixel of it is there in each.
inline void FitFrames(KEffectImage& effect)
{
    for (std::unique_ptr<KImage>& frame : effect.images)
        if (frame && (frame->Width() != effect.width || frame->Height() != effect.height))
            frame.reset(frame->ResizeOf(effect.width, effect.height));
}

} // namespace ombrelune
