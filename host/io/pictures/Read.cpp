#include "host/io/pictures/Read.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>
#include <fmt/format.h>

#include "host/image/StoredType.h"
#include "host/io/Rows.h"
#include "host/io/pictures/HeaderSizes.h"
#include "host/io/pictures/Layout.h"
#include "host/io/pictures/ReadPlan.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

using OIIO::TypeDesc;

Ref<Image> MakeImage(OIIO::ImageSpec const& spec, ReadPlan const& plan)
{
    double aspect = spec.get_float_attribute("PixelAspectRatio", 1.0F);
    if (!(aspect > 0.01 && aspect < 100.0)) aspect = 1.0;
    TagList tags;
    tags.Add({Img_Width, plan.transpose ? plan.height : plan.width});
    tags.Add({Img_Height, plan.transpose ? plan.width : plan.height});
    tags.Add({Img_Depth, plan.depth});
    tags.Add({Img_XScale, plan.transpose ? 1.0 / aspect : aspect});
    for (ReadPlan::Aux const& aux : plan.aux) tags.Add({Img_Channel, aux.hostChannel});
    return NewImageTagList(tags);
}

/// Pixels of one file row from `begin` to `end` go to their places in the picture.
/// @param in  the row's channels from plan.firstChannel on
template <class Stored, class Read>
void PlaceRow(ReadPlan const& plan, Read const* in, int row, int begin, int end, Image& image)
{
    // The picture's place of a pixel of the full frame, columns from the left and rows from the bottom.
    auto const place = [&](int column) {
        int x = plan.transpose ? row : column, y = plan.transpose ? column : row;
        if (plan.mirrorX) x = image.Width() - 1 - x;
        if (plan.mirrorY) y = image.Height() - 1 - y;
        return std::pair(x, image.Height() - 1 - y);
    };
    int const channels = plan.endChannel - plan.firstChannel;
    struct {
        int word, channel;
    } moves[4];
    int moveCount = 0;
    for (int word = 0; word < 4; ++word)
        if (plan.colour[word] >= 0) moves[moveCount++] = {word, plan.colour[word] - plan.firstChannel};

    for (int column = begin; column < end; ++column, in += channels) {
        auto const [x, y] = place(column);
        Stored* const out = reinterpret_cast<Stored*>(image.MainRow(y)) + 4 * x;
        out[0] = out[1] = out[2] = Stored(0);
        out[3] = One<Stored>();
        for (int m = 0; m < moveCount; ++m) out[moves[m].word] = Converted<Stored>(in[moves[m].channel]);
        if (plan.isStraight)
            for (int c = 0; c < 3; ++c) out[c] = Premultiplied(out[c], out[3]);
        if (plan.aux.empty()) continue;
        float* aux = image.AuxRow(y) + static_cast<std::ptrdiff_t>(x) * image.AuxFloats();
        for (ReadPlan::Aux const& each : plan.aux)
            *aux++ = PixelCodec<Read>::ToFloat(in[each.fileChannel - plan.firstChannel]);
    }
}

/// Reads all rows, some at a time. `Read` is what the library converts to: the stored type itself, or float
/// where auxiliary channels come along.
template <class Stored, class Read>
bool ReadRows(OIIO::ImageInput& input, OIIO::ImageSpec const& spec, ReadPlan const& plan, Image& image)
{
    // Rows and columns of the file that lie in the full frame.
    int const firstRow = std::max(0, -plan.rowShift),
              endRow = std::min(spec.height, plan.height - plan.rowShift);
    int const begin = std::max(0, -plan.columnShift),
              end = std::min(spec.width, plan.width - plan.columnShift);
    if (firstRow > 0 || begin > 0 || endRow + plan.rowShift < plan.height || plan.rowShift > 0 ||
        plan.columnShift > 0 || end + plan.columnShift < plan.width)
        image.Clear();
    if (begin >= end) return true;

    auto const channels = static_cast<std::size_t>(plan.endChannel - plan.firstChannel);
    std::size_t const rowBytes = static_cast<std::size_t>(spec.width) * channels * sizeof(Read);
    int step = RowsAtATime(rowBytes);
    if (int const tile = std::min(spec.tile_height, spec.height); tile > 0)
        step = (step + tile - 1) / tile * tile;
    PooledBuffer const buffer = TakeBuffer(rowBytes * static_cast<std::size_t>(std::min(step, spec.height)));
    if (!buffer) return false;

    TypeDesc const type = LibraryType<Read>();
    for (int row = firstRow / step * step; row < endRow; row += step) {
        int const count = std::min(step, spec.height - row), y = spec.y + row;
        bool const ok =
            spec.tile_width > 0
                ? input.read_tiles(0, 0, spec.x, spec.x + spec.width, y, y + count, spec.z, spec.z + 1,
                                   plan.firstChannel, plan.endChannel, type, buffer.get())
                : input.read_scanlines(0, 0, y, y + count, spec.z, plan.firstChannel, plan.endChannel, type,
                                       buffer.get());
        if (!ok) return false;
        int const from = std::max(row, firstRow), to = std::min(row + count, endRow);
        ParallelFor(to - from, [&](int i) {
            auto const offset = static_cast<std::size_t>(from + i - row) * rowBytes;
            auto const* in = reinterpret_cast<Read const*>(buffer.get() + offset);
            PlaceRow<Stored>(plan, in + static_cast<std::size_t>(begin) * channels, from + i + plan.rowShift,
                             begin + plan.columnShift, end + plan.columnShift, image);
        });
    }
    return true;
}

