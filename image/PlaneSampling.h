#pragma once

#include "image/KImage.h"
#include "image/KMatrix4.h"

namespace ombrelune {

enum SuperSamplingType { kSampleNearest = 0, kSampleInterpolated = 1, kSampleArea = 2 };

/// Colour of an image on a plane seen through a matrix from parts of the size (0 to 1) to parts of the size.
/// Area sampling takes the mean over a pixel of a picture of sizeX by sizeY pixels, and needs
/// PrepareAreaSampling.
/// @param x, y  place on the picture, 0 to 1
Pixel GetImagePixelValueAt(double x, double y, KMatrix4 const& m, KImage const* image, SuperSamplingType type,
                           EdgeModes edges, double sizeX, double sizeY);
FltPixel GetImageFltPixelValueAt(double x, double y, KMatrix4 const& m, KImage const* image,
                                 SuperSamplingType type, EdgeModes edges, double sizeX, double sizeY);

/// Area sample of a repeating image, corners in 16.16 pixels. The host's wrapping sampler is slow, so a
/// quadrilateral that lies within one repetition goes to the plain one.
template <class Record>
void ImageSampleAreaW(KImage const* image, int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4,
                      Record& record);

extern template void ImageSampleAreaW(KImage const*, int, int, int, int, int, int, int, int, Pixel&);
extern template void ImageSampleAreaW(KImage const*, int, int, int, int, int, int, int, int, FltPixel&);

} // namespace ombrelune
