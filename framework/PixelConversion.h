#pragma once

#include "host/image/Pixel.h"
#include "host/image/PixelCodec.h"

namespace ombrelune {

// How an effect that gives one form of a pixel serves the other: limited and truncated on the way to
// integers, divided on the way to floats. Only the four colour words change.

inline void ColorWordsFrom(Pixel& to, FltPixel const& from)
{
    for (int i = 0; i < 4; ++i) {
        double const scaled = from.word[i] * 65535.0;
        // Written so that NaN becomes 0.
        to.word[i] = scaled > 0.0 ? (scaled < 65535.0 ? static_cast<std::uint32_t>(scaled) : 65535U) : 0U;
    }
}

inline void ColorWordsFrom(FltPixel& to, Pixel const& from)
{
    for (int i = 0; i < 4; ++i) to.word[i] = static_cast<float>(from.word[i] / 65535.0);
}

/// For effects whose only form is that of floats: rounded, so that what they leave alone keeps its bytes.
inline Pixel RoundedPixel(FltPixel const& from)
{
    Pixel pixel;
    pixel.CopyAux(from);
    for (int i = 0; i < 4; ++i) pixel.word[i] = IntFromFloat(from.word[i]);
    return pixel;
}

} // namespace ombrelune
