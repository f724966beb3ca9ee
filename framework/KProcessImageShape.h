#pragma once

#include "framework/KProcessImage.h"

namespace ombrelune {

/// An effect that draws over its source in one go.
class KEffectOverlay : public KEffectImage {
public:
    int ProcessType() override { return KProc_Shape; }

    /// Draws over the destination, which holds the source.
    virtual void Draw(KImage* destination) = 0;
};

/// Engine of KEffectOverlay: one chunk.
class KProcessImageShape : public KProcessImage {
public:
    using KProcessImage::KProcessImage;
    int GetThreadCount(int) override { return 1; }
    void DoThread(int, int) override
    {
        (*destination)->CopyFrom(source);
        if (!skip) static_cast<KEffectOverlay*>(effect)->Draw(*destination);
    }
};

} // namespace ombrelune
