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
        Ref<Image> image = NewFrame(*request);
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
