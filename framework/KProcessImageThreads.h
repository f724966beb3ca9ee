#pragma once

#include "framework/KEffectThreads.h"
#include "framework/KProcessImage.h"

namespace ombrelune {

/// Engine of KEffectThreads: the effect owns the meaning of chunks and steps; channels matter only for
/// skipping.
class KProcessImageThreads : public KProcessImage {
public:
    using KProcessImage::KProcessImage;
    int GetStepCount() override { return skip ? 1 : Threads()->StepCount(); }
    int GetThreadCount(int step) override { return skip ? height : Threads()->ThreadCount(step); }
    void DoThread(int chunk, int step) override
    {
        if (skip) return CopyRow(chunk);
        Threads()->F(step, chunk, source, *destination);
    }

private:
    KEffectThreads* Threads() const { return static_cast<KEffectThreads*>(effect); }
};

} // namespace ombrelune
