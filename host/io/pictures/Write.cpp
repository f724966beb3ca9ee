#include "host/io/pictures/Write.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>
#include <fmt/format.h>

#include "host/image/StoredType.h"
#include "host/io/Rows.h"
#include "host/io/pictures/Layout.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

using OIIO::TypeDesc;

/// Way into our stream that never tells the library of a failure: some writers end the process when a disk is
/// full. The stream remembers (ferror), and whoever owns it looks there.
class Sink : public OIIO::Filesystem::IOProxy {
public:
    explicit Sink(std::FILE* stream) : IOProxy("", Write), stream_(stream) {}
    char const* proxytype() const override { return "sink"; }
    std::size_t write(void const* bytes, std::size_t size) override
    {
        std::fwrite(bytes, 1, size, stream_);
        m_pos += static_cast<std::int64_t>(size);
        end_ = std::max(end_, m_pos);
        return size;
    }
    bool seek(std::int64_t offset) override
    {
        m_pos = offset;
        return fseeko(stream_, offset, SEEK_SET) == 0;
    }
    std::size_t size() const override { return static_cast<std::size_t>(end_); }
    void flush() const override { std::fflush(stream_); }

private:
    std::FILE* stream_;
    std::int64_t end_ = 0;
};

/// What is written of a picture.
struct Plan {
    int depth = kDepthInt16; // of the file, as a picture depth
    int colours = 4;         // red, green, blue and, in most formats, alpha
    bool isStraight = false, isSmall = false;
    struct Aux {
        int place; // among the picture's auxiliary channels
        char const* name;
    };
    std::vector<Aux> aux;
};

bool IsOpaque(Image const& image)
{
    return WithStoredType(image.Depth(), [&]<class Stored>(std::type_identity<Stored>) {
        for (int y = 0; y < image.Height(); ++y) {
            auto const* row = reinterpret_cast<Stored const*>(image.MainRow(y));
            for (int x = 0; x < image.Width(); ++x)
                if (row[4 * x + 3] != One<Stored>()) return false;
        }
        return true;
    });
}

Plan MakePlan(Image const& image, PictureFormat format, WriteOptions const& options)
{
    int const depth = options.depth ? options.depth : image.Depth();
    Plan plan;
    switch (format) {
    case PictureFormat::kPng:
        plan.depth = depth == kDepthInt8 ? kDepthInt8 : kDepthInt16;
        plan.isStraight = true;
        plan.isSmall = options.isSmall;
        if (plan.isSmall && IsOpaque(image)) plan.colours = 3;
        break;
    case PictureFormat::kTiff: plan.depth = depth >= kDepthHalf ? +kDepthFloat : depth; break;
    case PictureFormat::kJpeg:
        plan.depth = kDepthInt8;
        plan.colours = 3;
        break;
    case PictureFormat::kExr:
        // Half has 11 significant bits: enough for 8-bit numbers, too few for 16-bit ones.
        plan.depth = depth == kDepthInt8 || depth == kDepthHalf ? kDepthHalf : kDepthFloat;
        for (AuxName const& aux : kAuxNames) {
            auto const found = std::find(image.AuxChannels().begin(), image.AuxChannels().end(), aux.channel);
            if (found != image.AuxChannels().end())
                plan.aux.push_back({static_cast<int>(found - image.AuxChannels().begin()), aux.name});
        }
        break;
    case PictureFormat::kDpx: plan.depth = kDepthInt16; break;
    }
    return plan;
}

OIIO::ImageSpec MakeSpec(Image const& image, PictureFormat format, Plan const& plan)
{
    int const channels = plan.colours + static_cast<int>(plan.aux.size());
    TypeDesc const type =
        WithStoredType(plan.depth, []<class T>(std::type_identity<T>) { return LibraryType<T>(); });
    OIIO::ImageSpec spec(image.Width(), image.Height(), channels, type);
    spec.channelnames = {"R", "G", "B", "A"};
    spec.channelnames.resize(static_cast<std::size_t>(plan.colours));
    spec.alpha_channel = plan.colours == 4 ? 3 : -1;
    if (!plan.aux.empty()) {
        spec.channelformats.assign(4, type);
        for (Plan::Aux const& aux : plan.aux) {
            spec.channelnames.emplace_back(aux.name);
            spec.channelformats.emplace_back(TypeDesc::FLOAT);
        }
    }
    if (plan.isStraight) spec.attribute("oiio:UnassociatedAlpha", 1);
    double const aspect = image.XScale() / image.YScale();
    if (aspect != 1.0) spec.attribute("PixelAspectRatio", static_cast<float>(aspect));

    // Where nothing is said the library stores the time of writing, or its own name and version.
    switch (format) {
    case PictureFormat::kPng:
        if (plan.isSmall) {
            spec.attribute("png:filter", 248); // whichever suits a row
            spec.attribute("png:compressionLevel", 9);
            break;
        }
        // Photographs of 16 bits have little that repeats: the search for it costs nine times the time and
        // saves nothing. Flat areas are runs after the filter.
        spec.attribute("png:filter", 128); // Paeth
        spec.attribute("compression", "rle");
        break;
    case PictureFormat::kTiff:
        spec.attribute("compression", "none");
        spec.attribute("DateTime", "");
        // The plain kind counts its bytes in 32 bits; the rest is room for its directory.
        if (spec.image_bytes() > 0xff000000U) spec.attribute("tiff:bigtiff", 1);
        break;
    case PictureFormat::kJpeg:
        spec.attribute("compression", "jpeg:95");
        spec.attribute("jpeg:subsampling", "4:4:4");
        break;
    case PictureFormat::kExr:
        spec.attribute("compression", "zip:2"); // 3 % larger than the usual 4 in four fifths of the time
        spec.attribute("DateTime", "");
        break;
    case PictureFormat::kDpx: spec.attribute("Software", " "); break;
    }
    return spec;
}

