#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "host/image/BufferPool.h"
#include "host/image/Pixel.h"
#include "host/value/Parameter.h"

namespace ombrelune {

class Image;

/// Picture depths. Everything from half up is float, see Image::IsFloat.
enum ImageDepth { kDepthInt8 = 5, kDepthInt16 = 6, kDepthHalf = 7, kDepthFloat = 8 };

/// Whether the stored words are a record's own, so that cursors go straight to memory. A picture with
/// auxiliary channels or of another depth is general.
enum class PixelLayout : unsigned char { kGeneral, kPlainInt16, kPlainFloat };

enum EdgeModes { kEdgeBlack = 0, kEdgeWrap = 1, kEdgeDuplicate = 2 };

enum ColorSpaceType {
    kSpaceRGB,
    kSpaceHLS,
    kSpaceYUV,
    kSpaceYIQ,
    kSpaceCMY,
    kSpaceHSV,
    kSpaceXYZ,
    kSpaceLAB
};

/// Sizes are radii: half the support of box and Bartlett, two standard deviations of a Gaussian. Soften is
/// the mean of the picture and its Gaussian, Sharpen adds what the Gaussian takes away. Any other code is a
/// Gaussian.
enum BlurFilter { kBlurBox = 0, kBlurSoften = 1, kBlurBartlett = 2, kBlurSharpen = 3, kBlurGaussian = 4 };

// Attributes of NewImageTagList.
inline constexpr std::uint32_t Img_Document =
    0x60020001; ///< FrameFormat const*: depth, and size unless given
inline constexpr std::uint32_t Img_Width = 0x10020000;
inline constexpr std::uint32_t Img_Height = 0x10020001;
inline constexpr std::uint32_t Img_Depth = 0x10020002;
inline constexpr std::uint32_t Img_Channel = 0x18020000; ///< host channel number; repeated
inline constexpr std::uint32_t Img_XScale = 0x20000000;
inline constexpr std::uint32_t Img_YScale = 0x20000001;
inline constexpr std::uint32_t Img_Like =
    0x60020002; ///< Image const*: size, depth, channels, scales, attributes

// Attributes of an image, Image::attributes.
inline constexpr std::uint32_t Img_OriginalWidth = 0x1002000d;  ///< unscaled width of a proxy
inline constexpr std::uint32_t Img_OriginalHeight = 0x1002000e; ///< unscaled height of a proxy
inline constexpr std::uint32_t Img_Field = 0x1002000f;          ///< 0 or 1 on a picture of one field

// Attributes of BlurOfImageTagList.
inline constexpr std::uint32_t Blur_Type = 0x10020010; ///< BlurFilter
inline constexpr std::uint32_t Blur_Red = 0x10020011;  ///< bool, each; channels that are off stay as they are
inline constexpr std::uint32_t Blur_Green = 0x10020012;
inline constexpr std::uint32_t Blur_Blue = 0x10020013;
inline constexpr std::uint32_t Blur_Alpha = 0x10020014;
inline constexpr std::uint32_t Blur_XSize = 0x20020010; ///< fraction of the picture's width
inline constexpr std::uint32_t Blur_YSize =
    0x20020011; ///< fraction of the picture's width; default Blur_XSize
/// How often the filter is applied, 1 unless given, at most 16. A Gaussian takes fractions, the others whole
/// numbers.
inline constexpr std::uint32_t Blur_Passes = 0x20020012;
inline constexpr std::uint32_t Blur_Blend =
    0x20020013; ///< 1 (the default) the filtered picture, 0 the picture itself

/// The four ways into a stored pixel; chosen once per image, called with the record, main and auxiliary
/// address.
struct PixelHooks {
    void (*readInt)(Pixel&, std::byte const* main, float const* aux, Image const&);
    void (*writeInt)(Pixel const&, std::byte* main, float* aux, Image const&);
    void (*readFloat)(FltPixel&, std::byte const* main, float const* aux, Image const&);
    void (*writeFloat)(FltPixel const&, std::byte* main, float* aux, Image const&);
};

class SummedAreaTable;

/// Shared data of one Image::DoMultiProcess call.
struct ImgMPData {
    Image* image = nullptr;
    void* data = nullptr;
};

/// A picture. Main buffer: interleaved blue, green, red, alpha, row 0 at the bottom, each row aligned to 64
/// bytes. Auxiliary buffer: one float per auxiliary channel that the picture has, interleaved; none for a
/// plain picture. Colour is premultiplied by alpha. Made by NewImageTagList.
class Image : public Parameter {
public:
    static constexpr int kMaxSide = 1 << 16;

    FuID DataType() const override { return CLSID_DataType_Image; }

    int Width() const { return width_; }
    int Height() const { return height_; }
    int Depth() const { return depth_; }
    bool IsFloat() const { return depth_ >= kDepthHalf; }
    double XScale() const { return xScale_; }
    double YScale() const { return yScale_; }
    std::vector<int> const& AuxChannels() const { return auxChannels_; }
    bool HasChannel(int channel) const;
    /// True when the picture has nothing but blue, green, red and alpha.
    bool IsPlain() const { return auxChannels_.empty(); }

    PixelLayout Layout() const { return layout_; }

