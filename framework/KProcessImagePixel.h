#pragma once

#include "framework/KEffectPixel.h"
#include "framework/KProcessImage.h"

namespace ombrelune {

/// Engine of KEffectPixel: a chunk is a row. No super-sampling and no pre-divide, the effect has the whole
/// image.
class KProcessImagePixel : public KProcessImage {
public:
    using KProcessImage::KProcessImage;
    int GetThreadCount(int) override { return height; }
    void DoThread(int y, int) override
    {
        if (skip) return CopyRow(y);
        bool const keep = !effect->GetFlag(KPF_Source) && !data.AllChannels();
        static_cast<KEffectPixel*>(effect)->Row({source, *destination, y, &data, keep});
    }
};

} // namespace ombrelune