/// One row of the picture in the order of the file's channels.
template <class Stored, class Written> void FillRow(Image const& image, Plan const& plan, int y, Written* out)
{
    auto const* in = reinterpret_cast<Stored const*>(image.MainRow(y));
    float const* aux = plan.aux.empty() ? nullptr : image.AuxRow(y);
    for (int x = 0; x < image.Width(); ++x, in += 4) {
        for (int c = 0; c < plan.colours; ++c) {
            Stored value = in[c < 3 ? 2 - c : 3];
            if (plan.isStraight && c < 3) value = Straight(value, in[3]);
            *out++ = Converted<Written>(value);
        }
        for (Plan::Aux const& each : plan.aux) *out++ = PixelCodec<Written>::FromFloat(aux[each.place]);
        if (aux) aux += image.AuxFloats();
    }
}

template <class Stored, class Written>
bool WriteRows(Image const& image, Plan const& plan, OIIO::ImageOutput& output)
{
    std::size_t const words =
        static_cast<std::size_t>(image.Width()) * (static_cast<std::size_t>(plan.colours) + plan.aux.size());
    int const step = RowsAtATime(words * sizeof(Written));
    PooledBuffer const buffer =
        TakeBuffer(words * sizeof(Written) * static_cast<std::size_t>(std::min(step, image.Height())));
    if (!buffer) return false;
    auto* const rows = reinterpret_cast<Written*>(buffer.get());
    for (int top = 0; top < image.Height(); top += step) {
        int const count = std::min(step, image.Height() - top);
        ParallelFor(count, [&](int i) {
            FillRow<Stored>(image, plan, image.Height() - 1 - top - i,
                            rows + static_cast<std::size_t>(i) * words);
        });
        if (!output.write_scanlines(top, top + count, 0, LibraryType<Written>(), rows)) return false;
    }
    return true;
}

} // namespace

std::string WriteFile(Image const& image, PictureFormat format, std::FILE* stream,
                      WriteOptions const& options)
{
    auto const output = OIIO::ImageOutput::create(LibraryName(format));
    if (!output) return fmt::format("{} is not in this picture library", FormatLabel(format));
    auto const failed = [&] {
        return fmt::format("cannot be written as {}{}", FormatLabel(format), InBrackets(output->geterror()));
    };
    // The JPEG library ends the process when it is asked for more.
    constexpr int kJpegSide = 65500;
    if (format == PictureFormat::kJpeg && std::max(image.Width(), image.Height()) > kJpegSide)
        return fmt::format("is {} x {} pixels; a side of a JPEG has at most {}", image.Width(),
                           image.Height(), kJpegSide);
    Plan const plan = MakePlan(image, format, options);
    OIIO::ImageSpec spec = MakeSpec(image, format, plan);
    Sink sink(stream);
    OIIO::Filesystem::IOProxy* proxy = &sink;
    spec.attribute("oiio:ioproxy", TypeDesc::PTR, &proxy);

    // Some formats store the name that is given here: it must be the same for every file.
    if (!output->open("picture", spec)) return failed();
    bool const ok = WithStoredType(image.Depth(), [&]<class Stored>(std::type_identity<Stored>) {
        if (!plan.aux.empty()) return WriteRows<Stored, float>(image, plan, *output);
        return WithStoredType(plan.depth, [&]<class Written>(std::type_identity<Written>) {
            return WriteRows<Stored, Written>(image, plan, *output);
        });
    });
    return ok && output->close() ? "" : failed();
}

} // namespace ombrelune
