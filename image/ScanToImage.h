#pragma once

#include "host/image/BufferPool.h"
#include "image/ChannelStyle.h"
#include "image/KImageRegion.h"

namespace ombrelune {

/// Coverage of pixels, 0 to 255. Outside its box it is 0: the box is what a shape can reach, so that a small
/// shape on a large picture costs little.
class ScanMask {
public:
    /// Takes memory for a box; contents are undefined. Where memory is out the mask is empty.
    void SetBox(KImagePixelRegion const& newBox);
    KImagePixelRegion const& Box() const { return box_; }
    std::uint8_t* Row(int row)
    {
        return reinterpret_cast<std::uint8_t*>(bytes_.get()) + static_cast<std::ptrdiff_t>(row) * box_.width;
    }
    std::uint8_t const* Row(int row) const { return const_cast<ScanMask*>(this)->Row(row); }

private:
    KImagePixelRegion box_; // places in the clip of the channel
    PooledBuffer bytes_;
};

/// Where a mask is laid and how.
struct ScanToImageData {
    ScanMask const* mask = nullptr;
    int samples = 8;          ///< with 1 any coverage is full
    KImagePixelRegion clip;   ///< of the mask in the frame
    KImagePixelRegion target; ///< of the mask in the picture that is drawn on
    int frameWidth = 0, frameHeight = 0;
    double pixelAspect = 1.0; ///< x scale over y scale
};

/// Lays a mask on a picture in one pass on the worker threads. Mode copy clears what is not covered, mode
/// merge leaves it; where coverage times opacity is m, copy writes m parts of the colour and merge adds 1 - m
/// parts of the old pixel. A style of type 1 takes the colour from its bitmap, at places that are 0 to 1 over
/// the width of the frame. Integers are worked as such unless the colour lies beyond them. Bitmaps that are
/// sampled by area need PrepareAreaSampling before.
void ScanToImage(KImage* image, ScanToImageData const& data, CombineMode mode, ChannelStyle const& style);

} // namespace ombrelune
