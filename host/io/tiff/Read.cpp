#include <algorithm>
#include <atomic>
#include <optional>

#include "host/image/StoredType.h"
#include "host/io/Rows.h"
#include "host/io/tiff/Tiff.h"
#include "host/value/MachineMemory.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

/// A file that is read here.
struct Layout {
    int width = 0, height = 0, depth = 0;
    int samples = 0; ///< 1 grey, 2 grey and alpha, 3 colour, 4 colour and alpha
    bool isStraight = false;
    int rowsPerStrip = 0;

    std::size_t RowBytes() const
    {
        std::size_t const word = depth == kDepthInt8 ? 1 : depth == kDepthInt16 ? 2 : 4;
        return static_cast<std::size_t>(width) * static_cast<std::size_t>(samples) * word;
    }
};

template <class T> T Field(TIFF* file, std::uint32_t tag, T otherwise)
{
    T value{};
    return TIFFGetFieldDefaulted(file, tag, &value) ? value : otherwise;
}

std::optional<Layout> LayoutOf(TIFF* file)
{
    auto const width = Field<std::uint32_t>(file, TIFFTAG_IMAGEWIDTH, 0),
               height = Field<std::uint32_t>(file, TIFFTAG_IMAGELENGTH, 0);
    if (width < 1 || height < 1 || std::max(width, height) > static_cast<std::uint32_t>(Image::kMaxSide))
        return {};
    if (TIFFIsTiled(file) || Field<std::uint16_t>(file, TIFFTAG_PLANARCONFIG, 0) != PLANARCONFIG_CONTIG ||
        Field<std::uint16_t>(file, TIFFTAG_ORIENTATION, 0) != ORIENTATION_TOPLEFT ||
        Field<float>(file, TIFFTAG_XRESOLUTION, 0.0F) != Field<float>(file, TIFFTAG_YRESOLUTION, 0.0F))
        return {};

    Layout layout{.width = static_cast<int>(width), .height = static_cast<int>(height)};
    auto const bits = Field<std::uint16_t>(file, TIFFTAG_BITSPERSAMPLE, 0),
               format = Field<std::uint16_t>(file, TIFFTAG_SAMPLEFORMAT, 0);
    if (format == SAMPLEFORMAT_UINT && bits == 8) layout.depth = kDepthInt8;
    else if (format == SAMPLEFORMAT_UINT && bits == 16) layout.depth = kDepthInt16;
    else if (format == SAMPLEFORMAT_IEEEFP && bits == 32) layout.depth = kDepthFloat;
    else return {};

    std::uint16_t photometric = 0, extraCount = 0, *extras = nullptr;
    if (!TIFFGetField(file, TIFFTAG_PHOTOMETRIC, &photometric)) return {};
    TIFFGetFieldDefaulted(file, TIFFTAG_EXTRASAMPLES, &extraCount, &extras);
    bool const isColour = photometric == PHOTOMETRIC_RGB;
    if ((!isColour && photometric != PHOTOMETRIC_MINISBLACK) || extraCount > 1) return {};
    layout.samples = Field<std::uint16_t>(file, TIFFTAG_SAMPLESPERPIXEL, 0);
    if (layout.samples != (isColour ? 3 : 1) + extraCount) return {};
    if (extraCount == 1 && extras[0] != EXTRASAMPLE_ASSOCALPHA && extras[0] != EXTRASAMPLE_UNASSALPHA)
        return {};
    layout.isStraight = extraCount == 1 && extras[0] == EXTRASAMPLE_UNASSALPHA;

    layout.rowsPerStrip = static_cast<int>(
        std::clamp<std::uint32_t>(Field<std::uint32_t>(file, TIFFTAG_ROWSPERSTRIP, 0), 1, height));
    bool const isWhole =
        TIFFStripSize(file) == static_cast<tmsize_t>(layout.RowBytes()) * layout.rowsPerStrip;
    // The other module refuses what needs more than half of the memory, and reads large strips in parts.
    constexpr double kLargestStrip = 64 << 20;
    double const rowBytes = static_cast<double>(layout.RowBytes());
    bool const fits =
        rowBytes / layout.samples * 4.0 * layout.height <= static_cast<double>(MachineMemory()) / 2.0;
    if (!isWhole || !fits || rowBytes * layout.rowsPerStrip > kLargestStrip) return {};
    return layout;
}

template <class Stored> void PlaceRow(Stored const* in, Layout const& layout, Stored* out)
{
    bool const isColour = layout.samples >= 3, hasAlpha = layout.samples % 2 == 0;
    int const green = isColour ? 1 : 0, blue = isColour ? 2 : 0;
    for (int x = 0; x < layout.width; ++x, in += layout.samples, out += 4) {
        out[0] = in[blue];
        out[1] = in[green];
        out[2] = in[0];
        out[3] = hasAlpha ? in[layout.samples - 1] : One<Stored>();
        if (layout.isStraight)
            for (int c = 0; c < 3; ++c) out[c] = Premultiplied(out[c], out[3]);
    }
}

/// Some strips at a time, whose rows are put into the picture on the worker threads.
template <class Stored> bool ReadRows(TIFF* file, Layout const& layout, Image& image)
{
    std::size_t const stripBytes = layout.RowBytes() * static_cast<std::size_t>(layout.rowsPerStrip);
    constexpr std::size_t kBlock = 4 << 20;
    int const strips = std::max(static_cast<int>(kBlock / stripBytes), 1);
    int const rows = strips * layout.rowsPerStrip;
    PooledBuffer const buffer = TakeBuffer(stripBytes * static_cast<std::size_t>(strips));
    if (!buffer) return false;
    for (int top = 0; top < layout.height; top += rows) {
        int const count = std::min(rows, layout.height - top);
        for (int row = 0; row < count; row += layout.rowsPerStrip) {
            auto const wanted =
                static_cast<tmsize_t>(layout.RowBytes()) * std::min(layout.rowsPerStrip, count - row);
            auto const strip = static_cast<std::uint32_t>((top + row) / layout.rowsPerStrip);
            if (TIFFReadEncodedStrip(file, strip,
                                     buffer.get() + static_cast<std::size_t>(row) * layout.RowBytes(),
                                     wanted) != wanted)
                return false;
        }
        ParallelFor(count, [&](int row) {
            auto const* in = reinterpret_cast<Stored const*>(buffer.get() + static_cast<std::size_t>(row) *
                                                                                layout.RowBytes());
            PlaceRow(in, layout, reinterpret_cast<Stored*>(image.MainRow(layout.height - 1 - top - row)));
        });
    }
    return true;
}

} // namespace

std::optional<bool> ReadsTiffHeader(std::string const& path)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const stream(std::fopen(path.c_str(), "rb"),
                                                                 &std::fclose);
    if (stream && OpenTiff(stream.get(), "r")) return true;
    return std::nullopt;
}

ReadResult ReadTiff(std::string const& path)
{
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const stream(std::fopen(path.c_str(), "rb"),
                                                                 &std::fclose);
    TiffFile const file = stream ? OpenTiff(stream.get(), "r") : nullptr;
    auto const layout = file ? LayoutOf(file.get()) : std::nullopt;
    if (!layout) return {};
    Ref<Image> image = NewImageTagList(
        {{Img_Width, layout->width}, {Img_Height, layout->height}, {Img_Depth, layout->depth}});
    if (!image) return {};
    bool const ok = WithStoredType(layout->depth, [&]<class Stored>(std::type_identity<Stored>) {
        return ReadRows<Stored>(file.get(), *layout, *image);
    });
    return {ok ? std::move(image) : nullptr, {}};
}

} // namespace ombrelune