/// A file that goes on with zeros behind its end and remembers that they were asked for. The PNG reader leaks
/// memory when a read comes back short.
class EndlessFile : public OIIO::Filesystem::IOFile {
public:
    explicit EndlessFile(std::string const& path) : IOFile(path, Read) {}
    std::size_t read(void* bytes, std::size_t size) override
    {
        std::size_t const got = IOFile::read(bytes, size);
        std::memset(static_cast<char*>(bytes) + got, 0, size - got);
        endedEarly = endedEarly || got < size;
        return size;
    }

    bool endedEarly = false;
};

/// Opens a file by the library's reader of a format.
/// @param file  filled for a PNG; must outlive the reader
bool Open(OIIO::ImageInput& input, std::string const& path, PictureFormat format,
          std::optional<EndlessFile>& file, OIIO::ImageSpec& spec)
{
    if (AnnouncesMoreThanItHolds(path, format)) return false;
    OIIO::ImageSpec configuration;
    // The library would multiply by alpha with its own rounding.
    configuration.attribute("oiio:UnassociatedAlpha", 1);
    if (format == PictureFormat::kPng) {
        OIIO::Filesystem::IOProxy* const proxy = &file.emplace(path);
        configuration.attribute("oiio:ioproxy", TypeDesc::PTR, &proxy);
    }
    return input.open(path, spec, configuration);
}

} // namespace

bool ReadsHeader(std::string const& path, PictureFormat format)
{
    std::optional<EndlessFile> file; // outlives the reader
    auto const input = OIIO::ImageInput::create(LibraryName(format));
    OIIO::ImageSpec spec;
    return input && Open(*input, path, format, file, spec) && !(file && file->endedEarly) && spec.width > 0 &&
           spec.height > 0;
}

ReadResult ReadFile(std::string const& path, PictureFormat format)
{
    auto const wrong = [&](std::string text) {
        return ReadResult{nullptr, Problem{path, 0, std::move(text)}};
    };
    std::optional<EndlessFile> file; // outlives the reader
    auto const input = OIIO::ImageInput::create(LibraryName(format));
    if (!input) return wrong(fmt::format("{} is not in this picture library", FormatLabel(format)));
    auto const broken = [&](std::string const& message) {
        return wrong(fmt::format("cannot be read as {}; is the file whole?{}", FormatLabel(format),
                                 InBrackets(message)));
    };

    OIIO::ImageSpec spec;
    if (!Open(*input, path, format, file, spec)) return broken(input->geterror());
    input->geterror(); // what a header has of oddities does not matter
    ReadPlan const plan = MakeReadPlan(spec, format);
    if (std::string refusal = Refusal(spec, plan, format); !refusal.empty()) return wrong(std::move(refusal));
    Ref<Image> image = MakeImage(spec, plan);
    if (!image) return wrong("there is not enough memory for it");

    bool const ok = WithStoredType(plan.depth, [&]<class Stored>(std::type_identity<Stored>) {
        return plan.aux.empty() ? ReadRows<Stored, Stored>(*input, spec, plan, *image)
                                : ReadRows<Stored, float>(*input, spec, plan, *image);
    });
    // Some readers return true for damaged pixels and only leave a message.
    std::string const message = input->geterror();
    if (file && file->endedEarly) return broken("it ends too early");
    if (!ok || !message.empty()) return broken(message);
    return {std::move(image), {}};
}

} // namespace ombrelune
