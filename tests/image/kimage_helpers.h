#pragma once

#include <memory>

#include "image/KImage.h"
#include "tests/host/image_helpers.h"

namespace ombrelune::test {

using Owned = std::unique_ptr<KImage>;

/// Owned wrapper around seeded noise.
inline Owned NoiseImage(int width, int height, int depth, unsigned seed = 7,
                        std::initializer_list<int> auxChannels = {})
{
    return Owned(KImage::ImageFromHost(MakeNoise(width, height, depth, auxChannels, seed).Release(), true));
}

inline bool SameBytes(KImage const& a, KImage const& b)
{
    return a.SameSize(&b) && SameBytes(*a.FImage(), *b.FImage());
}

template <class Record> Record At(KImage const& image, int x, int y)
{
    Record record;
    image.GetPixel(x, y, record);
    return record;
}

} // namespace ombrelune::test
