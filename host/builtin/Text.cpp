// Text: draws a text, on nothing in the document's format or over a picture.

#include <algorithm>
#include <cstring>

#include <fmt/format.h>

#include "host/builtin/BuiltinOperator.h"
#include "host/graph/FusionDoc.h"
#include "host/image/PixPtr.h"
#include "host/text/TextModule.h"
#include "host/value/LoadModule.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

constexpr std::size_t kMostBytes = 1 << 16; // what is laid out for a picture; more would not be read

struct LoadedText {
    TextModule const* module = nullptr;
    std::optional<Problem> problem;
};

LoadedText const& Module()
{
    static LoadedText const loaded = [] {
        ModuleEntry entry = LoadModule(kTextModuleFile, kTextModuleEntry, "the text library");
        if (entry.problem) return LoadedText{nullptr, std::move(entry.problem)};
        return LoadedText{reinterpret_cast<TextModule const* (*)()>(entry.function)(), {}};
    }();
    return loaded;
}

/// Every second row, from row 0 or 1 on.
Ref<Image> FieldOf(Image const& frame, int field)
{
    Ref<Image> result = NewImageTagList({{Img_Like, &frame}, {Img_Height, std::max(frame.Height() / 2, 1)}});
    if (!result) return result;
    for (int y = 0; y < result->Height(); ++y) {
        int const from = std::min(2 * y + field, frame.Height() - 1);
        std::memcpy(result->MainRow(y), frame.MainRow(from), frame.RowBytes());
        if (!frame.IsPlain())
            std::memcpy(result->AuxRow(y), frame.AuxRow(from),
                        static_cast<std::size_t>(frame.Width() * frame.AuxFloats()) * sizeof(float));
    }
    return result;
}

