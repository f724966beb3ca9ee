// Crop: a rectangle of a picture becomes a picture; where it reaches beyond, there is nothing.

#include <algorithm>
#include <cmath>
#include <cstring>

#include <fmt/format.h>

#include "host/builtin/PictureOperator.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

/// Copies the part of a row that both have and clears the rest.
void CopyRow(std::byte const* from, int fromWidth, std::byte* to, int toWidth, int offset, std::size_t pixel)
{
    int const first = std::clamp(-offset, 0, toWidth), last = std::clamp(fromWidth - offset, first, toWidth);
    auto const bytes = [&](int pixels) { return static_cast<std::size_t>(pixels) * pixel; };
    std::memset(to, 0, bytes(first));
    if (last > first) std::memcpy(to + bytes(first), from + bytes(first + offset), bytes(last - first));
    std::memset(to + bytes(last), 0, bytes(toWidth - last));
}

class Crop : public PictureOperator {
public:
    Crop(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : PictureOperator(registry, settings, tags)
    {
        AddControlPageTagList("Crop", {});
        double const most = Image::kMaxSide;
        TagList const place{{Attr_IntegerValue, true}, {Attr_MinHard, -most}, {Attr_MaxHard, most}};
        TagList const extent{{Attr_IntegerValue, true}, {Attr_MinHard, 0.0}, {Attr_MaxHard, most}};
        xOffset = AddNumber("X Offset", "XOffset", CLSID_InputControl_Screw, 0.0, place);
        yOffset = AddNumber("Y Offset", "YOffset", CLSID_InputControl_Screw, 0.0, place);
        xSize = AddNumber("X Size", "XSize", CLSID_InputControl_Screw, 0.0, extent);
        ySize = AddNumber("Y Size", "YSize", CLSID_InputControl_Screw, 0.0, extent);
        AddPicture("Input", 1, true);
    }
    unsigned SizeOf() const override { return sizeof(Crop); }

    void Process(Request* request) override
    {
        Ref<Image> const image = MainPicture(request);
        if (!image) return;
        int const proxy = request->Quality().proxy;
        Side const x = SideOf(request, *xOffset, *xSize, image->Width(), proxy);
        Side const y = SideOf(request, *yOffset, *ySize, image->Height(), proxy);
        if (request->Failure()) return;
        Ref<Image> result =
            NewImageTagList({{Img_Like, image.Get()}, {Img_Width, x.size}, {Img_Height, y.size}});
        if (!result) return Give(request, nullptr);
        if (proxy > 1)
            result->attributes.Set({Img_OriginalWidth, x.fullSize}).Set({Img_OriginalHeight, y.fullSize});
        // A field's shift is told in heights of the picture, and stays the same in rows.
        result->yOffset = image->yOffset * image->Height() / result->Height();

        auto const pixel = static_cast<std::size_t>(image->PixelBytes());
        auto const auxPixel = static_cast<std::size_t>(image->AuxFloats()) * sizeof(float);
        ParallelFor(y.size, [&](int row) {
            int const from = row + y.offset;
            bool const isInside = from >= 0 && from < image->Height();
            int const width = isInside ? image->Width() : 0, source = isInside ? from : 0;
            CopyRow(image->MainRow(source), width, result->MainRow(row), x.size, x.offset, pixel);
            if (!image->IsPlain())
                CopyRow(reinterpret_cast<std::byte const*>(image->AuxRow(source)), width,
                        reinterpret_cast<std::byte*>(result->AuxRow(row)), x.size, x.offset, auxPixel);
        });
        Give(request, std::move(result));
    }

private:
    /// Along one axis, in the pixels of the proxy, and the size of the full picture.
    struct Side {
        int offset, size, fullSize;
    };
    /// A size of 0 takes what is left of the picture.
    Side SideOf(Request* request, Input const& offsetInput, Input const& sizeInput, int available, int proxy)
    {
        int const offset = ChoiceOf(&offsetInput, request), size = ChoiceOf(&sizeInput, request);
        Side side{static_cast<int>(std::floor(static_cast<double>(offset) / proxy)), 0, size};
        side.size = size > 0 ? std::max(size / proxy, 1) : available - side.offset;
        if (size == 0) side.fullSize = side.size * proxy;
        if (side.size < 1)
            request->Fail(fmt::format("{}.{} = {} leaves nothing of the picture: its side is {}", Name(),
                                      offsetInput.Id().Text(), offset, available * proxy));
        return side;
    }

    Input *xOffset, *yOffset, *xSize, *ySize;
};

Registry const cropRegistry(ClassRegistry(), "Crop",
                            BuiltinTags<Crop>("Crop", "Cuts a rectangle out of a picture"));

} // namespace

} // namespace ombrelune
