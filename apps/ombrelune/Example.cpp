#include "apps/ombrelune/Example.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

#include <fmt/format.h>

#include "apps/ombrelune/Commands.h"
#include "host/flow/ColorGroups.h"
#include "host/flow/FlowReader.h"
#include "host/render/Renderer.h"

namespace ombrelune::app {

namespace {

namespace fs = std::filesystem;

std::string TextOfFile(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The comment lines that a flow starts with, as one line.
std::string CaptionOf(std::string const& flow)
{
    std::istringstream lines(flow);
    std::string caption;
    for (std::string line; std::getline(lines, line) && line.starts_with("-- ");)
        caption.append(caption.empty() ? "" : " ").append(line, 3);
    return caption;
}

Operator* FindOfClass(FusionDoc const& document, FuID id)
{
    for (auto const& op : document.Operators())
        if (op->Registration()->Id() == id) return op.get();
    return nullptr;
}

Output* PictureOutput(FusionDoc const& document, Operator const& op)
{
    Operator const* const saver = FindOfClass(document, "Saver");
    Output* const output = saver && saver != &op ? saver->MainInput(1)->Source() : op.MainOutput(1);
    return output && output->DataType() == CLSID_DataType_Image ? output : nullptr;
}

/// A file as a command finds it that runs beside the folder of the flows.
std::string FileInFolder(std::string const& folder, std::string const& file)
{
    return (fs::path(folder) / file).lexically_normal().string();
}

/// What "--set Input=" takes for a value; nothing for one that a command line cannot hold.
std::optional<std::string> ValueText(Input const& input, std::string const& folder)
{
    Ref<Parameter> const value = input.Value();
    TagList const& tags = input.Attributes();
    if (auto const* number = dynamic_cast<Number const*>(value.Get())) {
        auto const names = tags.All(Attr_ListEntry);
        auto const index = static_cast<std::size_t>(std::max(number->value, 0.0));
        if (index < names.size() && static_cast<double>(index) == number->value)
            return std::get<std::string>(names[index]);
        if (tags.GetId(Attr_InputControl) == CLSID_InputControl_Checkbox)
            return number->value > 0.5 ? "on" : "off";
        return NumberText(number->value);
    }
    if (auto const* point = dynamic_cast<Point const*>(value.Get()))
        return NumberText(point->x) + "," + NumberText(point->y);
    if (auto const* text = dynamic_cast<Text const*>(value.Get()))
        return tags.GetId(Attr_InputControl) == CLSID_InputControl_File ? FileInFolder(folder, text->value)
                                                                        : text->value;
    if (auto const* id = dynamic_cast<IdParameter const*>(value.Get())) return id->value.Text();
    return std::nullopt;
}

/// The file that a Loader reads, when reading it is all that the Loader does.
std::optional<std::string> FileOf(Input const& input, std::string const& folder)
{
    Operator const& op = *input.Source()->Owner();
    if (op.Registration()->Id() != FuID("Loader") || op.PassesThrough()) return std::nullopt;
    for (auto const& each : op.Inputs())
        if (each->Source() || each->Expression() || (each->HasValue() && each->Id() != FuID("Filename")))
            return std::nullopt;
    Ref<Parameter> const value = op.FindInput("Filename")->Value();
    auto const* text = dynamic_cast<Text const*>(value.Get());
    return text ? std::optional(FileInFolder(folder, text->value)) : std::nullopt;
}

/// Arguments of 'apply' that do what the flow does with the tool.
class CommandWriter {
public:
    CommandWriter(FusionDoc const& document, Operator const& op, std::string folder)
        : document_(document), op_(op), folder_(std::move(folder))
    {}

    std::vector<std::string> Write(std::string const& outFile)
    {
        bool const isAsked = PictureOutput(document_, op_) == op_.MainOutput(1);
        bool const varies = op_.Registration()->Tags().GetBool(Reg_TimeVariant);
        if (!isAsked || op_.PassesThrough() || op_.State().keepsHistory ||
            (varies && document_.currentTime != 0.0))
            return {};
        if (!AddPictures() || !AddFormat() || !AddValues()) return {};
        words_.insert(words_.end(), {"--out", outFile});
        return words_;
    }

private:
    bool AddPictures()
    {
        words_ = {"apply", ClassName(*op_.Registration())};
        int nextMain = 1;
        std::set<Input const*> known;
        auto const add = [&](Input const& input, bool isInTurn) {
            if (!input.IsImage()) return false;
            auto const file = FileOf(input, folder_);
            if (!file) return false;
            words_.insert(words_.end(), {"--in", isInTurn ? *file : input.Id().Text() + "=" + *file});
            return true;
        };
        for (; Input const* const main = op_.MainInput(nextMain); ++nextMain) {
            if (!main->Source()) break;
            if (!add(*main, true)) return false;
            known.insert(main);
        }
        return std::all_of(op_.Inputs().begin(), op_.Inputs().end(), [&](auto const& input) {
            if (input->Expression()) return false;
            return !input->Source() || known.contains(input.get()) || add(*input, false);
        });
    }

    /// What makes its picture from nothing takes the size of the flow's frame; a command has a standard one.
    bool AddFormat()
    {
        auto const* const source = dynamic_cast<SourceOperator const*>(&op_);
        FrameFormat const& format = document_.format;
        if (!source) return true;
        if (format.xScale != format.yScale) return false;
        auto const add = [&](Input const& input, int size) {
            if (!input.HasValue()) AddSet(input.Id().Text(), std::to_string(size));
        };
        add(*source->widthInput, format.width);
        add(*source->heightInput, format.height);
        return true;
    }

    bool AddValues()
    {
        std::set<Input const*> grouped;
        auto const colors = ColorGroups(op_);
        for (auto const& input : op_.Inputs()) {
            if (!input->HasValue() || grouped.contains(input.get())) continue;
            if (input->Attributes().GetId(Attr_InputControl) == CLSID_InputControl_Nest) continue;
            auto const color = std::find_if(colors.begin(), colors.end(), [&](ColorGroup const& group) {
                return std::find(group.channels.begin(), group.channels.end(), input.get()) !=
                       group.channels.end();
            });
            if (color != colors.end()) {
                AddColor(*color);
                grouped.insert(color->channels.begin(), color->channels.end());
                continue;
            }
            auto const text = ValueText(*input, folder_);
            if (!text) return false;
            AddSet(input->Id().Text(), *text);
        }
        return true;
    }

    void AddColor(ColorGroup const& color)
    {
        std::string text;
        for (std::size_t i = 0; i < color.channels.size(); ++i)
            if (i < 3 || color.channels[i]->HasValue())
                text.append(i > 0 ? "," : "").append(*ValueText(*color.channels[i], folder_));
        AddSet(color.name, text);
    }

    void AddSet(std::string const& input, std::string const& value)
    {
        words_.insert(words_.end(), {"--set", input + "=" + value});
    }

    FusionDoc const& document_;
    Operator const& op_;
    std::string folder_;
    std::vector<std::string> words_;
};

} // namespace

ExampleReading ReadExample(std::string const& path, Registry const& tool, std::string const& name)
{
    FlowReading reading = ReadFlow(path);
    if (!reading.document) return {{}, std::move(reading.problems)};
    FusionDoc& document = *reading.document;
    Operator const* const op = FindOfClass(document, tool.Id());
    if (!op) return {{}, {Problem{path, 0, fmt::format("has no {} to show", ClassName(tool))}}};

    Example example{.caption = {}, .flow = TextOfFile(path), .picture = {}, .values = {}, .command = {}};
    example.caption = CaptionOf(example.flow);
    Renderer renderer(document, {});
    // What remembers the frames before has seen them all.
    double const time = document.currentTime;
    std::vector<double> frames;
    for (double frame = std::ceil(document.renderStart); frame < time; ++frame) frames.push_back(frame);
    frames.push_back(time);
    renderer.Start(std::move(frames));

    if (Output* const output = PictureOutput(document, *op)) {
        RenderResult const result = renderer.Evaluate(*output, time);
        if (result.problem) return {{}, {*result.problem}};
        example.picture = Ref<Image>::Share(dynamic_cast<Image*>(result.value.Get()));
        if (!example.picture) return {{}, {Problem{path, 0, "gives no picture"}}};
    }
    for (auto const& output : op->Outputs()) {
        FuID const type = output->DataType();
        if (type != CLSID_DataType_Number && type != CLSID_DataType_Text) continue;
        RenderResult const result = renderer.Evaluate(*output, time);
        if (result.problem) return {{}, {*result.problem}};
        // Six digits: what a machine's own mathematics may differ in is not told.
        if (auto const* number = dynamic_cast<Number const*>(result.value.Get()))
            example.values.emplace_back(output->Id().Text(), fmt::format("{:.6g}", number->value));
        if (auto const* text = dynamic_cast<Text const*>(result.value.Get()))
            example.values.emplace_back(output->Id().Text(), text->value);
    }
    std::string const folder = fs::absolute(path).parent_path().filename().string();
    example.command = CommandWriter(document, *op, folder).Write(name + ".png");
    return {std::move(example), {}};
}

} // namespace ombrelune::app
