#pragma once

#include <cstdint>
#include <functional>

#include "image/KImageRegion.h"
#include "image/ShapeArrays.h"

namespace ombrelune {

enum FillRule { kFillEvenOdd = 0, kFillNonZero = 1 };

/// Pixels to scan, each of samples by samples points. The arrays are in samples, with the origin at the lower
/// left corner of pixel 0, 0 of the region's frame; at most 255 samples.
struct ScanGrid {
    KImagePixelRegion region;
    int samples = 8;
};

/// Covered samples of the pixels lo to hi - 1 of a row; all others of the row have none. Places count from
/// the corner of the region.
using ScanRow = std::function<void(int row, int lo, int hi, std::uint16_t const* amounts)>;

/// Pixels of a frame of w by h that the outlines can reach; may be empty.
KImagePixelRegion ScanBounds(ShapeArrays const& arrays, int w, int h, int samples);

/// Counts the samples inside the outlines and calls `row` once for each row of the region, on the worker
/// threads and in any order. A point is inside where the turns of class 0 are not 0 (or odd) or those of
/// class 2 are not 0, and those of class 1 are 0: class 1 cuts holes, class 2 is always filled.
/// When `cancel` points to a number other than 0, the rows that are left are not called.
/// Method: scan line with active edges, J. Foley et al., Computer Graphics: Principles and Practice, 3.6.
/// Turns are added up in a bin for each place of a line instead of being sorted, so that a line takes time in
/// proportion to its edges however they cross; the spans are the same.
void ScanShape(ShapeArrays const& arrays, ScanGrid const& grid, FillRule rule, int* cancel,
               ScanRow const& row);

} // namespace ombrelune
