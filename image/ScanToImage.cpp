#include "image/ScanToImage.h"

#include <array>
#include <type_traits>

#include "image/KImage.h"
#include "image/PlaneSampling.h"

namespace ombrelune {

void ScanMask::SetBox(KImagePixelRegion const& newBox)
{
    box_ = newBox;
    bytes_ = TakeBuffer(
        box_.IsEmpty() ? 0 : static_cast<std::size_t>(box_.width) * static_cast<std::size_t>(box_.height));
    if (!bytes_) box_ = {};
}

namespace {

// The same arithmetic for both records.

/// Coverage times opacity for each byte of a mask.
template <class Word> std::array<Word, 256> CoverageTable(int samples, float opacity)
{
    std::array<Word, 256> table{};
    for (std::uint32_t i = 1; i < 256; ++i) {
        std::uint32_t const coverage = (samples == 1 ? 255U : i) * 0x101U;
        if constexpr (std::is_same_v<Word, float>)
            table[i] = static_cast<float>(coverage / 65535.0 * std::clamp(opacity, 0.0F, 1.0F));
        else table[i] = ScaledProduct(coverage, Truncate16(opacity));
    }
    return table;
}

void SetColor(Pixel& to, ChannelStyle const& style)
{
    to.blue = style.color.blue;
    to.green = style.color.green;
    to.red = style.color.red;
    to.alpha = style.color.alpha;
}
void SetColor(FltPixel& to, ChannelStyle const& style)
{
    to.blue = style.floatColor.blue;
    to.green = style.floatColor.green;
    to.red = style.floatColor.red;
    to.alpha = style.floatColor.alpha;
}

std::uint32_t Part(std::uint32_t m, std::uint32_t word) { return ScaledProduct(m, word); }
float Part(float m, float word) { return m * word; }
std::uint32_t Rest(std::uint32_t m) { return 65535U - m; }
float Rest(float m) { return 1.0F - m; }

Pixel BitmapAt(double x, double y, KMatrix4 const& m, ChannelStyle const& style, int w, int h, Pixel const&)
{
    return GetImagePixelValueAt(x, y, m, style.bitmap, static_cast<SuperSamplingType>(style.sampling),
                                static_cast<EdgeModes>(style.edges), w, h);
}
FltPixel BitmapAt(double x, double y, KMatrix4 const& m, ChannelStyle const& style, int w, int h,
                  FltPixel const&)
{
    return GetImageFltPixelValueAt(x, y, m, style.bitmap, static_cast<SuperSamplingType>(style.sampling),
                                   static_cast<EdgeModes>(style.edges), w, h);
}

/// Calls visit(first, last + 1) for the runs of bytes that are not 0.
template <class Visit> void VisitRuns(std::uint8_t const* bytes, int count, Visit const& visit)
{
    for (int x = 0; x < count;) {
        for (std::uint64_t eight = 0; x + 8 <= count; x += 8) {
            std::memcpy(&eight, bytes + x, 8);
            if (eight != 0) break;
        }
        while (x < count && bytes[x] == 0) ++x;
        int const start = x;
        while (x < count && bytes[x] != 0) ++x;
        if (x > start) visit(start, x);
    }
}

/// The rows of one pass, for one record, mode and kind of colour.
template <class Record, bool kMerge, bool kBitmap> class ScanRows {
public:
    ScanRows(ScanToImageData const& data, ChannelStyle const& style, KImagePixelRegion const& region)
        : data_(data), style_(style), region_(region),
          coverage_(CoverageTable<Word>(data.samples, style.opacity))
    {
        if (kBitmap) matrix_ = style.GetImageTransformInverse();
        SetColor(color_, style);
        color_.DropAux();
    }

    static void DrawRow(Image* image, void* rows, int row)
    {
        static_cast<ScanRows const*>(rows)->Draw(image, row);
    }

private:
    using Word = std::remove_reference_t<decltype(Record::word[0])>;

    void Draw(Image* image, int row) const
    {
        // Row of the clip, of the picture, of the mask.
        int const y = region_.y + row, imageY = data_.target.y + y;
        KImagePixelRegion const& box = data_.mask->Box();
        bool const hasMask = y >= box.y && y < box.y + box.height;
        if (!kMerge) Clear(image, imageY);
        if (!hasMask) return;
        std::uint8_t const* const bytes = data_.mask->Row(y - box.y);
        VisitRuns(bytes, box.width, [&](int first, int end) {
            int const x = box.x + first, imageX = data_.target.x + x;
            auto const draw = [&](auto cursor) { DrawRun(cursor, bytes + first, end - first, x, y); };
            if (image->Layout() == kPlainLayout<Record>)
                return draw(PlainPixPtr<StoredWord<Record>>(image, imageX, imageY));
            if constexpr (std::is_same_v<Record, Pixel>)
                if (image->IsPlain() && image->Depth() == kDepthInt8)
                    return draw(PlainPixPtr<std::uint8_t>(image, imageX, imageY));
            draw(PixPtr(image, imageX, imageY));
        });
    }

    template <class Cursor> void DrawRun(Cursor in, std::uint8_t const* bytes, int count, int x, int y) const
    {
        Cursor out = in;
        Record color = color_, pixel;
        pixel.DropAux();
        for (int i = 0; i < count; ++i) {
            if constexpr (kMerge && !kBitmap && !std::is_same_v<Cursor, PixPtr>) {
                // What is covered wholly need not be read: over a large picture that is what takes the time.
                if (bytes[i] == 255 && isOpaque_) {
                    out >>= color;
                    in.Skip();
                    continue;
                }
            }
            if constexpr (kBitmap) color = ColorAt(x + i, y);
            Word const m = coverage_[bytes[i]];
            if constexpr (kMerge) {
                pixel >>= in;
                Word const rest = Rest(m);
                for (int k = 0; k < 4; ++k)
                    pixel.word[k] = Part(rest, pixel.word[k]) + Part(m, color.word[k]);
            } else {
                for (int k = 0; k < 4; ++k) pixel.word[k] = Part(m, color.word[k]);
            }
            out >>= pixel;
        }
    }

    Record ColorAt(int x, int y) const
    {
        double const across = data_.frameWidth - 1;
        return BitmapAt((data_.clip.x + x) / across, (data_.clip.y + y) / across / data_.pixelAspect, matrix_,
                        style_, data_.frameWidth, data_.frameHeight, color_);
    }

    /// The whole row, before its coverage is drawn.
    void Clear(Image* image, int y) const
    {
        PixPtr out(image, data_.target.x, y);
        Record clear;
        clear.Clear();
        for (int x = 0; x < data_.target.width; ++x) out >>= clear;
    }

    ScanToImageData const& data_;
    ChannelStyle const& style_;
    KImagePixelRegion const region_;
    std::array<Word, 256> const coverage_;
    bool const isOpaque_ = Rest(coverage_[255]) == 0; ///< full coverage leaves nothing of the old pixel
    KMatrix4 matrix_;
    Record color_;
};

template <class Record, bool kMerge, bool kBitmap>
void RunRows(KImage* image, ScanToImageData const& data, ChannelStyle const& style)
{
    KImagePixelRegion rows = data.mask->Box();
    if (!kMerge) rows = {0, 0, data.target.width, data.target.height};
    if (rows.IsEmpty()) return;
    ScanRows<Record, kMerge, kBitmap> scan(data, style, rows);
    constexpr std::int64_t kWorthThreads = 1 << 15; // pixels
    bool const threaded = std::int64_t{rows.width} * rows.height * (kBitmap ? 4 : 1) > kWorthThreads;
    ImgMPData shared{image->FImage(), &scan};
    Image::DoMultiProcess(ScanRows<Record, kMerge, kBitmap>::DrawRow, &scan, rows.height, &shared, threaded);
}

template <class Record>
void RunRows(KImage* image, ScanToImageData const& data, CombineMode mode, ChannelStyle const& style)
{
    bool const bitmap = style.type == 1 && style.bitmap;
    if (mode == kCombineMerge)
        bitmap ? RunRows<Record, true, true>(image, data, style)
               : RunRows<Record, true, false>(image, data, style);
    else
        bitmap ? RunRows<Record, false, true>(image, data, style)
               : RunRows<Record, false, false>(image, data, style);
}

} // namespace

void ScanToImage(KImage* image, ScanToImageData const& data, CombineMode mode, ChannelStyle const& style)
{
    if (image->IsFloat() || style.IsColorBeyondRange()) RunRows<FltPixel>(image, data, mode, style);
    else RunRows<Pixel>(image, data, mode, style);
}

} // namespace ombrelune
