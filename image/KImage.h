#pragma once

#include <algorithm>
#include <vector>

#include "host/image/PixPtr.h"
#include "image/KColor.h"
#include "image/KImageRegion.h"
#include "image/KRange.h"
#include "image/KVector2.h"
#include "image/KVector3.h"
#include "image/PixelMath.h"

namespace ombrelune {

class KLookUpTable;

/// Rows first to end - 1.
struct KImageRows {
    int first, end;
};

/// Thin wrapper around one host image: holds no pixels, copies nothing. Places are pixels, row 0 at the
/// bottom. Colour is premultiplied. Readers may share an image between threads; writers keep to rows of their
/// own. Operations whose name ends in Of give a new wrapper that the caller owns, or null when memory is out.
/// Whole-image operations run on the worker threads and give the same bytes for any number of them; two
/// images of different sizes meet in their common corner.
class KImage {
public:
    /// New image of 16 bits, undefined pixels, with velocity channels on request; the sides are limited to
    /// what the host accepts. The aspect has no effect.
    KImage(int width, int height, float aspect, bool withVelocity);
    /// Wraps a host image; with `owned` the caller's reference passes to the wrapper.
    KImage(Image* image, bool owned);
    KImage(KImage const&) = delete;
    KImage& operator=(KImage const&) = delete;
    virtual ~KImage();

    /// New wrapper, or null for null.
    static KImage* ImageFromHost(Image* image, bool owned);
    /// Puts the new image into the slot and deletes the one that was there.
    static void ImageReplace(KImage** slot, KImage* image);

    Image* FImage() const { return image_; }
    /// Lets the host image outlive the wrapper: its reference now belongs to whoever took FImage.
    void FImageRelease() { owned_ = false; }
    void Use() const;
    void Recycle() const;

    KImage* CopyOf() const;
    /// New image like this one, pixels undefined; of w by h pixels when both are above 0, and then with those
    /// scales when both are above 0.
    KImage* LikeOf(int w, int h, float xs, float ys) const;
    KImage* LikeOfPlusVelocity() const;

    int Width() const { return width_; }
    int Height() const { return height_; }
    int Depth() const { return depth_; }
    bool IsFloat() const { return depth_ >= kDepthHalf; }
    bool HasVelocity() const;
    bool SameSize(KImage const* other) const { return width_ == other->width_ && height_ == other->height_; }

    double XScale() const { return xScale_; }
    double YScale() const { return yScale_; }
    /// Changes this wrapper's copy alone: an image of one field has pixels of twice the height.
    void SetYScale(double scale) { yScale_ = scale; }
    float PixelAspect() const { return static_cast<float>(xScale_ / yScale_); }
    float FrameAspect() const
    {
        return PixelAspect() * static_cast<float>(width_) / static_cast<float>(height_);
    }
    /// Size without proxy.
    int OriginalWidth() const;
    int OriginalHeight() const;
    /// Proxy factor, at least 1.
    int Scale() const { return std::max(1, OriginalWidth() / width_); }
    /// Writes a host attribute: 1 original width, 2 original height, 3 field; no other key.
    void Set(int key, unsigned value);

    // One pixel, through a cursor of its own: row loops use one cursor instead.

    /// No check of the position.
    template <class Record> void GetPixel(int x, int y, Record& r) const
    {
        if (image_->Layout() == kPlainLayout<Record>)
            PlainPixPtr<StoredWord<Record>>(image_, x, y).GetPixel(r);
        else PixPtr(image_, x, y).GetPixel(r);
    }
    template <class Record> void SetPixel(int x, int y, Record const& r)
    {
        if (image_->Layout() == kPlainLayout<Record>)
            PlainPixPtr<StoredWord<Record>>(image_, x, y).SetPixel(r);
        else PixPtr(image_, x, y).SetPixel(r);
    }
    /// Colour words are 0 outside, and the auxiliary words of the record stay.
    template <class Record> void GetPixelB(int x, int y, Record& r) const
    {
        if (IsInside(x, y)) return GetPixel(x, y, r);
        for (auto& word : r.word) word = 0;
    }
    /// The image repeats.
    template <class Record> void GetPixelW(int x, int y, Record& r) const
    {
        GetPixel(Wrap(x, width_), Wrap(y, height_), r);
    }
    /// The edge pixels repeat.
    template <class Record> void GetPixelD(int x, int y, Record& r) const
    {
        GetPixel(std::clamp(x, 0, width_ - 1), std::clamp(y, 0, height_ - 1), r);
    }
    /// By edge mode: 2 GetPixelD, 1 GetPixelW, any other GetPixelB.
    template <class Record> void GetSample(int x, int y, Record& r, int mode) const
    {
        if (mode == kEdgeDuplicate) GetPixelD(x, y, r);
        else if (mode == kEdgeWrap) GetPixelW(x, y, r);
        else GetPixelB(x, y, r);
    }
    /// Outside nothing is written.
    void SetSampleSafe(int x, int y, Pixel const& r)
    {
        if (IsInside(x, y)) SetPixel(x, y, r);
    }

