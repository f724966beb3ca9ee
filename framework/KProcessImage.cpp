#include "framework/KProcessImage.h"

#include <utility>

#include "framework/KProcessImageColor.h"
#include "framework/KProcessImageInverse.h"
#include "framework/KProcessImagePixel.h"
#include "framework/KProcessImagePosition.h"
#include "framework/KProcessImageShape.h"
#include "framework/KProcessImageThreads.h"
#include "host/value/Parallel.h"

namespace ombrelune {

KProcessImage::KProcessImage(KImage* newSource, KImage** newDestination, KEffectImage* newEffect,
                             KProcessImageData const& newData)
    : effect(newEffect), source(newSource), destination(newDestination), data(newData)
{
    if (KImage const* image = *destination) {
        width = image->Width();
        height = image->Height();
        frameAspect = image->FrameAspect();
        pixelAspect = image->PixelAspect();
    }
    if (!data.AnyChannel()) {
        skip = true;
        return;
    }
    initialised = true; // a failed Init is followed by Done too
    try {
        skip = !effect->Init(source);
    } catch (...) {
        FinishQuietly(); // there will be no destructor
        throw;
    }
}

KProcessImage::~KProcessImage() { FinishQuietly(); }

void KProcessImage::Finish()
{
    if (std::exchange(initialised, false)) effect->Done(destination);
}

void KProcessImage::FinishQuietly() noexcept
{
    try {
        Finish();
    } catch (...) {
        // The frame has failed, and whatever broke it off tells why.
    }
}

void KProcessImage::Init(int) {}

void KProcessImage::Process()
{
    for (int step = 0; step < GetStepCount(); ++step) {
        Init(step);
        for (int chunk = 0; chunk < GetThreadCount(step); ++chunk) {
            ThrowIfStopped();
            DoThread(chunk, step);
        }
        Done(step);
    }
}

void KProcessImage::Done(int step)
{
    if (step != GetStepCount() - 1 || !(data.blur > 0.0F)) return;
    int channels = 0;
    for (int i = 0; i < 4; ++i) channels |= data.channels[i] ? 1 << i : 0;
    int const filter = data.quick ? kBlurBox : kBlurGaussian;
    KImage::ImageReplace(destination,
                         (*destination)->BlurOf(data.blur, data.blur, filter, channels, 1.0, 1.0));
}

void KProcessImage::CopyRow(int y) { (*destination)->CopyLineFrom(source, y); }

std::unique_ptr<KProcessImage> MakeEngine(KImage* source, KImage** destination, KEffectImage* effect,
                                          KProcessImageData const& data)
{
    switch (effect->ProcessType()) {
    case KProc_Color: return std::make_unique<KProcessImageColor>(source, destination, effect, data);
    case KProc_Warp: return std::make_unique<KProcessImageInverse>(source, destination, effect, data);
    case KProc_Pixel: return std::make_unique<KProcessImagePixel>(source, destination, effect, data);
    case KProc_Position: return std::make_unique<KProcessImagePosition>(source, destination, effect, data);
    case KProc_Shape: return std::make_unique<KProcessImageShape>(source, destination, effect, data);
    case KProc_Threads: return std::make_unique<KProcessImageThreads>(source, destination, effect, data);
    default: return nullptr;
    }
}

} // namespace ombrelune
