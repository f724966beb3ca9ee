#pragma once

#include "framework/KEffectPosition.h"
#include "framework/KProcessImage.h"

namespace ombrelune {

/// Engine of KEffectPosition: a chunk is a row. The post-multiply comes after the channel selection, unlike
/// in the colour engine.
class KProcessImagePosition : public KProcessImage {
public:
    using KProcessImage::KProcessImage;
    int GetThreadCount(int) override { return height; }
    void DoThread(int y, int) override
    {
        if (skip) return CopyRow(y);
        static_cast<KEffectPosition*>(effect)->Row(
            {source, *destination, y, width, height, frameAspect, &data});
    }
};

} // namespace ombrelune