    int PixelBytes() const { return pixelBytes_; }
    int AuxFloats() const { return static_cast<int>(auxChannels_.size()); }
    std::byte* MainRow(int y) const { return main_.get() + static_cast<std::ptrdiff_t>(y) * rowBytes_; }
    float* AuxRow(int y) const
    {
        return reinterpret_cast<float*>(aux_.get() + static_cast<std::ptrdiff_t>(y) * auxRowBytes_);
    }
    std::size_t RowBytes() const { return static_cast<std::size_t>(rowBytes_); }
    std::size_t MemoryBytes() const override;
    PixelHooks const& Hooks() const { return *hooks_; }

    /// Copy with the same format and attributes; its pixels are undefined when `empty`.
    Ref<Image> CopyOfImage(bool empty) const;
    /// Copy of another size, area-averaged where it shrinks and bilinear where it grows; null for a bad size.
    Ref<Image> ResizeOfImage(int width, int height) const;
    /// Copy blurred by the Blur_ attributes; channels that are not named are blurred. Beyond the border the
    /// edge pixels repeat. Auxiliary channels are copied. Null when memory is out.
    Ref<Image> BlurOfImageTagList(TagList const& tags) const;
    /// Copy moved so that the pivot (normalised, 0 to 1) lands on `x`, `y`, scaled and turned by `angle`
    /// degrees counter-clockwise about it, in square units (XScale and YScale count). Bilinear where it
    /// grows, area means where it shrinks; a scale of 0 gives black. Null when memory is out.
    Ref<Image> TransformOf(double x, double y, double pivotX, double pivotY, double scaleX, double scaleY,
                           double angle, EdgeModes edges) const;

    /// Converts the colour channels in place. Every space uses 0 to 1: hues are turns, differences lie around
    /// 0.5.
    void CSConvertTagList(ColorSpaceType from, ColorSpaceType to, TagList const& tags);
    void Fill(Pixel const& pixel);
    void Clear();
    /// Levels of a matte, in host channels `first` to `last` (0 blue to 3 alpha): `low` and `high`, 0 to
    /// 65535, become 0 and 1, with limits; `contract` above 0 lets soft parts grow (1: all that is not black
    /// becomes white), below 0 shrink (-1: all that is not white becomes black); then gamma.
    void DoLevels(double contract, double gamma, int low, int high, int first, int last);

    /// Makes the table for area sampling; does nothing when there is one. Writing to the picture afterwards
    /// leaves the table behind, so call it on pictures that are finished. Thread-safe.
    void UseSAT();

    /// Bilinear samples at a place in 16.16 pixels, which reaches 32767 of them; pixel (x, y) lies at the
    /// place (x, y). In a row loop bind a BilinearSampler instead, which is inlined. Beyond the picture
    /// black, wrapped or the edge pixel repeated. Black leaves the auxiliary words of the record alone where
    /// the place is outside.
    void SamplePixelB(int x, int y, Pixel& record) const;
    void SamplePixelW(int x, int y, Pixel& record) const;
    void SamplePixelD(int x, int y, Pixel& record) const;
    void SamplePixelB(int x, int y, FltPixel& record) const;
    void SamplePixelW(int x, int y, FltPixel& record) const;
    void SamplePixelD(int x, int y, FltPixel& record) const;

    /// Mean over the convex quadrilateral of four corners in 16.16 pixels, in any order; pixel x covers x -
    /// 0.5 to x + 0.5. Needs UseSAT, else it is the bilinear sample at the centre. See AreaSampler.
    void SampleAreaB(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Pixel& record) const;
    void SampleAreaW(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Pixel& record) const;
    void SampleAreaD(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, Pixel& record) const;
    void SampleAreaB(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, FltPixel& record) const;
    void SampleAreaW(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, FltPixel& record) const;
    void SampleAreaD(int x1, int y1, int x2, int y2, int x3, int y3, int x4, int y4, FltPixel& record) const;

    /// Runs function(image, data, chunk) for chunks 0 to count - 1 on the worker threads, or on this one.
    static void DoMultiProcess(void (*function)(Image*, void*, int), void* data, int count, ImgMPData* shared,
                               bool threaded);

    TagList attributes;
    double yOffset = 0.0; ///< shift of a field's rows against the full frame, in frame heights

private:
    friend Ref<Image> NewImageTagList(TagList const& tags);
    Image() = default;
    ~Image() override;

    int width_ = 0, height_ = 0, depth_ = kDepthInt16;
    double xScale_ = 1.0, yScale_ = 1.0;
    int pixelBytes_ = 0;
    std::ptrdiff_t rowBytes_ = 0, auxRowBytes_ = 0;
    std::vector<int> auxChannels_;
    PooledBuffer main_, aux_;
    PixelHooks const* hooks_ = nullptr;
    PixelLayout layout_ = PixelLayout::kGeneral;
    std::once_flag satOnce_;
    std::unique_ptr<SummedAreaTable> sat_;
};

/// New picture by attributes, pixels undefined: like another picture (Img_Like), or of the document's format,
/// or 16-bit of the given size. Later attributes of the list overrule what Img_Like or Img_Document say;
/// channels are added to those of Img_Like. Null when a side is below 1 or above Image::kMaxSide or memory is
/// out.
Ref<Image> NewImageTagList(TagList const& tags);

} // namespace ombrelune
