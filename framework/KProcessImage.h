#pragma once

#include <memory>

#include "framework/KEffectImage.h"
#include "framework/KProcess.h"

namespace ombrelune {

/// Turns one effect and one source into one destination. The constructor calls the effect's Init, and
/// Finish or the destructor its Done, so an engine's life is the span in which the effect is prepared for a
/// frame.
class KProcessImage : public KProcess {
public:
    /// @param newDestination  address of the caller's pointer; the engine may replace the image behind it
    KProcessImage(KImage* newSource, KImage** newDestination, KEffectImage* newEffect,
                  KProcessImageData const& newData);
    ~KProcessImage() override;

    void Init(int step) override;
    /// Runs all steps and chunks on this thread.
    void Process() override;
    virtual int GetStepCount() { return 1; }
    virtual int GetThreadCount(int step) = 0;
    virtual void DoThread(int chunk, int step) = 0;
    /// Ends a step; the last one applies the data's blur.
    virtual void Done(int step);
    /// Calls the effect's Done, once. The destructor does where a frame was broken off, and then lets nothing
    /// out that it throws.
    void Finish();

protected:
    void FinishQuietly() noexcept;
    /// Row of the skip path: the source as it is.
    void CopyRow(int y);

    bool initialised = false; ///< the effect's Init was called, and its Done not
    KEffectImage* effect;
    bool skip = false; ///< every row is copied and the effect is not called
    KImage* source;
    KImage** destination;
    int width = 0, height = 0;
    float frameAspect = 1.0F, pixelAspect = 1.0F;
    KProcessImageData data;
};

/// Engine for the effect's process type; null when an effect of that type is not run by an engine.
std::unique_ptr<KProcessImage> MakeEngine(KImage* source, KImage** destination, KEffectImage* effect,
                                          KProcessImageData const& data);

} // namespace ombrelune
