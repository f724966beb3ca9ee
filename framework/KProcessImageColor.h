#pragma once

#include "framework/KEffectColor.h"
#include "framework/KProcessImage.h"

namespace ombrelune {

/// Engine of KEffectColor: a chunk is a row, colours go to the effect in runs. The post-multiply comes before
/// the channel selection.
class KProcessImageColor : public KProcessImage {
public:
    using KProcessImage::KProcessImage;
    int GetThreadCount(int) override { return source->Height(); }
    void DoThread(int y, int step) override;

private:
    template <class Record, class Color> void PlainRow(int y);
    template <class Record, class Color> void Row(int y);
    template <class Record, class Color> void SuperSampledRow(int y);
};

} // namespace ombrelune
