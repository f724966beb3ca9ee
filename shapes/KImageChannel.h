#pragma once

#include "image/KImage.h"
#include "image/ScanConverter.h"
#include "image/ScanToImage.h"

namespace ombrelune {

class KShape;
struct KFillStyle;

/// Coverage of one shape, on its way to an image. Shape units: the frame is 1 wide, its lower left corner is
/// the origin. Belongs to one thread.
class KImageChannel {
public:
    /// @param samples   per side of a pixel, 1 to 255
    /// @param clip      part of the frame to work on; null for all of it
    /// @param allocate  keep a mask; without one only SimpleShapeFill draws
    KImageChannel(KImage* image, int samples, KImageRegion const* clip, bool allocate);

    void SetStyleFill(KFillStyle const* style);
    /// Makes the shape's coverage the mask. A rule of 0 even-odd or 1 non-zero replaces the one of the style;
    /// open subpaths count as closed. When `cancel` points to a number that becomes other than 0, the rest of
    /// the mask stays clear.
    void ShapeFill(KShape const* shape, int rule, int* cancel = nullptr);
    /// Writes the shape's coverage, or what it lacks to 1, into the alpha of the clip at once. A shape
    /// without points clears the clip, inverted with an alpha of 1.
    void SimpleShapeFill(KShape const* shape, bool invert, int rule, int* cancel = nullptr);

    /// Lays the mask on the image, blurred when the style says so. Blur sizes are 720ths of the frame's
    /// width. A bitmap's style without bitmap becomes a colour's. Nothing for a clip of one row or column.
    void PutToImage(CombineMode mode, ChannelStyle& style);
    /// One pass of the mask without blur. The region of the target has the clip's size.
    void GenerateChannelMask(KImage* target, KImagePixelRegion const& region, CombineMode mode,
                             ChannelStyle const& style) const;
    /// The mask, times 256, into the alpha of the clip; all else of the pixels stays.
    void CopyToAlpha() const;

private:
    void SetRule(int rule);
    ShapeArrays Convert(KShape const& shape) const;
    ShapeArrays ConvertClosed(KShape const* shape) const;
    void PutBlurred(CombineMode mode, ChannelStyle const& style) const;
    void GenerateChannelMask(ScanMask const& coverage, int samples, KImage* target,
                             KImagePixelRegion const& region, CombineMode mode,
                             ChannelStyle const& style) const;
    /// Calls change(pixel, x) for the pixels of a row of the clip.
    template <class Change> void ForRow(int row, Change const& change) const;

    KImage* image_;
    bool hasMask_;
    KImagePixelRegion clip_;
    int samples_;
    double aspect_; // of a pixel
    FillRule fillRule_ = kFillEvenOdd;
    ScanMask mask_;
};

} // namespace ombrelune
