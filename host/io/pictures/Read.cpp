#include "host/io/pictures/Read.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>
#include <OpenImageIO/strutil.h>
#include <fmt/format.h>

#include "host/image/StoredType.h"
#include "host/io/pictures/Layout.h"
#include "host/io/pictures/Rows.h"
#include "host/value/MachineMemory.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

using OIIO::TypeDesc;

/// What becomes of a file's channels and rows.
struct Plan {
    std::array<int, 4> colour = {-1, -1, -1, -1}; // file channels of blue, green, red, alpha; -1 for none
    struct Aux {
        int hostChannel, fileChannel;
    };
    std::vector<Aux> aux;
    int firstChannel = 0, endChannel = 0; // the part of the file's channels that is read
    int depth = kDepthInt16;
    bool isStraight = false;
    // A camera's turn: exchange of columns and rows, then mirrors of the result.
    bool transpose = false, mirrorX = false, mirrorY = false;
    int width = 0, height = 0;         // of the file's full frame
    int columnShift = 0, rowShift = 0; // from the file's pixels to its full frame, from top left
};

int DepthOf(TypeDesc const& type)
{
    switch (type.basetype) {
    case TypeDesc::UINT8:
    case TypeDesc::INT8: return kDepthInt8;
    case TypeDesc::UINT16:
    case TypeDesc::INT16: return kDepthInt16;
    case TypeDesc::HALF: return kDepthHalf;
    default: return kDepthFloat;
    }
}

void PlanByName(OIIO::ImageSpec const& spec, Plan& plan)
{
    int grey = -1;
    for (int c = 0; c < spec.nchannels; ++c) {
        std::string const& name = spec.channelnames[static_cast<std::size_t>(c)];
        auto const is = [&](char const* other) { return OIIO::Strutil::iequals(name, other); };
        if (is("B")) plan.colour[kChannelBlue] = c;
        if (is("G")) plan.colour[kChannelGreen] = c;
        if (is("R")) plan.colour[kChannelRed] = c;
        if (is("A")) plan.colour[kChannelAlpha] = c;
        if (is("Y")) grey = c;
        for (AuxName const& aux : kAuxNames)
            if (is(aux.name) || is(aux.otherName)) plan.aux.push_back({aux.channel, c});
    }
    if (grey >= 0 && *std::max_element(plan.colour.begin(), plan.colour.begin() + 3) < 0)
        std::fill_n(plan.colour.begin(), 3, grey);
}

void PlanByPosition(OIIO::ImageSpec const& spec, Plan& plan)
{
    if (spec.nchannels >= 3) plan.colour = {2, 1, 0, -1};
    else plan.colour = {0, 0, 0, -1};
    if (spec.alpha_channel > 0 && spec.alpha_channel < spec.nchannels)
        plan.colour[kChannelAlpha] = spec.alpha_channel;
}

/// Distance from the frame to the data, limited to one at which they cannot meet.
int Shift(int data, int frame)
{
    constexpr std::int64_t limit = 2 * Image::kMaxSide;
    return static_cast<int>(std::clamp(std::int64_t{data} - frame, -limit, limit));
}

Plan MakePlan(OIIO::ImageSpec const& spec, PictureFormat format)
{
    Plan plan;
    plan.width = spec.width;
    plan.height = spec.height;
    if (format == PictureFormat::kExr) {
        PlanByName(spec, plan);
        plan.width = spec.full_width;
        plan.height = spec.full_height;
        plan.columnShift = Shift(spec.x, spec.full_x);
        plan.rowShift = Shift(spec.y, spec.full_y);
    } else {
        PlanByPosition(spec, plan);
        plan.isStraight = plan.colour[kChannelAlpha] >= 0 &&
                          (format == PictureFormat::kPng || spec.get_int_attribute("oiio:UnassociatedAlpha"));
        // Orientations 2 to 8 of TIFF and Exif.
        int const turn = spec.get_int_attribute("Orientation", 1);
        plan.transpose = turn >= 5 && turn <= 8;
        plan.mirrorX = turn == 2 || turn == 3 || turn == 6 || turn == 7;
        plan.mirrorY = turn == 3 || turn == 4 || turn == 7 || turn == 8;
    }

    std::vector<int> wanted;
    int colourDepth = 0;
    for (int channel : plan.colour) {
        if (channel < 0) continue;
        wanted.push_back(channel);
        colourDepth = std::max(colourDepth, DepthOf(spec.channelformat(channel)));
    }
    for (Plan::Aux const& aux : plan.aux) wanted.push_back(aux.fileChannel);
    if (wanted.empty()) return plan;
    plan.depth = colourDepth ? colourDepth : +kDepthFloat;
    auto const [low, high] = std::minmax_element(wanted.begin(), wanted.end());
    plan.firstChannel = *low;
    plan.endChannel = *high + 1;
    return plan;
}

