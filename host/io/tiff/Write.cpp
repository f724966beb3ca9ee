#include <algorithm>

#include "host/image/StoredType.h"
#include "host/io/Rows.h"
#include "host/io/tiff/Tiff.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

constexpr int kRowsPerStrip = 64;

template <class Stored, class Written> void FillRow(Stored const* in, Written* out, int width)
{
    for (int x = 0; x < width; ++x, in += 4, out += 4) {
        out[0] = Converted<Written>(in[2]);
        out[1] = Converted<Written>(in[1]);
        out[2] = Converted<Written>(in[0]);
        out[3] = Converted<Written>(in[3]);
    }
}

template <class Stored, class Written> bool WriteRows(Image const& image, TIFF* file)
{
    std::size_t const rowBytes = static_cast<std::size_t>(image.Width()) * 4 * sizeof(Written);
    PooledBuffer const buffer = TakeBuffer(rowBytes * kRowsPerStrip);
    if (!buffer) return false;
    std::uint32_t strip = 0;
    for (int top = 0; top < image.Height(); top += kRowsPerStrip, ++strip) {
        int const count = std::min(kRowsPerStrip, image.Height() - top);
        ParallelFor(count, [&](int row) {
            FillRow(reinterpret_cast<Stored const*>(image.MainRow(image.Height() - 1 - top - row)),
                    reinterpret_cast<Written*>(buffer.get() + static_cast<std::size_t>(row) * rowBytes),
                    image.Width());
        });
        auto const bytes = static_cast<tmsize_t>(rowBytes) * count;
        if (TIFFWriteEncodedStrip(file, strip, buffer.get(), bytes) != bytes) return false;
    }
    return true;
}

} // namespace

std::optional<std::string> WriteTiff(Image const& image, std::FILE* stream, WriteOptions const& options)
{
    int const asked = options.depth ? options.depth : image.Depth();
    int const depth = asked >= kDepthHalf ? +kDepthFloat : asked;
    int const bits = depth == kDepthInt8 ? 8 : depth == kDepthInt16 ? 16 : 32;
    double const bytes = static_cast<double>(image.Width()) * image.Height() * bits / 2.0;
    if (bytes > 4e9 || image.XScale() != image.YScale()) return std::nullopt;
    TiffFile const file = OpenTiff(stream, "w");
    std::string const failed = "cannot be written as TIFF";
    if (!file) return failed;
    TIFFSetField(file.get(), TIFFTAG_IMAGEWIDTH, image.Width());
    TIFFSetField(file.get(), TIFFTAG_IMAGELENGTH, image.Height());
    TIFFSetField(file.get(), TIFFTAG_BITSPERSAMPLE, bits);
    TIFFSetField(file.get(), TIFFTAG_SAMPLEFORMAT,
                 depth == kDepthFloat ? SAMPLEFORMAT_IEEEFP : SAMPLEFORMAT_UINT);
    TIFFSetField(file.get(), TIFFTAG_SAMPLESPERPIXEL, 4);
    TIFFSetField(file.get(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
    TIFFSetField(file.get(), TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
    TIFFSetField(file.get(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    TIFFSetField(file.get(), TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    TIFFSetField(file.get(), TIFFTAG_ROWSPERSTRIP, kRowsPerStrip);
    std::uint16_t const alpha = EXTRASAMPLE_ASSOCALPHA;
    TIFFSetField(file.get(), TIFFTAG_EXTRASAMPLES, 1, &alpha);
    bool const ok = WithStoredType(image.Depth(), [&]<class Stored>(std::type_identity<Stored>) {
        if (depth == kDepthInt8) return WriteRows<Stored, std::uint8_t>(image, file.get());
        if (depth == kDepthInt16) return WriteRows<Stored, std::uint16_t>(image, file.get());
        return WriteRows<Stored, float>(image, file.get());
    });
    return ok ? "" : failed;
}

} // namespace ombrelune
