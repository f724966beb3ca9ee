#pragma once

#include "framework/KProcessImage.h"

namespace ombrelune {

/// Base of the warp engines.
class KProcessImageWarp : public KProcessImage {
public:
    using KProcessImage::KProcessImage;
};

} // namespace ombrelune
