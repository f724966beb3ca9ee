// The host's own operators on whole pictures, as a renderer runs them.

#include <cmath>

#include "bench/Floor.h"
#include "host/render/Renderer.h"

namespace ombrelune::bench {
namespace {

struct Setting {
    char const* input;
    double value;
};

/// A document around one operator, with the case's picture at its main inputs.
Prepare Operate(char const* name, std::vector<Setting> const& settings)
{
    return [=](Case const& row) -> Work {
        auto document = std::make_shared<FusionDoc>();
        Operator* const op = document->AddOperator(*ClassRegistry().Find(name), name);
        for (int number = 1; Input* const input = op->MainInput(number); ++number)
            input->SetValueQuietly(Ref<Image>::Share(row.picture.Get()));
        for (Setting const& setting : settings)
            op->FindInput(setting.input)->SetValueQuietly(MakeRef<Number>(setting.value));
        auto const run = [=] {
            Renderer renderer(*document, {});
            return renderer.Evaluate(*op->MainOutput(1), 0.0);
        };
        RenderResult const result = run();
        auto const* image = dynamic_cast<Image const*>(result.value.Get());
        if (!image || image == row.picture.Get()) return nullptr;
        return [=] { run(); };
    };
}

bool const rows[] = {
    RatioRows("Builtin/Merge", Operate("Merge", {})),
    RatioRows("Builtin/MergeXOr", Operate("Merge", {{"Operator", 4.0}, {"Blend", 0.5}})),
    RatioRows("Builtin/MergeTurned", Operate("Merge", {{"Angle", 10.0}, {"Size", 1.2}})),
    RatioRows("Builtin/ChannelBooleans", Operate("ChannelBooleans", {{"Operation", 1.0}})),
    RatioRows("Builtin/Crop", Operate("Crop", {{"XOffset", 1.0}})),
};

} // namespace
} // namespace ombrelune::bench
