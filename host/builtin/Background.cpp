// Background: a picture of one colour in the document's format.

#include <algorithm>

#include "host/builtin/BuiltinOperator.h"
#include "host/graph/FusionDoc.h"
#include "host/image/PixPtr.h"
#include "host/value/Parallel.h"

namespace ombrelune {

namespace {

class Background : public BuiltinOperator<SourceOperator> {
public:
    Background(Registry const* registry, ScriptVal const& settings, TagList const& tags)
        : BuiltinOperator(registry, settings, tags)
    {
        AddControlPageTagList("Color", {});
        AddColor(color, "", 0.0);
    }
    unsigned SizeOf() const override { return sizeof(Background); }

    void Process(Request* request) override
    {
        auto const size = [&](Input* input) {
            auto const full = static_cast<int>(request->Number(*input));
            return std::max(full / proxyScale, 1);
        };
        // Of a field there is every second row.
        int const height = fieldCount > 0 ? std::max(size(heightInput) / 2, 1) : size(heightInput);
        Ref<Image> image = NewImageTagList(
            {{Img_Document, &FormatOf(Document())}, {Img_Width, size(widthInput)}, {Img_Height, height}});
        if (!image) return request->Fail(Name() + ": no memory for a picture of this size");

        FltPixel pixel;
        float* const words[] = {&pixel.red, &pixel.green, &pixel.blue, &pixel.alpha};
        for (int channel = 0; channel < 4; ++channel)
            *words[channel] = static_cast<float>(request->Number(*color[channel]));
        ParallelFor(image->Height(), [&](int y) {
            PixPtr row(image.Get(), 0, y);
            for (int x = 0; x < image->Width(); ++x) row >>= pixel;
        });
        imageOutput->Set(request, image.Release(), nullptr);
    }

private:
    Input* color[4];
};

Registry const backgroundRegistry(ClassRegistry(), "Background",
                                  BuiltinTags<Background>("Background", "A picture of one colour"));

} // namespace

} // namespace ombrelune
