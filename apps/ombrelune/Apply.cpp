#include <filesystem>

#include <fmt/format.h>

#include "apps/ombrelune/Commands.h"
#include "host/io/PicturePath.h"
#include "host/io/Pictures.h"
#include "host/render/Renderer.h"

namespace ombrelune::app {

namespace {

/// The input that "[Input=]FILE" means, and its file; the input is null after a complaint.
std::pair<Input*, std::string> InputFile(Operator& op, std::string const& text, int& nextMain)
{
    auto const equals = text.find('=');
    std::error_code error;
    // A '=' may well belong to the file's name.
    if (equals != std::string::npos && !std::filesystem::exists(text, error)) {
        std::string const id = text.substr(0, equals);
        Input* const input = op.FindInput(id);
        if (input && input->IsImage()) return {input, text.substr(equals + 1)};
        std::vector<std::string> known;
        for (auto const& each : op.Inputs())
            if (each->IsImage()) known.push_back(each->Id().Text());
        Complain(fmt::format("{} has no picture input {}{}", op.Name(), Quoted(id), DidYouMean(id, known)));
        return {nullptr, {}};
    }
    Input* const input = op.MainInput(nextMain++);
    if (!input) Complain(fmt::format("{} takes no further picture: {}", op.Name(), Quoted(text)));
    return {input, text};
}

/// One tool on one frame: a sequence needs times, which a flow has.
bool NameSingleFiles(ApplyOptions const& options)
{
    std::vector<std::string> names = options.in;
    names.push_back(options.out);
    for (std::string const& name : names) {
        std::error_code error;
        if (!IsPattern(name) || std::filesystem::exists(name, error)) continue;
        Complain(
            fmt::format("{}: 'apply' takes single files; for a sequence write a flow with a Loader and a "
                        "Saver and use 'ombrelune render FLOW --frames 1-100'",
                        Quoted(name)));
        return false;
    }
    return true;
}

} // namespace

ExitStatus Apply(ApplyOptions const& options)
{
    if (!NameSingleFiles(options)) return kWrongInput;
    if (auto problem = CheckExtension(options.out)) {
        Complain(fmt::format("--out {}: {}", Quoted(options.out), problem->text));
        return kWrongInput;
    }
    Registry const* const registry = FindTool(options.tool);
    if (!registry) return kWrongInput;
    FusionDoc document;
    Operator& op = *document.AddOperator(*registry, ClassName(*registry));

    int nextMain = 1, loaders = 0;
    for (std::string const& text : options.in) {
        auto const [input, file] = InputFile(op, text, nextMain);
        if (!input) return kWrongInput;
        Operator& loader =
            *document.AddOperator(*ClassRegistry().Find("Loader"), fmt::format("Loader{}", ++loaders));
        loader.FindInput("Filename")->SetValueQuietly(MakeRef<Text>(file));
        input->ConnectTo(loader.FindOutput("Output"));
    }
    for (std::string const& assignment : options.set)
        if (!SetFromText(op, assignment)) return kWrongInput;

    Output* const output = op.MainOutput(1);
    if (!output ||
        (output->DataType() != CLSID_DataType_Image && output->DataType() != CLSID_DataType_Mask)) {
        Complain(fmt::format("{} makes no picture, so 'apply' has nothing to write", op.Name()));
        return kWrongInput;
    }
    for (auto const& input : op.Inputs()) {
        if (!input->IsRequired() || input->Source()) continue;
        Complain(fmt::format("{}.{} needs a picture: add --in FILE", op.Name(), input->Id().Text()));
        return kWrongInput;
    }
    Renderer renderer(document, {.quick = options.quick});
    renderer.Start({0.0});
    RenderResult const result = renderer.Evaluate(*output, 0.0);
    for (Problem const& warning : renderer.TakeWarnings()) Warn(warning.Format());
    if (result.problem) {
        Complain(result.problem->Format());
        return result.problem->isFile ? kFileProblem : kFrameFailed;
    }
    auto const* image = dynamic_cast<Image const*>(result.value.Get());
    if (!image) {
        Complain(fmt::format("{} gave no picture: add --in FILE", op.Name()));
        return kFrameFailed;
    }
    if (auto problem = WritePicture(*image, options.out)) {
        Complain(problem->Format());
        return kFileProblem;
    }
    return kDone;
}

} // namespace ombrelune::app