class TextOperator : public BuiltinOperator<SourceOperator> {
public:
    TextOperator(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : BuiltinOperator(registry, settings, tags)
    {
        AddIdentityInput();
        AddControlPageTagList("Text", {});
        text = AddText("Styled Text", "StyledText", "", 10);
        font = AddText("Font", "Font", "DejaVu Sans", 1);
        style = AddText("Style", "Style", "Regular", 1);
        size =
            AddNumber("Size", "Size", CLSID_InputControl_Slider, 0.08,
                      {{Attr_MinHard, 0.0}, {Attr_MaxHard, 10.0}, {Attr_MinSoft, 0.0}, {Attr_MaxSoft, 0.5}});
        AddColor(color, "1", 1.0);
        color[3]->SetAttrsTagList({{Attr_MinHard, 0.0}, {Attr_MaxHard, 1.0}});
        AddControlPageTagList("Layout", {});
        center = AddPoint("Center", "Center");
        horizontal = AddJustification("Horizontal Justification", "HorizontalJustification",
                                      {"Left", "Center", "Right"});
        vertical =
            AddJustification("Vertical Justification", "VerticalJustification", {"Top", "Center", "Bottom"});
        lineSpacing = AddNumber("Line Spacing", "LineSpacing", CLSID_InputControl_Slider, 1.0,
                                {{Attr_MinHard, 0.01}, {Attr_MaxHard, 100.0}, {Attr_MaxSoft, 4.0}});
        characterSpacing = AddNumber("Character Spacing", "CharacterSpacing", CLSID_InputControl_Slider, 1.0,
                                     {{Attr_MinHard, 0.0}, {Attr_MaxHard, 100.0}, {Attr_MaxSoft, 4.0}});
        input = AddPicture("Input", 1, false);
    }
    unsigned SizeOf() const override { return sizeof(TextOperator); }

    void Process(Request* request) override
    {
        LoadedText const& loaded = Module();
        if (loaded.problem) return request->FailFile(Name() + ": " + loaded.problem->Format());
        Ref<Image> const image = Canvas(request);
        if (!image) return request->Fail(Name() + ": no memory for a picture of this size");

        int const rowsPerRow = fieldCount > 0 ? 2 : 1; // rows of the frame for each of the picture
        double const pixelHeight = image->YScale() / image->XScale();
        TextGrid grid{.width = image->Width(),
                      .height = image->Height(),
                      .yOrigin = 0.0,
                      .yStep = rowsPerRow * pixelHeight};
        // A field's rows lie in the middle of rows of the frame.
        if (fieldCount > 0) grid.yOrigin = (fieldNumber - 0.5) * pixelHeight;
        TextCoverage const drawn = loaded.module->draw(BlockOf(request, grid), grid);
        if (!drawn.problem.empty()) return request->Fail(Name() + ".Font: " + drawn.problem);
        WarnOfFonts(request, drawn);
        Lay(request, drawn, *image);
        imageOutput->Set(request, Ref<Image>(image).Release(), nullptr);
    }

private:
    Input* AddJustification(char const* label, char const* id, std::initializer_list<char const*> names)
    {
        return AddChoice(label, id, CLSID_InputControl_MultiButton, 1, names);
    }

    static TextAlign AlignOf(Input const* from, Request* request)
    {
        return static_cast<TextAlign>(ChoiceOf(from, request));
    }

    /// The picture that is drawn on: a copy of the input's, or transparent black.
    Ref<Image> Canvas(Request* request) const
    {
        if (auto const* under = dynamic_cast<Image const*>(input->GetValue(request, 0)))
            return fieldCount > 0 ? FieldOf(*under, fieldNumber) : under->CopyOfImage(false);
        Ref<Image> image = NewFrame(*request);
        if (image) image->Clear();
        return image;
    }

    TextBlock BlockOf(Request* request, TextGrid const& grid) const
    {
        Point const& place = PointOf(center, request);
        double const em = request->Number(*size) * grid.width;
        double const frameHeight = grid.height * grid.yStep;
        TextBlock block{.text = TextOf(text, *request),
                        .family = TextOf(font, *request),
                        .style = TextOf(style, *request),
                        .size = em,
                        .x = place.x * grid.width,
                        .y = place.y * frameHeight,
                        .horizontal = AlignOf(horizontal, request),
                        .vertical = AlignOf(vertical, request),
                        .lineSpacing = request->Number(*lineSpacing),
                        .characterExtra = (request->Number(*characterSpacing) - 1.0) * em};
        if (block.text.size() > kMostBytes) {
            request->Warn(fmt::format("{}.StyledText is {} bytes long; the first {} are drawn", Name(),
                                      block.text.size(), kMostBytes));
            block.text.resize(kMostBytes);
        }
        return block;
    }

    void WarnOfFonts(Request* request, TextCoverage const& drawn) const
    {
        std::string const family = TextOf(font, *request);
        if (!drawn.usedFamily.empty())
            request->Warn(fmt::format("{}.Font: there is no font family {}; {} is used instead", Name(),
                                      Quoted(family), drawn.usedFamily));
        if (!drawn.usedStyle.empty())
            request->Warn(fmt::format("{}.Style: {} has no style {}; {} is used instead", Name(),
                                      drawn.usedFamily.empty() ? family : drawn.usedFamily,
                                      Quoted(TextOf(style, *request)), drawn.usedStyle));
    }

    /// The colour over the picture, as far as the text covers it.
    void Lay(Request* request, TextCoverage const& drawn, Image& image) const
    {
        float straight[4];
        for (int channel = 0; channel < 4; ++channel)
            straight[channel] = static_cast<float>(request->Number(*color[channel]));
        float const opacity = straight[3];
        float const premultiplied[] = {straight[2] * opacity, straight[1] * opacity, straight[0] * opacity,
                                       opacity};
        ParallelFor(drawn.height, [&](int row) {
            auto const* covered = drawn.coverage.data() + static_cast<std::ptrdiff_t>(row) * drawn.width;
            PixPtr pixels(&image, drawn.x, drawn.y + row);
            FltPixel pixel;
            for (int x = 0; x < drawn.width; ++x, pixels.NextPixel()) {
                if (covered[x] == 0) continue;
                float const part = static_cast<float>(covered[x]) / 255.0F;
                pixels.GetPixel(pixel);
                for (int w = 0; w < 4; ++w)
                    pixel.word[w] = pixel.word[w] * (1.0F - opacity * part) + premultiplied[w] * part;
                pixels.SetPixel(pixel);
            }
        });
    }

    Input *text, *font, *style, *size, *color[4], *center, *horizontal, *vertical, *lineSpacing,
        *characterSpacing;
    Input* input;
};

Registry const textRegistry(ClassRegistry(), "Text",
                            BuiltinTags<TextOperator>("Text", "Draws a text, alone or over a picture"));

} // namespace

} // namespace ombrelune
