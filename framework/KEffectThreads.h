#pragma once

#include "framework/KEffectImage.h"

namespace ombrelune {

/// An effect that divides its work itself: steps run one after the other, the chunks of a step at the same
/// time.
class KEffectThreads : public KEffectImage {
public:
    int ProcessType() override { return KProc_Threads; }

    virtual int StepCount() { return 1; }
    virtual int ThreadCount(int /*step*/) { return 1; }
    virtual void F(int step, int chunk, KImage* source, KImage* destination) = 0;
};

} // namespace ombrelune