/// Why a file cannot become a picture; empty when it can.
std::string Refusal(OIIO::ImageSpec const& spec, Plan const& plan, PictureFormat format)
{
    if (spec.deep) return "is a deep picture; flatten it first";
    // Three samples share a word; the library reads garbage where the last word of a row is not full.
    if (format == PictureFormat::kDpx && spec.get_int_attribute("oiio:BitsPerSample") == 10 &&
        std::int64_t{spec.width} * spec.nchannels % 3 != 0)
        return fmt::format(
            "has 10 bits and rows of {} samples, which cannot be read right; save it with 16 bits",
            std::int64_t{spec.width} * spec.nchannels);
    if (plan.endChannel == 0)
        return fmt::format("has no channel R, G, B, A, Y or Z; it has {}",
                           Quoted(OIIO::Strutil::join(spec.channelnames, ", ")));
    int const widest = std::max({plan.width, plan.height, spec.width, spec.height});
    int const least = std::min({plan.width, plan.height, spec.width, spec.height});
    if (least < 1 || widest > Image::kMaxSide)
        return fmt::format("is {} x {} pixels; a side has 1 to {}", plan.width, plan.height, Image::kMaxSide);
    auto const pixelBytes =
        WithStoredType(plan.depth, []<class T>(std::type_identity<T>) { return 4 * sizeof(T); }) +
        plan.aux.size() * sizeof(float);
    double const bytes = static_cast<double>(plan.width) * plan.height * static_cast<double>(pixelBytes);
    constexpr double kGiB = 1 << 30;
    if (double const limit = static_cast<double>(MachineMemory()) / 2.0; bytes > limit)
        return fmt::format(
            "is {} x {} pixels and needs {:.1f} GiB, more than half of the memory ({:.1f} GiB)", plan.width,
            plan.height, bytes / kGiB, limit / kGiB);
    return {};
}

Ref<Image> MakeImage(OIIO::ImageSpec const& spec, Plan const& plan)
{
    double aspect = spec.get_float_attribute("PixelAspectRatio", 1.0F);
    if (!(aspect > 0.01 && aspect < 100.0)) aspect = 1.0;
    TagList tags;
    tags.Add({Img_Width, plan.transpose ? plan.height : plan.width});
    tags.Add({Img_Height, plan.transpose ? plan.width : plan.height});
    tags.Add({Img_Depth, plan.depth});
    tags.Add({Img_XScale, plan.transpose ? 1.0 / aspect : aspect});
    for (Plan::Aux const& aux : plan.aux) tags.Add({Img_Channel, aux.hostChannel});
    return NewImageTagList(tags);
}

/// Pixels of one file row from `begin` to `end` go to their places in the picture.
/// @param in  the row's channels from plan.firstChannel on
template <class Stored, class Read>
void PlaceRow(Plan const& plan, Read const* in, int row, int begin, int end, Image& image)
{
    // The picture's place of a pixel of the full frame, columns from the left and rows from the bottom.
    auto const place = [&](int column) {
        int x = plan.transpose ? row : column, y = plan.transpose ? column : row;
        if (plan.mirrorX) x = image.Width() - 1 - x;
        if (plan.mirrorY) y = image.Height() - 1 - y;
        return std::pair(x, image.Height() - 1 - y);
    };
    int const channels = plan.endChannel - plan.firstChannel;
    std::array<std::pair<int, int>, 4> moves; // stored word, file channel
    int moveCount = 0;
    for (int c = 0; c < 4; ++c)
        if (plan.colour[static_cast<std::size_t>(c)] >= 0)
            moves[static_cast<std::size_t>(moveCount++)] = {c, plan.colour[static_cast<std::size_t>(c)] -
                                                                   plan.firstChannel};

    for (int column = begin; column < end; ++column, in += channels) {
        auto const [x, y] = place(column);
        Stored* const out = reinterpret_cast<Stored*>(image.MainRow(y)) + 4 * x;
        out[0] = out[1] = out[2] = Stored(0);
        out[3] = One<Stored>();
        for (int m = 0; m < moveCount; ++m) {
            auto const [word, channel] = moves[static_cast<std::size_t>(m)];
            out[word] = Converted<Stored>(in[channel]);
        }
        if (plan.isStraight)
            for (int c = 0; c < 3; ++c) out[c] = Premultiplied(out[c], out[3]);
        if (plan.aux.empty()) continue;
        float* aux = image.AuxRow(y) + static_cast<std::ptrdiff_t>(x) * image.AuxFloats();
        for (Plan::Aux const& each : plan.aux)
            *aux++ = PixelCodec<Read>::ToFloat(in[each.fileChannel - plan.firstChannel]);
    }
}

/// Reads all rows, some at a time. `Read` is what the library converts to: the stored type itself, or float
/// where auxiliary channels come along.
template <class Stored, class Read>
bool ReadRows(OIIO::ImageInput& input, OIIO::ImageSpec const& spec, Plan const& plan, Image& image)
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
    if (spec.tile_height > 0) step = (step + spec.tile_height - 1) / spec.tile_height * spec.tile_height;
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

} // namespace

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

    OIIO::ImageSpec spec, configuration;
    // The library would multiply by alpha with its own rounding.
    configuration.attribute("oiio:UnassociatedAlpha", 1);
    if (format == PictureFormat::kPng) {
        OIIO::Filesystem::IOProxy* const proxy = &file.emplace(path);
        configuration.attribute("oiio:ioproxy", TypeDesc::PTR, &proxy);
    }
    if (!input->open(path, spec, configuration)) return broken(input->geterror());
    input->geterror(); // what a header has of oddities does not matter
    Plan const plan = MakePlan(spec, format);
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