    // Interpolated at a place, by the host's bilinear samplers.

    template <class Record> void SamplePixelB(float x, float y, Record& r) const
    {
        image_->SamplePixelB(ToFixed16(x), ToFixed16(y), r);
    }
    template <class Record> void SamplePixelW(float x, float y, Record& r) const
    {
        image_->SamplePixelW(ToFixed16(x), ToFixed16(y), r);
    }
    template <class Record> void SamplePixelD(float x, float y, Record& r) const
    {
        image_->SamplePixelD(ToFixed16(x), ToFixed16(y), r);
    }
    /// By edge mode, as GetSample.
    template <class Record> void GetSamplePixel(float x, float y, Record& r, int mode) const
    {
        if (mode == kEdgeDuplicate) SamplePixelD(x, y, r);
        else if (mode == kEdgeWrap) SamplePixelW(x, y, r);
        else SamplePixelB(x, y, r);
    }

    // Mean over a quadrilateral, corners in 16.16 pixels or in pixels. PrepareAreaSampling comes first, once
    // the image is finished.

    void PrepareAreaSampling() { image_->UseSAT(); }
    template <class Record>
    void SampleAreaB(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Record& r) const
    {
        image_->SampleAreaB(x1, y1, x2, y2, x3, y3, x4, y4, r);
    }
    template <class Record>
    void SampleAreaW(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Record& r) const
    {
        image_->SampleAreaW(x1, y1, x2, y2, x3, y3, x4, y4, r);
    }
    template <class Record>
    void SampleAreaD(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Record& r) const
    {
        image_->SampleAreaD(x1, y1, x2, y2, x3, y3, x4, y4, r);
    }
    template <class Record>
    void GetSampleArea(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4,
                       Record& r, int mode) const
    {
        int const c[] = {ToFixed16(x1), ToFixed16(y1), ToFixed16(x2), ToFixed16(y2),
                         ToFixed16(x3), ToFixed16(y3), ToFixed16(x4), ToFixed16(y4)};
        if (mode == kEdgeDuplicate) SampleAreaD(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], r);
        else if (mode == kEdgeWrap) SampleAreaW(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], r);
        else SampleAreaB(c[0], c[1], c[2], c[3], c[4], c[5], c[6], c[7], r);
    }

    // Whole image, in place. They change the four colour words and leave the auxiliary ones, except Clear and
    // the copies. Integer images clamp, float images do not.

    void Clear();
    void Fill(Pixel const& pixel);
    void Fill(KColor const& color, bool withAlpha);
    /// Converts where the depths differ. The auxiliary channels that both have are copied, others become 0.
    void CopyFrom(KImage const* other);
    void CopyLineFrom(KImage const* other, int y);
    void Add(KImage const* other);
    void Add(KColor const& color);
    void Multiply(KColor const& factors);
    /// Fades; does nothing for 1 or more.
    void Multiply(float f);
    /// (1 - a) parts of this and a parts of the other; does nothing for 0 or less.
    void BlendWith(KImage const* other, float a);
    /// Multiplies by the mask's alpha, or by what it lacks to 1.
    void ApplyMask(KImage const* mask, bool invert);
    /// Straight colour from premultiplied, where alpha is not 0.
    void Divide(bool alphaToOne);
    /// The foreground over this. The numbers have no effect.
    void MergePixel(KImage const* foreground, double = 1.0, double = 0.0);
    /// This over the background.
    void MergePixelUnder(KImage const* background, double = 1.0, double = 0.0);
    /// The host's levels of a matte, in host channels first to last; low and high are 0 to 65535.
    void Levels(double contract, double gamma, int low, int high, int first, int last);
    /// Between colour spaces 1 HLS, 2 YUV, 3 YIQ, 4 CMY, 5 HSV, 6 XYZ, 7 LAB; any other number is RGB.
    void ConvertSpace(int from, int to);

    /// Moved by offset - 0.5, in parts of the size; sampled under an edge mode.
    KImage* OffsetOf(KVector2 const& offset, int mode) const;
    KImage* ResizeOf(int w, int h) const;
    /// The host's transformation: the pivot lands on x, y, scaled and turned about it.
    KImage* TransformOf(double x, double y, double pivotX, double pivotY, double sx, double sy, double angle,
                        EdgeModes edges) const;
    /// Blurred by x and y 720ths of the width; a negative y means as x. Filters are the host's BlurFilter;
    /// channels is the sum of 1 red, 2 green, 4 blue, 8 alpha; passes and blend are the host's, 1 and 1 as a
    /// rule.
    KImage* BlurOf(double x, double y, int filter, int channels, double passes, double blend) const;
    /// Length of the gradient of each word over 3 by 3 pixels; the edge pixels repeat.
    KImage* SobelOf() const;

    /// Of the pixels with any alpha, in pixels; empty when there is none.
    KImageRegion BoundingBox() const;
    /// Of the pixels whose channel is above range.low, up to range.high, in pixels; the place of the edge
    /// comes from how far in range its pixels are. False when there is none. The third vector is not written.
    bool BoundingBox(KVector2& low, KVector2& high, KVector2& unused, int channel, KRange const& range) const;
    /// Mean (kind 0), least (1), largest (2) or sum (any other) of the whole image (area 0) or of a rectangle
    /// of w by h around a centre, in parts of the size (area 1); 0 without pixels. The last image has no
    /// effect.
    KColor GetSamples(int kind, int area, KVector2 const& centre, float w, float h,
                      KImage const* unused = nullptr) const;
    /// Normal of the surface whose height is Shape; of length 1, z towards the viewer.
    KVector3 GetNormal(int x, int y, int channel, float strength, KLookUpTable const* table) const;
    /// Height of a pixel, 0 to 65535: 0 red, 1 green, 2 blue, 3 alpha, 4 lightness; through a table if it has
    /// 65536 entries.
    static int Shape(KLookUpTable const* table, Pixel const& p, int selector);

    // Drawing over the colour words, in pixels, clipped at the borders. Words are 16-bit, colour
    // premultiplied: a pixel keeps 65535 - alpha parts of what it was and adds the colour.

    void DrawPointSafe(int x, int y, int red, int green, int blue, int alpha);
    void DrawPoint(int x, int y, Pixel const& color);
    void DrawPoint(int x, int y, KColor const& color);
    /// Outline of w by h pixels, each pixel once.
    void DrawRectangle(int x, int y, int w, int h, int red, int green, int blue, int alpha);
    /// Filled rectangle in parts of the size, its edges by the area that they cover; a partly covered last
    /// row or column of the image is left out. Rectangles within one pixel are not exact.
    void DrawRectangleAA(float x0, float y0, float x1, float y1, KColor const& color);
    // Lines take a colour that is not premultiplied. They share each step between two pixels, are weighted to
    // their ends as KOffsets says, and reach 131072 pixels.
    /// To both sides of x, y, along (cos angle, sin angle times aspect).
    void DrawCenterLine(int x, int y, float angle, float length, Pixel const& color, float aspect);
    /// From x - dx, y - dy to x + dx, y + dy, ends left out.
    void DrawCenterLineByOffset(int x, int y, float dx, float dy, Pixel const& color);
    /// From x, y to x + dx, y + dy, the end left out; the first pixel is twice as bright.
    void DrawVectorByOffset(int x, int y, float dx, float dy, Pixel const& color);
    /// The image's velocities times the scale, as vectors: on a grid of `spacing` widths, at least 2 pixels,
    /// or, when there are corners of 5 by 5 patterns, from their middles, with their frames.
    void DrawVectorField(KColor const& color, std::vector<KVector2i> const* patterns, float spacing,
                         float scale);
    /// Soft mark around a centre. Places and half sizes are parts of the size less one pixel. Nothing without
    /// a size, or for a colour of 0.
    /// @param angle       radians; noRotation leaves it out
    /// @param samples     per side of a pixel
    /// @param shape       0 ellipse, 1 rectangle, 2 diamond, 3 the map; without a map 3 is 0
    /// @param colorSource 2 the map's own colour, else the colour, with a map times its luminance
    /// @param merge       0 the larger, 1 sum, 2 difference, 3 screen
    /// @param rows        rows that it may write; null for all
    void DrawDot(KVector2 const& center, KVector2 const& size, float angle, bool noRotation, int samples,
                 int shape, int colorSource, int merge, KColor const& color, KImage const* map,
                 KImageRows const* rows = nullptr);

private:
    bool IsInside(int x, int y) const
    {
        return static_cast<unsigned>(x) < static_cast<unsigned>(width_) &&
               static_cast<unsigned>(y) < static_cast<unsigned>(height_);
    }
    static int Wrap(int i, int size)
    {
        int const rest = i % size;
        return rest < 0 ? rest + size : rest;
    }
    static KImage* Adopt(Ref<Image> image) { return ImageFromHost(image.Release(), true); }

    bool owned_;
    Image* image_;
    // Copies of the host's, so that loops need not ask.
    int depth_ = kDepthInt16, width_ = 0, height_ = 0;
    double xScale_ = 1.0, yScale_ = 1.0;
};

} // namespace ombrelune
